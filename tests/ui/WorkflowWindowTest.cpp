// SPDX-License-Identifier: Apache-2.0
// The record workflow through the main window's buttons and menus: the record shown and discarded,
// leaving the program, captions and display toggles that are stored at once, and what the
// menus print and open for the record on screen.

#include "MainWindowFixture.h"

#include "app/Database.h"
#include "app/mdlDB.h"
#include "app/mdlMessages.h"
#include "print/PdfReportPrinter.h"
#include "print/ReportChoice.h"

#include <QAction>
#include <QApplication>
#include <QFileInfo>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QStatusBar>
#include <QTimer>
#include <QToolBar>

namespace {

using WindowWorkflow = MainWindowTest;

// The first waiting record is shown and held for this workstation; discarding asks, then deletes
// the record and its image and shows the next. Leaving asks too, and loses the record on screen
// with its image; the records not taken stay in the pool.
TEST_F(WindowWorkflow, verwerfen_and_leaving_ask_then_delete_the_record_on_screen_and_its_image) {
    const QVector<qint32> records = insertDemoRecords(3);
    const QString image = writeImage("31901001.tif"), nextImage = writeImage("31901002.tif");
    open();
    EXPECT_EQ(window->currentRecord(), records[0]);
    EXPECT_EQ(field("NACHNAME")->text(), "Huber");
    EXPECT_EQ(field("CARD_EXPIRY")->text(), "31.12.2029");
    EXPECT_EQ(window->findChild<QLineEdit*>("BMPName")->text(), "31901001.tif");
    EXPECT_EQ(window->findChild<QLineEdit*>("LfdNr")->text(), QString::number(records[0]));
    EXPECT_EQ(focusedName(), "FORM_ID"); // GUI_FocusField of the demo settings
    EXPECT_TRUE(window->windowTitle().startsWith("Veridon - Beleg"));
    EXPECT_EQ(workflowOf(records[0]), "30/1");

    // No keeps everything, the operator's change included.
    field("NACHNAME")->setText("Huber-Berger");
    messages.queueAnswer(MsgBox::No);
    action("mpBelegLoeschen")->trigger();
    EXPECT_TRUE(messages.saw("Wollen Sie wirklich den aktuellen Datensatz verwerfen?"));
    EXPECT_EQ(workflowOf(records[0]), "30/1");
    EXPECT_TRUE(QFileInfo::exists(image));
    EXPECT_EQ(field("NACHNAME")->text(), "Huber-Berger");

    messages.queueAnswer(MsgBox::Yes);
    QTest::mouseClick(button("buttonVerwerfen"), Qt::LeftButton);
    EXPECT_EQ(workflowOf(records[0]), "");
    EXPECT_FALSE(QFileInfo::exists(image));
    EXPECT_EQ(window->currentRecord(), records[1]);
    EXPECT_EQ(field("NACHNAME")->text(), "de Vries");

    tabTo("NACHNAME");
    messages.queueAnswer(MsgBox::No);
    QTest::mouseClick(button("buttonBeenden"), Qt::LeftButton);
    EXPECT_TRUE(messages.saw("Trotzdem beenden?"));
    EXPECT_TRUE(window->isVisible());
    EXPECT_EQ(workflowOf(records[1]), "30/1");
    // Back where the operator was, and the keyboard works on: F2 is not lost on a button.
    EXPECT_EQ(focusedName(), "NACHNAME");

    messages.queueAnswer(MsgBox::Yes);
    QTest::mouseClick(button("buttonBeenden"), Qt::LeftButton);
    EXPECT_FALSE(window->isVisible());
    EXPECT_EQ(workflowOf(records[1]), "");
    EXPECT_EQ(workflowOf(records[2]), "10/0");
    EXPECT_FALSE(QFileInfo::exists(nextImage));
}

// Captions follow the language and the display toggles the settings; a toggle is stored at once.
TEST_F(WindowWorkflow, captions_and_display_toggles_follow_the_settings) {
    SetSysValue("GUI_ToolBarEnabled", false);
    SetSysValue("GUI_StatusBarEnabled", true);
    SetSysValue("APP_Language", "EN");
    ReloadLanguage();
    SetSysValue("Backup_Enabled", "0");
    insertDemoRecords(1);
    open();
    EXPECT_EQ(button("buttonOK")->text(), "&OK / hand over");
    EXPECT_TRUE(window->windowTitle().startsWith("Veridon - Record ")) << window->windowTitle().toStdString();
    EXPECT_EQ(window->findChild<QToolBar*>("Toolbar1")->windowTitle(), "Tool bar");
    EXPECT_EQ(window->findChild<QLabel*>("lblNACHNAME")->text(), "Surname:");
    EXPECT_EQ(window->menuBar()->findChild<QMenu*>("mnuDatei")->title(), "&File");
    EXPECT_FALSE(window->findChild<QToolBar*>("Toolbar1")->isVisible());
    EXPECT_FALSE(action("mpToolbar")->isChecked());
    EXPECT_FALSE(action("mpBelegZumTest")->isVisible()) << "a test copy is kept with the backup only";
    EXPECT_TRUE(window->statusBar()->isVisible());
    action("mpStatusBar")->trigger();
    EXPECT_FALSE(window->statusBar()->isVisible());
    EXPECT_FALSE(GetSysFlag("GUI_StatusBarEnabled", true));
    action("mpToolbar")->trigger();
    EXPECT_TRUE(window->findChild<QToolBar*>("Toolbar1")->isVisible());
    EXPECT_TRUE(GetSysFlag("GUI_ToolBarEnabled", false));
    SetSysValue("APP_Language", "DE");
    ReloadLanguage();
}

// The menus act on the record on screen: printing prints it as corrected so far, and the test copy
// dialog opens with its image name.
TEST_F(WindowWorkflow, drucken_and_beleg_zum_test_take_the_record_on_screen) {
    SetSysValue("Report_Ambrix_Country", 0);
    SetSysValue("Report_Other_Country", 1);
    PdfReportPrinter pdf(home.path("berichte"));
    setReportPrinter(&pdf);
    insertRecord(demoForms().at(1)); // de Vries, NL
    open();
    field("VORNAME")->setText("Jan-Pieter");
    action("mpDrucken")->trigger();
    setReportPrinter(nullptr);
    // Report_Other_Country 1: the inpatient report, two pages for a German workstation.
    EXPECT_EQ(pdf.writtenFiles().size(), 2) << messages.prompts().join("|").toStdString();
    EXPECT_EQ(WerteArray().GetValue("VORNAME"), "Jan-Pieter");

    QString shownName;
    QTimer::singleShot(50, [&] {
        if (QWidget* dialog = QApplication::activeModalWidget()) {
            if (auto* name = dialog->findChild<QLineEdit*>("txtBildname"))
                shownName = name->text();
            dialog->close();
        }
    });
    action("mpBelegZumTest")->trigger();
    EXPECT_EQ(shownName, "31901002.tif");
}

} // namespace
