// SPDX-License-Identifier: Apache-2.0
// The scanned page beside the form: which field's region the viewer shows, when it does not appear
// at all (display switched off), and what it shows when the record has no page to show (a
// path-like name, a missing file).

#include "MainWindowFixture.h"

#include "app/mdlDB.h"

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QTimer>

namespace {

class ImageDisplay : public MainWindowTest {
protected:
    ImageDisplay() { SetSysValue("GUI_BildanzeigeEnabled", true); }
};

// The page follows the field in hand without taking the keyboard. F12 shows it full screen until
// Escape, then the viewer is closed until the next field; the display switch closes it and keeps it
// closed, also at the next start. It closes with the program.
TEST_F(ImageDisplay, follows_the_field_in_hand_and_closes_by_f12_the_display_switch_and_the_program) {
    writeImage("31901001.tif");
    insertDemoRecords(2);
    open();
    ASSERT_NE(viewer(), nullptr);
    EXPECT_TRUE(viewerStatus().contains("31901001.tif")) << viewerStatus().toStdString();
    EXPECT_TRUE(viewerStatus().contains("Formular")) << viewerStatus().toStdString();
    EXPECT_EQ(QApplication::activeWindow(), window.get());

    tabTo("NACHNAME");
    const QString before = viewerStatus();
    EXPECT_TRUE(before.contains("Nachname")) << before.toStdString();
    // The zoom items act on the viewer, and the keyboard stays with the form.
    action("mpZoomIn")->trigger();
    EXPECT_NE(viewerStatus(), before);
    action("mpZoomOut")->trigger();
    EXPECT_EQ(viewerStatus(), before);
    EXPECT_EQ(QApplication::activeWindow(), window.get());
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
