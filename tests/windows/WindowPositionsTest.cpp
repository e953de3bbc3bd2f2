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
// window comes back there, also once it is shown; one left beyond the right edge is stored as it
// was and comes back on the screen, while 75 pixels of the corner above the bottom edge are enough.
TEST_F(WindowPositions, closing_stores_the_place_and_the_next_window_comes_back_there) {
    const struct {
        QPoint left;
        WindowPosition stored;
        QPoint back;
    } cases[] = {{{150, 120}, {150, 120, 420, 250}, {150, 120}},
                 {{-40, -25}, {0, 0, 420, 250}, {0, 0}},
                 {{screen().width() - 20, screen().height() - 76},
                  {screen().width() - 20, screen().height() - 76, 420, 250},
                  {0, screen().height() - 76}}};
    for (const auto& c : cases) {
        {
            frmTestNotiz dialog;
            showAt(dialog, c.left, {420, 250});
            dialog.reject();
        }
        EXPECT_EQ(ReadWindowPosition("frmTestNotiz"), c.stored);
        frmTestNotiz again;
        EXPECT_EQ(again.geometry().size(), QSize(420, 250));
        again.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&again));
        EXPECT_EQ(again.pos(), c.back) << "showing does not move it";
    }
    // A minimised window keeps its earlier place; a maximised one stores the place it returns to.
    WriteWindowPosition("frmFehler", {120, 90, 480, 240});
    {
        frmFehler errors;
        showAt(errors, {300, 200}, {350, 150});
        errors.showMinimized();
        QCoreApplication::processEvents();
        ASSERT_TRUE(errors.isMinimized());
        errors.close();
    }
    EXPECT_EQ(ReadWindowPosition("frmFehler"), (WindowPosition{120, 90, 480, 240}));
    QWidget main;
    main.setObjectName("frmMain");
    showAt(main, {60, 50}, {400, 240});
    main.showMaximized();
    QCoreApplication::processEvents();
    ASSERT_TRUE(main.isMaximized());
    ASSERT_NE(main.size(), QSize(400, 240)) << "the platform maximised it";
    SaveWindowPosition(&main);
    EXPECT_EQ(ReadWindowPosition("frmMain"), (WindowPosition{60, 50, 400, 240}));
}

} // namespace
