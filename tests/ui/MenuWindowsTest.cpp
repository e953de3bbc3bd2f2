// SPDX-License-Identifier: Apache-2.0
// What the main window's menus open for the record on screen: the test copy dialog with its image
// name, and the printing of the record's report.

#include "MainWindowFixture.h"

#include "model/FormModel.h"
#include "print/PdfReportPrinter.h"
#include "print/ReportChoice.h"

#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QDir>
#include <QTimer>

namespace {

using MenuWindows = MainWindowTest;

TEST_F(MenuWindows, beleg_zum_test_opens_with_the_records_image_name) {
    insertDemoRecords(1);
    open();
    ASSERT_TRUE(action("mpBelegZumTest")->isVisible()); // backup is on in the demo settings
    QString shownName;
    QTimer::singleShot(50, [&] {
        auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        if (!dialog)
            return;
        if (auto* name = dialog->findChild<QLineEdit*>("txtBildname"))
            shownName = name->text();
        dialog->reject();
    });
    action("mpBelegZumTest")->trigger();
    EXPECT_EQ(shownName, "31901001.tif");
}

TEST_F(MenuWindows, beleg_zum_test_is_offered_only_with_backup) {
    setting("Backup_Enabled", "0");
    open();
    EXPECT_FALSE(action("mpBelegZumTest")->isVisible());
}

TEST_F(MenuWindows, drucken_prints_the_record_as_corrected_on_screen) {
    setting("Report_Ambrix_Country", 0);
    setting("Report_Other_Country", 1);
    const QString folder = home.path("berichte");
    PdfReportPrinter pdf(folder);
    setReportPrinter(&pdf);
    FormValues form = demoForms().at(1); // de Vries, NL
    insertRecord(form);
    open();
    field("VORNAME")->setText("Jan-Pieter");
    action("mpDrucken")->trigger();
    // Report_Other_Country 1: the inpatient report, two pages for a German workstation.
    EXPECT_EQ(pdf.writtenFiles().size(), 2) << messages.prompts().join("|").toStdString();
    EXPECT_EQ(WerteArray().GetValue("VORNAME"), "Jan-Pieter");
    setReportPrinter(nullptr);
}

} // namespace
