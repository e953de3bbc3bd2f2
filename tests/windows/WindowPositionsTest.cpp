// SPDX-License-Identifier: Apache-2.0
// Windows reopen where they were closed, stay reachable on the screen, and a minimised window does
// not overwrite its place.

#include "ui/WindowPositions.h"
#include "WindowTexts.h"
#include "admin/mdlWindowPositions.h"
#include "ui/frmFehler.h"
#include "ui/frmTestNotiz.h"

#include <QGuiApplication>
#include <QScreen>
#include <QTest>

namespace {

class WindowPositions : public WindowTest {
protected:
    static QSize screen() { return QGuiApplication::primaryScreen()->geometry().size(); }
    static WindowPosition stored(const char* form) { return ReadWindowPosition(QLatin1String(form)); }

    // Shows w and waits until the platform has placed it.
    static void showAt(QWidget& w, const QPoint& corner, const QSize& size) {
        w.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&w));
        w.move(corner);
        w.resize(size);
        QCoreApplication::processEvents();
    }
};

TEST_F(WindowPositions, closing_stores_the_place_and_the_next_window_comes_back_there) {
    {
        frmTestNotiz dialog;
        showAt(dialog, {150, 120}, {420, 250});
        dialog.reject();
    }
    EXPECT_EQ(stored("frmTestNotiz"), (WindowPosition{150, 120, 420, 250}));
    frmTestNotiz again;
    EXPECT_EQ(again.pos(), QPoint(150, 120));
    EXPECT_EQ(again.size(), QSize(420, 250));
    again.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&again));
    EXPECT_EQ(again.pos(), QPoint(150, 120)) << "showing does not move it";
}

TEST_F(WindowPositions, a_window_left_beyond_the_right_or_bottom_edge_comes_back_on_screen) {
    {
        frmFehler errors;
        showAt(errors, {screen().width() - 20, 40}, {300, 200});
        errors.close();
    }
    EXPECT_EQ(stored("frmFehler").x, screen().width() - 20) << "stored as it was";
    {
        frmFehler errors;
        EXPECT_EQ(errors.pos(), QPoint(0, 40));
    }
    // 75 pixels of the corner are enough to reach it.
    WriteWindowPosition("frmFehler", {screen().width() - 76, screen().height() - 60, 300, 200});
    frmFehler errors;
    EXPECT_EQ(errors.pos(), QPoint(screen().width() - 76, 0));
}

TEST_F(WindowPositions, a_window_dragged_off_the_left_and_top_edge_is_stored_at_the_edge) {
    frmTestNotiz dialog;
    showAt(dialog, {-40, -25}, {420, 250});
    dialog.reject();
    EXPECT_EQ(stored("frmTestNotiz"), (WindowPosition{0, 0, 420, 250}));
}

TEST_F(WindowPositions, a_minimised_window_keeps_its_earlier_place) {
    WriteWindowPosition("frmFehler", {120, 90, 480, 240});
    frmFehler errors;
    showAt(errors, {300, 200}, {350, 150});
    errors.showMinimized();
    QCoreApplication::processEvents();
    ASSERT_TRUE(errors.isMinimized());
    errors.close();
    EXPECT_EQ(stored("frmFehler"), (WindowPosition{120, 90, 480, 240}));
}

TEST_F(WindowPositions, a_maximised_window_stores_the_place_it_returns_to) {
    QWidget main;
    main.setObjectName("frmMain");
    showAt(main, {60, 50}, {400, 240});
    main.showMaximized();
    QCoreApplication::processEvents();
    ASSERT_TRUE(main.isMaximized());
    ASSERT_NE(main.size(), QSize(400, 240)) << "the platform maximised it";
    SaveWindowPosition(&main);
    EXPECT_EQ(stored("frmMain"), (WindowPosition{60, 50, 400, 240}));
}

TEST_F(WindowPositions, a_window_without_a_row_goes_to_the_corner_and_keeps_its_size) {
    QWidget main;
    main.setObjectName("frmMain");
    main.move(200, 100);
    main.resize(640, 480);
    RestoreWindowPosition(&main);
    EXPECT_EQ(main.pos(), QPoint(0, 0));
    EXPECT_EQ(main.size(), QSize(640, 480));
    EXPECT_TRUE(messages.messages().isEmpty());
}

} // namespace
