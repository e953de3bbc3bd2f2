// SPDX-License-Identifier: Apache-2.0
// Which report a record gets, which printer it goes to, and what its printed pages look like, read
// back from the PDF files. The export pass asks the report question once per record, inside
// printing, and marks the record exported before it is printed; a failed print does not keep it
// back. The print command for the record on screen is refused while a field fails, otherwise the
// record is stored as it stands on screen and printed, and its workflow state stays.

#include "PrintFixture.h"
#include "app/Database.h"
#include "export/mdlExport.h"
#include "model/FormModel.h"

namespace {

using Print = PrintFixture;

QString log(const TempHome& home) {
    return QString::fromLatin1(home.readFile("zvMsgLog.txt"));
}

TEST_F(Print, default_report_of_the_workstation_state_prints_its_pages_in_order_one_job_each) {
    setting("Report_Other_Country", 1); // inpatient
    PrintRecord(form(0));               // Austrian card: no rows of its own
    EXPECT_TRUE(messages.messages().isEmpty()) << messages.prompts().join("|").toStdString();
    ASSERT_EQ(printed(),
              (QStringList{"0001-31901001_bericht_stationaer_1.pdf", "0002-31901001_bericht_stationaer_2.pdf"}));

    const PdfPage first = page(printed()[0]);
    EXPECT_NEAR(first.width, 595, 1) << "A4 upright";
    const struct {
        const char* word;
        double x, y;
    } words[] = {{"Huber", 15, 52},
                 {"03.07.1961", 15, 88},
                 {"1236030761", 95, 88},
                 {"80040001234567890123", 15, 142},
                 {"31.12.2029", 125, 142}};
    for (const auto& w : words)
        EXPECT_AT(first, w.word, w.x, w.y);

    const PdfPage second = page(printed()[1]);
    EXPECT_AT(second, "80040001234567890123", 15, 88);
    EXPECT_AT(second, "15.11.2026", 15, 106);
    EXPECT_EQ(second.find("1236030761"), nullptr) << "the second page has no personal number";

    EXPECT_TRUE(runTool("pdffonts", {home.path("berichte/" + printed()[0])}).contains("LiberationMono-Bold"));

    PrintRecord(form(0, {{"STATE", "CH"}, {"VORNAME", QVariant()}}));
    EXPECT_EQ(printed().size(), 3) << "a card state with rows of its own gets its own one-page report";
    ASSERT_EQ(printed().value(2), "0003-31901001_bericht_stationaer_1.pdf");
    for (const PdfWord& w : page(printed()[2]).words)
        EXPECT_GT(qAbs(w.yMin - points(10 + 70)), 3) << "a null value prints nothing: " << w.text.toStdString();
}

// The outpatient report prints in landscape from its wide template; a German card (State_XmlType
// 4) gets the Ambrix report whatever the other countries' setting, and none when its own is 0.
TEST_F(Print, outpatient_report_prints_in_landscape_and_ambrix_cards_follow_their_own_setting) {
    setting("Report_Other_Country", 2);
    PrintRecord(form(3));
    PrintRecord(form(5));
    ASSERT_EQ(printed(), (QStringList{"0001-31901004_bericht_ambulant.pdf", "0002-31901006_bericht_ambrix.pdf"}));
    const PdfPage p = page(printed()[0]);
    EXPECT_NEAR(p.width, 842, 1) << "A4 landscape";
    EXPECT_AT(p, "Rossi", 15, 48);
    EXPECT_AT(p, "RSSGPP50A01H501S", 70, 84);
    EXPECT_AT(p, "80380000000123456789", 150, 66);
    EXPECT_AT(page(printed()[1]), "Müller-Lüdenscheidt", 15, 52);

    setting("Report_Ambrix_Country", 0);
    PrintRecord(form(5));
    EXPECT_EQ(printed().size(), 2) << "no report when the Ambrix setting is 0";
}

// An unknown card state gets no report, no question and no message. A workstation state without
// report rows for the card's state is reported with both states; a workstation without a state
// counts as German.
TEST_F(Print, an_open_report_type_is_asked_only_when_asking_is_allowed_and_needs_rows_for_both_states) {
    setting("Report_Other_Country", 3);
    EXPECT_EQ(GetReport("FR", true), ReportType::Ask);
    PrintRecord(form(0, {{"STATE", "XX"}}));
    PrintRecord(form(0, {{"STATE", QVariant()}}));
    EXPECT_TRUE(messages.messages().isEmpty());
    EXPECT_EQ(choice.asked(), 0);

    choice.setAnswer(ReportType::None); // "Kein Druck"
    PrintRecord(form(2));
    EXPECT_EQ(choice.asked(), 1);
    EXPECT_TRUE(printed().isEmpty());

    choice.setAnswer(ReportType::Ambulant);
    setting("APP_State", "AT");
    PrintRecord(form(2));
    EXPECT_EQ(messages.prompts(),
              QStringList{"Es konnte nicht ermittelt werden, welcher EHIC-Bericht zu drucken ist!\r\n\r\nDas Drucken "
                          "kann nicht durchgeführt werden.\r\nDetails: Application 'AT', Card 'FR'"});
    setting("APP_State", QVariant());
    PrintRecord(form(2));
    EXPECT_EQ(choice.asked(), 3);
    EXPECT_EQ(printed(), QStringList{"0001-31901003_bericht_ambulant.pdf"});
}

// Each page that fails is reported on its own, and the next page is still printed: a missing
// template with its path, a field naming no column with the field.
TEST_F(Print, a_missing_template_or_field_fails_its_page_only_and_is_reported) {
    setting("Report_Other_Country", 1);
    QFile::remove(home.path("bericht_stationaer_1.bmp"));
    execSql("INSERT INTO sysReportFields (Report_ID, x, y, Field) VALUES (3, 10, 10, 'GIBTSNICHT')");
    PrintRecord(form(0));
    ASSERT_EQ(messages.messages().size(), 2);
    EXPECT_EQ(messages.messages().first().prompt,
              "Die Vorlagedatei '" + home.path("bericht_stationaer_1.bmp") +
                  "' ist nicht vorhanden!!\r\n\r\nDas Drucken kann nicht durchgeführt werden.");
    EXPECT_TRUE(messages.saw("PrintReportPage()"));
    EXPECT_TRUE(messages.saw("GIBTSNICHT"));
    EXPECT_TRUE(printed().isEmpty());

    // Templates from a folder of their own, and the default file name for a page without one.
    setting("Report_Pfad", home.path("vorlagen"));
    execSql("UPDATE sysReports SET Report_File=NULL WHERE Report_ID=3");
    messages.clear();
    PrintRecord(form(0));
    EXPECT_TRUE(messages.saw("'" + home.path("vorlagen/bericht_stationaer_1.bmp") + "'"));
    EXPECT_TRUE(messages.saw("'" + home.path("vorlagen/bericht.bmp") + "'"));
}

TEST_F(Print, pages_follow_the_page_column_and_each_template_its_own_orientation_and_fits_the_area) {
    bitmapReport(11, 300, 200); // wider than high
    bitmapReport(12, 200, 300);
    bitmapReport(13, 240, 240); // square: portrait
    for (const auto& [pageNo, id] : {std::pair{3, 11}, std::pair{1, 12}, std::pair{2, 13}})
        execSql("INSERT INTO sysReportsForStates (AppState, CardState, Report_Type, IsDefaultForAppState, Page, "
                "Report_ID) VALUES ('DE', 'FR', 2, 0, ?, ?)",
                {pageNo, id});
    execSql("INSERT INTO sysReportFields (Report_ID, x, y, Field) VALUES (11, 100, 20.5, 'NACHNAME')");
    setting("Report_Other_Country", 1);
    PrintRecord(form(2));
    ASSERT_EQ(printed(),
              (QStringList{"0001-31901003_test_12.pdf", "0002-31901003_test_13.pdf", "0003-31901003_test_11.pdf"}));
    EXPECT_FALSE(page(printed()[0]).landscape());
    EXPECT_FALSE(page(printed()[1]).landscape());
    const PdfPage wide = page(printed()[2]);
    EXPECT_TRUE(wide.landscape());
    EXPECT_AT(wide, "Dupont", 100, 20.5);

    // The template is scaled to the largest size that fits: the high one fills the 277 mm of the
    // area's height, the wide one the 277 mm of its width; both give 300 pixels per 277 mm.
    for (const QString& file : {printed()[0], printed()[2]}) {
        const QStringList rows =
            runTool("pdfimages", {"-list", home.path("berichte/" + file)}).split('\n', Qt::SkipEmptyParts);
        ASSERT_EQ(rows.size(), 3) << "one image on the page";
        const QStringList cells = rows[2].simplified().split(' ');
        EXPECT_EQ(cells[7], "1") << "stays a 1-bit image";
        EXPECT_NEAR(cells[12].toDouble(), 300 / (277 / 25.4), 1) << file.toStdString();
    }
}

// The named printer is taken when it is installed and only then (device names compare exactly):
// one that is gone is logged and the default prints; an unset choice means the default printer.
// Without any printer nothing prints and the operator is told.
TEST_F(Print, the_named_printer_is_taken_when_it_is_installed_and_only_then) {
    setting("Report_PrinterUseDefault", false);
    setting("Report_PrinterName", "PDF");
    EXPECT_TRUE(SelectPrinter());
    EXPECT_EQ(pdf.chosenPrinter(), "PDF");
    EXPECT_FALSE(log(home).contains("SelectPrinter"));

    setting("Report_PrinterName", "pdf");
    setting("Report_Other_Country", 2);
    PrintRecord(form(0));
    EXPECT_TRUE(messages.messages().isEmpty());
    EXPECT_TRUE(log(home).contains("SelectPrinter();Choosen Printer not available, switching to default;"));
    EXPECT_EQ(pdf.chosenPrinter(), "");
    EXPECT_EQ(printed().size(), 1);

    setting("Report_PrinterName", "PDF");
    setting("Report_PrinterUseDefault", QVariant());
    EXPECT_TRUE(SelectPrinter());
    EXPECT_EQ(pdf.chosenPrinter(), "");

    setReportPrinter(nullptr); // the core's own back end: no printers
    EXPECT_FALSE(SelectPrinter());
    EXPECT_TRUE(log(home).contains("SelectPrinter();No Printers available!;"));
    messages.clear();
    PrintRecord(form(0));
    EXPECT_EQ(messages.prompts(), QStringList{"Beim Initialisieren des Druckers trat ein Fehler auf!\r\n\r\nDas "
                                              "Drucken kann nicht durchgeführt werden."});
    EXPECT_EQ(printed().size(), 1);
}

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

// The German card's Ambrix template is missing: its print fails and is reported, the others print.
TEST_F(ExportPrint, each_record_is_asked_for_once_printed_once_marked_exported_and_a_failed_print_keeps_nothing_back) {
    accepted(0);     // Austrian card: asked
    accepted(5, 20); // German card: its Ambrix report, not asked
    accepted(6, 20); // Spanish card: asked
    choice.setAnswer(ReportType::Ambulant);
    QFile::remove(home.path("bericht_ambrix.bmp"));
    ExportZVBWerte();
    EXPECT_EQ(messages.messages().size(), 1);
    EXPECT_TRUE(messages.saw("bericht_ambrix.bmp"));
    EXPECT_EQ(choice.asked(), 2);
    EXPECT_EQ(printed(), (QStringList{"0001-31901001_bericht_ambulant.pdf", "0002-31901007_bericht_ambulant.pdf"}));
    EXPECT_EQ(observing.statesAtPrint, (QList<int>{41, 21}));
    EXPECT_EQ(CountRows("*", "zvbWerte", ""), 0);
    EXPECT_FALSE(QFileInfo::exists(home.path("images/31901006.tif")));
}

using PrintCommandTest = PrintFixture;

TEST_F(PrintCommandTest, refused_while_a_field_fails_then_stored_as_on_screen_printed_and_keeps_its_state) {
    FelderArray().Fill();
    setting("Report_Other_Country", 1);
    RowValues row = demoForm(0);
    row.insert({{"FORM_ID", "E111"}, {"Workflow_Status", 30}, {"Workflow_KorrID", 1}, {"CARD_ID", "8004OOO1234"}});
    const qint32 number = insertRecord(row);
    QSqlQuery q = execSql(QStringLiteral("SELECT * FROM zvbWerte WHERE LfdNr=%1").arg(number));
    ASSERT_TRUE(q.next());
    WerteArray().Fill(q); // on screen
    EXPECT_FALSE(PrintCommand(number));
    EXPECT_EQ(messages.prompts(), QStringList{"Daten enthalten noch Fehler, Drucken nicht möglich!"});
    EXPECT_TRUE(printed().isEmpty());

    messages.clear();
    WerteArray().SetValue("CARD_ID", demoForm(0).value("CARD_ID").toString()); // corrected on screen, not yet saved
    WerteArray().SetValue("NACHNAME", "Huber-Moser");
    EXPECT_TRUE(PrintCommand(number));
    EXPECT_TRUE(messages.messages().isEmpty()) << messages.prompts().join("|").toStdString();
    ASSERT_EQ(printed().size(), 2);
    EXPECT_AT(page(printed()[0]), "Huber-Moser", 15, 52);
    q = execSql(
        QStringLiteral("SELECT NACHNAME, Korrigiert, Workflow_Status FROM zvbWerte WHERE LfdNr=%1").arg(number));
    ASSERT_TRUE(q.next());
    EXPECT_EQ((QVariantList{q.value(0).toString(), q.value(1).toInt(), q.value(2).toInt()}),
              (QVariantList{"Huber-Moser", 1, 30}));
    WerteArray().Clear();
}

} // namespace
