// The viewer never takes the keyboard from the caller's window: typing goes on in the form while
// the viewer opens, follows fields, scrolls, zooms, turns and inverts; after full screen the form
// is active again.
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
        path = writeTiff(dir, QStringLiteral("31901007.tif"), {standardPage(PageKind::Bitonal)});
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

TEST_F(ViewerFocus, form_keeps_the_keyboard) {
    ASSERT_EQ(show(path, surnameBlock, "NACHNAME"), 1);
    QTest::qWait(50);
    ASSERT_NE(viewerWindow(), nullptr);
    EXPECT_TRUE(viewerWindow()->isVisible());
    EXPECT_FALSE(viewerWindow()->isActiveWindow());
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
}

// While full screen is up the form takes no input; afterwards it has the keyboard again.
TEST_F(ViewerFocus, form_is_active_again_after_full_screen) {
    ASSERT_EQ(show(path, surnameBlock, "NACHNAME"), 1);
    bool modal = false;
    QTimer::singleShot(50, [&] {
        QWidget* view = fullScreenView();
        if (!view)
            return;
        modal = QApplication::activeModalWidget() == view;
        type(form, QStringLiteral("xx")); // typed at the form: blocked while full screen is up
        QTest::keyClick(view, Qt::Key_Escape);
    });
    QTimer::singleShot(5000, [] { Schliessen(); });
    ASSERT_EQ(AnzeigeVoll(), 1);
    EXPECT_TRUE(modal);
    EXPECT_TRUE(QTest::qWaitForWindowActive(&form));
    type(form, QStringLiteral("Maria"));
    EXPECT_EQ(nachname->text(), QStringLiteral("Maria"));
}

} // namespace
