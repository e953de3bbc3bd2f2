// SPDX-License-Identifier: Apache-2.0
// The viewer never takes the keyboard from the caller's window: typing goes on in the form while
// the viewer opens, follows fields, scrolls, zooms, turns and inverts; the full-screen view takes
// it until Escape or a click, and then the form is active again.
#include "ViewerPages.h"
#include "viewer/zvbkor.h"

#include <QApplication>
#include <QLineEdit>
#include <QTest>
#include <QTimer>
#include <QVBoxLayout>
#include <QWidget>

#include <gtest/gtest.h>

namespace {

void type(QWidget& window, const QString& text) {
    for (const QChar c : text)
        QTest::keyClick(window.windowHandle(), c.toLatin1());
}

class ViewerFocus : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(dir.isValid());
        Schliessen();
        path = writeTiff(dir, QStringLiteral("31901007.tif"), {standardPage(PageKind::Colour)});
        auto* layout = new QVBoxLayout(&form);
        nachname = new QLineEdit(&form);
        nachname->setObjectName(QStringLiteral("NACHNAME"));
        layout->addWidget(nachname);
        form.setWindowTitle(QStringLiteral("Veridon"));
        form.show();
        form.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&form));
        nachname->setFocus();
    }
    void TearDown() override { Schliessen(); }

    bool formHasKeyboard() const { return QApplication::activeWindow() == &form && nachname->hasFocus(); }

    QTemporaryDir dir;
    QString path;
    QWidget form;
    QLineEdit* nachname = nullptr;
};

// Typing goes on in the form while the viewer opens, follows another field, scrolls, zooms, turns
// and inverts. Full screen shows the whole page with the mark and takes all input until Escape
// (other keys do not end it); afterwards the form has the keyboard again.
TEST_F(ViewerFocus, the_form_keeps_the_keyboard_except_in_full_screen_until_escape) {
    ASSERT_EQ(show(path, surnameBlock, "NACHNAME"), 1);
    QTest::qWait(50);
    ASSERT_NE(viewerWindow(), nullptr);
    EXPECT_TRUE(viewerWindow()->isVisible());
    EXPECT_TRUE(formHasKeyboard());
    type(form, QStringLiteral("Hu"));
    // raised the way the main window raises it: found by caption, brought up without activation
    viewerWindow()->raise();
    ASSERT_EQ(show(path, otherBlock, "CARD_ID"), 1);
    ASSERT_EQ(AnzeigeTaste(8), 1);
    ASSERT_EQ(AnzeigeZoom(1), 1);
    ASSERT_EQ(AnzeigeDrehen(1), 1);
    ASSERT_EQ(AnzeigeInvert(), 1);
    QTest::qWait(50);
    type(form, QStringLiteral("ber"));
    EXPECT_TRUE(formHasKeyboard());
    EXPECT_EQ(nachname->text(), QStringLiteral("Huber"));
    ASSERT_EQ(show(path, surnameBlock, "NACHNAME"), 1);
    ASSERT_EQ(AnzeigeDrehen(-1), 1);
    ASSERT_EQ(AnzeigeInvert(), 1);
    nachname->clear();
    QImage seen;
    bool wasFullScreen = false, modal = false, survivedOtherKey = false;
    ASSERT_EQ(showFullScreen([&](QWidget* view) {
                  wasFullScreen = view->isFullScreen();
                  modal = QApplication::activeModalWidget() == view;
                  seen = view->grab().toImage().convertToFormat(QImage::Format_RGB32);
                  type(form, QStringLiteral("xx")); // typed at the form: blocked while full screen is up
                  QTest::keyClick(view, Qt::Key_A);
                  // Still up once the key has been handled (the view is deleted when full screen ends).
                  QTimer::singleShot(50, view, [&survivedOtherKey, view] {
                      survivedOtherKey = true;
                      QTest::keyClick(view, Qt::Key_Escape);
                  });
              }),
              1);
    EXPECT_TRUE(wasFullScreen);
    EXPECT_TRUE(modal);
    EXPECT_TRUE(survivedOtherKey);
    EXPECT_EQ(fullScreenView(), nullptr);
    EXPECT_TRUE(QTest::qWaitForWindowActive(&form));
    type(form, QStringLiteral("Maria"));
    EXPECT_EQ(nachname->text(), QStringLiteral("Maria"));

    // The whole page upright (the turn was undone), fitted to the screen, with the mark.
    const QRect paper = boxOf(seen, isPaper);
    EXPECT_NEAR(double(paper.height()) / paper.width(), 2339.0 / 1654.0, 0.02) << "the whole page";
    EXPECT_TRUE(paper.top() <= 1 || paper.left() <= 1) << "fitted to the screen";
    const QRect b = boxOf(seen, isBlockBlue);
    EXPECT_TRUE(isMarkRed(seen.pixel(b.left() - 3, b.center().y())));

    // A click ends full screen too, and the viewer window still shows its page. After Schliessen the
    // last image can still be shown full screen (the main window does that with the display switched
    // off); Schliessen during full screen ends it.
    const QImage window = grabPageArea();
    ASSERT_EQ(showFullScreen([](QWidget* view) { QTest::mouseClick(view, Qt::LeftButton, {}, QPoint(20, 20)); }), 1);
    EXPECT_EQ(fullScreenView(), nullptr);
    EXPECT_TRUE(viewerWindow()->isVisible());
    EXPECT_EQ(grabPageArea(), window);
    ASSERT_EQ(Schliessen(), 1);
    int closed = 0;
    ASSERT_EQ(showFullScreen([&closed](QWidget*) { closed = Schliessen(); }), 1);
    EXPECT_EQ(closed, 1);
    EXPECT_EQ(fullScreenView(), nullptr);
    EXPECT_FALSE(viewerWindow()->isVisible());
}

} // namespace
