// The defaults behind the two printing seams: no printer, and a report question that is always
// answered "Kein Druck", so the core runs headless without either.
#include "ReportChoice.h"
#include "ReportPrinter.h"

namespace {

class NoPrinter : public ReportPrinter {
public:
    QStringList printerNames() const override { return {}; }
    void useDefaultPrinter() override {}
    void usePrinter(const QString&) override {}
    bool printPage(const ReportPage&, QString& error) override {
        error = QStringLiteral("Es ist kein Drucker vorhanden.");
        return false;
    }
};

NoPrinter noPrinter;
ReportPrinter* installedPrinter = nullptr;

FixedReportChoice noReport(ReportType::None);
ReportChoice* installedChoice = nullptr;

} // namespace

ReportPrinter& reportPrinter() {
    return installedPrinter ? *installedPrinter : noPrinter;
}

void setReportPrinter(ReportPrinter* printer) {
    installedPrinter = printer;
}

ReportChoice& reportChoice() {
    return installedChoice ? *installedChoice : noReport;
}

void setReportChoice(ReportChoice* choice) {
    installedChoice = choice;
}
