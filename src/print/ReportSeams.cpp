// SPDX-License-Identifier: Apache-2.0
// The defaults behind the two printing seams: no printer, and a report question that is always
// answered "Kein Druck", so the core runs headless without either.
#include "ReportChoice.h"
#include "ReportPrinter.h"
#include "app/Seam.h"

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
Seam<ReportPrinter> printerSeam(noPrinter);

FixedReportChoice noReport(ReportType::None);
Seam<ReportChoice> choiceSeam(noReport);

} // namespace

ReportPrinter& reportPrinter() {
    return printerSeam.get();
}

void setReportPrinter(ReportPrinter* printer) {
    printerSeam.install(printer);
}

ReportChoice& reportChoice() {
    return choiceSeam.get();
}

void setReportChoice(ReportChoice* choice) {
    choiceSeam.install(choice);
}
