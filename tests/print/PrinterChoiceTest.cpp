// SPDX-License-Identifier: Apache-2.0
// Which printer a report goes to, and what the operator and the log learn when there is none.

#include "PrintFixture.h"

namespace {

using PrinterChoice = PrintFixture;

QString logText(const TempHome& home) {
    return QString::fromLatin1(home.readFile("zvMsgLog.txt"));
}

TEST_F(PrinterChoice, without_any_printer_nothing_prints_and_the_operator_is_told) {
    setReportPrinter(nullptr); // the core's own back end: no printers
    setting("Report_Other_Country", 1);
    EXPECT_FALSE(SelectPrinter());
    EXPECT_TRUE(logText(home).contains("SelectPrinter();No Printers available!;"));
    PrintRecord(form(0));
    ASSERT_EQ(messages.messages().size(), 1);
    EXPECT_EQ(
        messages.messages().first().prompt,
        "Beim Initialisieren des Druckers trat ein Fehler auf!\r\n\r\nDas Drucken kann nicht durchgeführt werden.");
    EXPECT_TRUE(printed().isEmpty());
}

TEST_F(PrinterChoice, a_printer_that_is_gone_is_logged_and_the_default_prints) {
    setting("Report_PrinterUseDefault", false);
    setting("Report_PrinterName", "Etikettendrucker Lager");
    setting("Report_Other_Country", 2);
    PrintRecord(form(0));
    EXPECT_TRUE(messages.messages().isEmpty());
    EXPECT_TRUE(logText(home).contains("SelectPrinter();Choosen Printer not available, switching to default;"));
    EXPECT_EQ(pdf.chosenPrinter(), "");
    EXPECT_EQ(printed().size(), 1);
}

TEST_F(PrinterChoice, the_named_printer_is_taken_when_it_is_installed_and_only_then) {
    setting("Report_PrinterUseDefault", false);
    setting("Report_PrinterName", "PDF");
    EXPECT_TRUE(SelectPrinter());
    EXPECT_EQ(pdf.chosenPrinter(), "PDF");
    EXPECT_FALSE(logText(home).contains("SelectPrinter"));

    setting("Report_PrinterName", "pdf"); // device names compare exactly
    EXPECT_TRUE(SelectPrinter());
    EXPECT_EQ(pdf.chosenPrinter(), "");

    setting("Report_PrinterName", "PDF");
    setting("Report_PrinterUseDefault", QVariant()); // unset means the default printer
    EXPECT_TRUE(SelectPrinter());
    EXPECT_EQ(pdf.chosenPrinter(), "");
}

} // namespace
