// SPDX-License-Identifier: Apache-2.0
// The record workflow through the main window's buttons and menus: the record shown and discarded,
// leaving the program, captions and display toggles that are stored at once, and what the
// menus print and open for the record on screen. Then the scanned page beside the form: which
// field's region the viewer shows, when it does not appear at all (display switched off), and what
// it shows when the record has no page to show (a path-like name, a missing file).

#include "MainWindowFixture.h"

#include "app/Database.h"
#include "app/mdlMessages.h"
#include "print/PdfReportPrinter.h"
#include "print/ReportChoice.h"

#include <QDir>
#include <QMenu>
#include <QMenuBar>
#include <QStatusBar>
#include <QTimer>
#include <QToolBar>

namespace {

using WindowWorkflow = MainWindowTest;

// The first waiting record is shown and held for this workstation; discarding asks, then deletes
// the record and its image and shows the next, which the menus print and copy for a test. Leaving asks too, and loses
// the record on screen with its image; the records not taken stay in the pool.
TEST_F(WindowWorkflow, verwerfen_and_leaving_ask_then_delete_the_record_on_screen_and_its_image) {
    const QVector<qint32> records = insertDemoRecords(3);
    const QString image = writeImage("31901001.tif"), nextImage = writeImage("31901002.tif");
    open();
    EXPECT_EQ(window->currentRecord(), records[0]);
    EXPECT_EQ(QStringList({field("NACHNAME")->text(), field("CARD_EXPIRY")->text(), field("BMPName")->text(),
                           field("LfdNr")->text()}),
              QStringList({"Huber", "31.12.2029", "31901001.tif", QString::number(records[0])}));
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

    // The menus act on the record on screen: printing prints it as corrected so far, and the test
    // copy dialog opens with its image name.
    SetSysValue("Report_Ambrix_Country", 0);
    SetSysValue("Report_Other_Country", 1);
    PdfReportPrinter pdf(home.path("berichte"));
    setReportPrinter(&pdf);
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
    const auto* toolBar = window->findChild<QToolBar*>("Toolbar1");
    EXPECT_EQ(QStringList({button("buttonOK")->text(), window->windowTitle().left(17), toolBar->windowTitle(),
                           window->findChild<QLabel*>("lblNACHNAME")->text(),
                           window->menuBar()->findChild<QMenu*>("mnuDatei")->title()}),
              QStringList({"&OK / hand over", "Veridon - Record ", "Tool bar", "Surname:", "&File"}));
    EXPECT_FALSE(toolBar->isVisible());
    EXPECT_FALSE(action("mpToolbar")->isChecked());
    EXPECT_FALSE(action("mpBelegZumTest")->isVisible()) << "a test copy is kept with the backup only";
    EXPECT_TRUE(window->statusBar()->isVisible());
    action("mpStatusBar")->trigger();
    EXPECT_FALSE(window->statusBar()->isVisible());
    EXPECT_FALSE(GetSysFlag("GUI_StatusBarEnabled", true));
    action("mpToolbar")->trigger();
    EXPECT_TRUE(toolBar->isVisible());
    EXPECT_TRUE(GetSysFlag("GUI_ToolBarEnabled", false));
    SetSysValue("APP_Language", "DE");
    ReloadLanguage();
}

using ImageDisplay = MainWindowTest;

// The page follows the field in hand without taking the keyboard. F12 shows it full screen until
// Escape, then the viewer is closed until the next field; the display switch closes it and keeps it
// closed, also at the next start. It closes with the program.
TEST_F(ImageDisplay, follows_the_field_in_hand_and_closes_by_f12_the_display_switch_and_the_program) {
    SetSysValue("GUI_BildanzeigeEnabled", true);
    writeImage("31901001.tif");
    insertDemoRecords(2);
    open();
    ASSERT_NE(viewer(), nullptr);
    EXPECT_TRUE(viewerStatus().contains("31901001.tif")) << viewerStatus().toStdString();
    EXPECT_TRUE(viewerStatus().contains("Formular")) << viewerStatus().toStdString();
    EXPECT_EQ(QApplication::activeWindow(), window.get());

    tabTo("NACHNAME");
    EXPECT_TRUE(viewerStatus().contains("Nachname")) << viewerStatus().toStdString();
    type("x");
    EXPECT_TRUE(field("NACHNAME")->text().endsWith("x"));

    bool fullScreenSeen = false;
    QTimer::singleShot(100, [&] {
        if (QWidget* full = shown("zvbkorFullScreen")) {
            fullScreenSeen = true;
            QTest::keyClick(full, Qt::Key_Escape);
        }
    });
    key(Qt::Key_F12);
    EXPECT_TRUE(fullScreenSeen);
    EXPECT_EQ(viewer(), nullptr);
    EXPECT_FALSE(action("mpVollbild")->isChecked());
    EXPECT_FALSE(GetSysFlag("GUI_VollbildEnabled", true));
    key(Qt::Key_Tab);
    EXPECT_NE(viewer(), nullptr);

    action("mpToggleBildanzeige")->trigger();
    EXPECT_FALSE(GetSysFlag("GUI_BildanzeigeEnabled", true));
    EXPECT_EQ(viewer(), nullptr);
    key(Qt::Key_Tab);
    EXPECT_EQ(viewer(), nullptr);
    messages.queueAnswer(MsgBox::Yes);
    window->close();
    open();
    EXPECT_EQ(viewer(), nullptr);
    action("mpToggleBildanzeige")->trigger();
    EXPECT_TRUE(GetSysFlag("GUI_BildanzeigeEnabled", false));
    EXPECT_NE(viewer(), nullptr);
    messages.queueAnswer(MsgBox::Yes);
    window->close();
    EXPECT_EQ(viewer(), nullptr);
}

// The viewer never shows a record beside another record's card: a record whose image is missing
// gets a blank page that names the file, one whose name is path-like (never shown) closes the
// viewer. Neither is a message.
TEST_F(ImageDisplay, another_records_card_never_stays_beside_a_record_without_its_image) {
    SetSysValue("GUI_BildanzeigeEnabled", true);
    writeImage("31901001.tif");
    FormValues form = demoForms().at(0);
    insertRecord(form); // Huber, with her card
    FormValues missing = demoForms().at(1);
    missing["BMPName"] = "31909999.tif"; // de Vries, never scanned
    const qint32 deVries = insertRecord(missing);
    // The scan lies in a sub-folder of the image folder and the record names it with that folder:
    // image folder + name is a file, but a name with a folder is never shown.
    QDir().mkpath(home.path("images/alt"));
    writeImage("alt/31901001.tif");
    form["BMPName"] = "alt/31901001.tif";
    insertRecord(form);
    open();
    ASSERT_TRUE(viewerStatus().contains("31901001.tif"));

    key(Qt::Key_F10); // hands Mrs Huber over; Mr de Vries comes next
    ASSERT_EQ(window->currentRecord(), deVries);
    ASSERT_NE(viewer(), nullptr);
    EXPECT_TRUE(viewerStatus().contains("31909999.tif")) << viewerStatus().toStdString();
    EXPECT_FALSE(viewerStatus().contains("31901001.tif")) << viewerStatus().toStdString();
    QImage page = viewer()->findChild<QWidget*>("zvbkorPage")->grab().toImage();
    EXPECT_EQ(page.pixelColor(page.width() / 2, page.height() / 3), QColor(Qt::white)) << "a blank sheet";
    key(Qt::Key_Tab);
    EXPECT_TRUE(viewerStatus().contains("31909999.tif"));

    messages.queueAnswer(MsgBox::Yes);
    key(Qt::Key_F8); // discards him
    ASSERT_EQ(field("NACHNAME")->text(), "Huber");
    EXPECT_EQ(viewer(), nullptr);
    EXPECT_EQ(messages.messages().size(), 1) << messages.prompts().join("|").toStdString(); // the discard's question
}

} // namespace
