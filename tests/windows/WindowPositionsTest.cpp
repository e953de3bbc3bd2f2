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

// Closing stores the place (a corner dragged off the left or top edge at the edge) and the next
// window comes back there, also once it is shown.
TEST_F(WindowPositions, closing_stores_the_place_and_the_next_window_comes_back_there) {
    const struct {
        QPoint left;
        WindowPosition stored;
    } cases[] = {{{150, 120}, {150, 120, 420, 250}}, {{-40, -25}, {0, 0, 420, 250}}};
    for (const auto& c : cases) {
        {
            frmTestNotiz dialog;
            showAt(dialog, c.left, {420, 250});
            dialog.reject();
        }
        EXPECT_EQ(stored("frmTestNotiz"), c.stored);
        frmTestNotiz again;
        EXPECT_EQ(again.geometry().size(), QSize(420, 250));
        again.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&again));
        EXPECT_EQ(again.pos(), QPoint(c.stored.x, c.stored.y)) << "showing does not move it";
    }
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

} // namespace
