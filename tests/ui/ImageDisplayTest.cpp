// SPDX-License-Identifier: Apache-2.0
// The scanned page beside the form: which field's region the viewer shows, and the cases in which
// it must not appear at all (display switched off, a path-like image name, a missing file).

#include "MainWindowFixture.h"

#include "app/Home.h"
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
    ImageDisplay() { setting("GUI_BildanzeigeEnabled", true); }

    // The demo scan of Mrs Huber's card, as the evaluation leaves it in the image folder.
    QString copyDemoImage(const QString& name = "31901001.tif") {
        const QString target = home.path("images/" + name);
        QFile::remove(target);
        EXPECT_TRUE(QFile::copy(masterDataDir() + "demo/home/images/31901001.tif", target));
        return target;
    }
    static QWidget* viewer() {
        for (QWidget* w : QApplication::topLevelWidgets())
            if (w->isVisible() && w->windowTitle() == "ZV-Beleg Image Viewer")
                return w;
        return nullptr;
    }
    static QString viewerStatus() {
        QWidget* v = viewer();
        auto* status = v ? v->findChild<QLabel*>("zvbkorStatus") : nullptr;
        return status ? status->text() : QString();
    }
    QAction* action(const QString& name) const { return window->findChild<QAction*>(name); }
};

TEST_F(ImageDisplay, follows_the_field_in_hand_without_taking_the_keyboard_and_closes_with_the_program) {
    copyDemoImage();
    insertDemoRecords(1);
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

    messages.queueAnswer(MsgBox::Yes);
    window->close();
    EXPECT_EQ(viewer(), nullptr);
}

TEST_F(ImageDisplay, switched_off_no_viewer_appears_and_switching_off_closes_it) {
    copyDemoImage();
    insertDemoRecords(1);
    setting("GUI_BildanzeigeEnabled", false);
    open();
    key(Qt::Key_Tab);
    EXPECT_EQ(viewer(), nullptr);

    action("mpToggleBildanzeige")->trigger();
    EXPECT_TRUE(GetSysFlag("GUI_BildanzeigeEnabled", false));
    EXPECT_NE(viewer(), nullptr);
    action("mpToggleBildanzeige")->trigger();
    EXPECT_EQ(viewer(), nullptr);
}

TEST_F(ImageDisplay, a_path_like_or_missing_image_shows_nothing_and_says_nothing) {
    // The scan lies in a sub-folder of the image folder and the record names it with that folder:
    // image folder + name is a file, but a name with a folder is never shown.
    QDir().mkpath(home.path("images/alt"));
    copyDemoImage("alt/31901001.tif");
    FormValues form = demoForms().at(0);
    form["BMPName"] = "alt/31901001.tif";
    insertRecord(form);
    form["BMPName"] = "31909999.tif"; // never scanned
    insertRecord(form);
    open();
    key(Qt::Key_Tab);
    EXPECT_EQ(viewer(), nullptr);

    messages.queueAnswer(MsgBox::Yes);
    action("mpBelegLoeschen")->trigger();
    ASSERT_EQ(field("NACHNAME")->text(), "Huber");
    key(Qt::Key_Tab);
    EXPECT_EQ(viewer(), nullptr);
    EXPECT_EQ(messages.messages().size(), 1) << messages.prompts().join("|").toStdString();
}

TEST_F(ImageDisplay, f12_shows_the_page_full_screen_until_escape_then_closes_the_viewer) {
    copyDemoImage();
    insertDemoRecords(1);
    open();
    ASSERT_NE(viewer(), nullptr);
    bool fullScreenSeen = false;
    QTimer::singleShot(100, [&] {
        for (QWidget* w : QApplication::topLevelWidgets())
            if (w->isVisible() && w->objectName() == "zvbkorFullScreen") {
                fullScreenSeen = true;
                QTest::keyClick(w, Qt::Key_Escape);
            }
    });
    key(Qt::Key_F12);
    EXPECT_TRUE(fullScreenSeen);
    EXPECT_EQ(viewer(), nullptr);
    EXPECT_FALSE(action("mpVollbild")->isChecked());
    EXPECT_FALSE(GetSysFlag("GUI_VollbildEnabled", true));
    // The next field shows the page again.
    key(Qt::Key_Tab);
    EXPECT_NE(viewer(), nullptr);
}

} // namespace
