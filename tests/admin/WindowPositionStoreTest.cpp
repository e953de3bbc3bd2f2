// SPDX-License-Identifier: Apache-2.0
// The stored window rectangles and the rule that keeps a window's corner on the screen.

#include "HomeTest.h"
#include "admin/mdlWindowPositions.h"
#include "app/Database.h"
#include "app/mdlDB.h"

namespace {

using WindowPositionStore = HomeTest;

// A second write updates the window's one row; another window, also one whose name holds an
// apostrophe, keeps its own; null columns read as zero.
TEST_F(WindowPositionStore, each_window_has_one_row_that_writing_updates_and_75_pixels_stay_on_the_screen) {
    WriteWindowPosition("frmMain", {120, 40, 1024, 700});
    WriteWindowPosition("frm'Spezial", {600, 500, 400, 200});
    WriteWindowPosition("frmMain", {10, 20, 800, 600});
    EXPECT_EQ(ReadWindowPosition("frmMain"), (WindowPosition{10, 20, 800, 600}));
    EXPECT_EQ(ReadWindowPosition("frm'Spezial"), (WindowPosition{600, 500, 400, 200}));
    EXPECT_EQ(CountRows("*", "zvbSysWindowPositions", "formName='frmMain'"), 1);
    execSql("INSERT INTO zvbSysWindowPositions (formName, x, y) VALUES ('frmAbout', 50, NULL)");
    EXPECT_EQ(ReadWindowPosition("frmAbout"), (WindowPosition{50, 0, 0, 0}));

    // 75 pixels of the corner stay on a 1920 x 1080 screen: 1840 + 75 = 1915 lies on it, 1845 + 75 not.
    EXPECT_EQ(FitOnScreen({1840, 100, 640, 480}, 1920, 1080), (WindowPosition{1840, 100, 640, 480}));
    EXPECT_EQ(FitOnScreen({1845, 100, 640, 480}, 1920, 1080), (WindowPosition{0, 100, 640, 480}));
    EXPECT_EQ(FitOnScreen({100, 1000, 640, 480}, 1920, 1080), (WindowPosition{100, 1000, 640, 480}));
    EXPECT_EQ(FitOnScreen({100, 1010, 640, 480}, 1920, 1080), (WindowPosition{100, 0, 640, 480}));
}

} // namespace
