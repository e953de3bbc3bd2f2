// SPDX-License-Identifier: Apache-2.0
// The export pass with printing: the report question comes once per record, inside printing, the
// record is marked exported before it is printed, and a failed print does not keep it back.

#include "PrintFixture.h"
#include "app/Database.h"
#include "export/mdlExport.h"

namespace {

// Prints into PDF files like the back end it wraps and notes each record's stored state at the
// moment its page is printed.
class ObservingPrinter : public PdfReportPrinter {
public:
    using PdfReportPrinter::PdfReportPrinter;
    bool printPage(const ReportPage& page, QString& error) override {
        const QString bmp = page.jobName.section('_', 0, 0) + ".tif";
        statesAtPrint << GetValue("Workflow_Status", "zvbWerte", "BMPName=" + sqlQuote(bmp)).toInt();
        return PdfReportPrinter::printPage(page, error);
    }
    QList<int> statesAtPrint;
};

class ExportPrint : public PrintFixture {
protected:
    ExportPrint() : observing(home.path("berichte")) {
        setReportPrinter(&observing);
        setting("Report_Other_Country", 3); // ask the operator
    }
    void accepted(int index, int state = 40) {
        form(index, {{"Workflow_Status", state}});
        home.writeFile("images/" + demoForm(index).value("BMPName").toString(), "II*");
    }
    ObservingPrinter observing;
};

TEST_F(ExportPrint, each_record_is_asked_for_once_and_printed_after_it_is_marked_exported) {
    accepted(0);     // Austrian card: asked
    accepted(5, 20); // German card: its Ambrix report, not asked
    accepted(6);     // Spanish card: asked
    choice.setAnswer(ReportType::Ambulant);
    ExportZVBWerte();
    EXPECT_TRUE(messages.messages().isEmpty()) << messages.prompts().join("|").toStdString();
    EXPECT_EQ(choice.asked(), 2);
    EXPECT_EQ(printed(), (QStringList{"0001-31901001_bericht_ambulant.pdf", "0002-31901006_bericht_ambrix.pdf",
                                      "0003-31901007_bericht_ambulant.pdf"}));
    EXPECT_EQ(observing.statesAtPrint, (QList<int>{41, 21, 41}));
    EXPECT_EQ(CountRows("*", "zvbWerte", ""), 0);
}

TEST_F(ExportPrint, a_failed_print_is_reported_and_the_clean_up_goes_on) {
    accepted(0);
    choice.setAnswer(ReportType::Ambulant);
    QFile::remove(home.path("bericht_ambulant.bmp"));
    ExportZVBWerte();
    EXPECT_TRUE(messages.saw("bericht_ambulant.bmp"));
    EXPECT_EQ(CountRows("*", "zvbWerte", ""), 0);
    EXPECT_FALSE(QFileInfo::exists(home.path("images/31901001.tif")));
}

} // namespace
