// SPDX-License-Identifier: Apache-2.0
// The stored window rectangles and the rule that keeps a window's corner on the screen.

#include "HomeTest.h"
#include "admin/mdlWindowPositions.h"
#include "app/Database.h"
#include "app/mdlDB.h"

namespace {

class WindowPositionStore : public HomeTest {
protected:
    int rowsOf(const QString& form) { return CountRows("*", "zvbSysWindowPositions", "formName=" + sqlQuote(form)); }
};

TEST_F(WindowPositionStore, writing_adds_one_row_and_then_updates_it) {
    WriteWindowPosition("frmMain", {120, 40, 1024, 700});
    EXPECT_EQ(ReadWindowPosition("frmMain"), (WindowPosition{120, 40, 1024, 700}));
    WriteWindowPosition("frmMain", {10, 20, 800, 600});
    EXPECT_EQ(ReadWindowPosition("frmMain"), (WindowPosition{10, 20, 800, 600}));
    EXPECT_EQ(rowsOf("frmMain"), 1);
    // Windows keep their own rows, also one whose name holds an apostrophe.
    WriteWindowPosition("frm'Spezial", {600, 500, 400, 200});
    EXPECT_EQ(ReadWindowPosition("frmMain"), (WindowPosition{10, 20, 800, 600}));
    EXPECT_EQ(ReadWindowPosition("frm'Spezial"), (WindowPosition{600, 500, 400, 200}));
    execSql("INSERT INTO zvbSysWindowPositions (formName, x, y) VALUES ('frmAbout', 50, NULL)");
    EXPECT_EQ(ReadWindowPosition("frmAbout"), (WindowPosition{50, 0, 0, 0})) << "null columns read as zero";
}

TEST(FitOnScreen, keeps_75_pixels_of_the_corner_on_the_screen) {
    // 1920 x 1080: 1900 + 75 lies beyond the right edge, 1840 + 75 = 1915 does not.
    EXPECT_EQ(FitOnScreen({1900, 100, 640, 480}, 1920, 1080), (WindowPosition{0, 100, 640, 480}));
    EXPECT_EQ(FitOnScreen({1840, 100, 640, 480}, 1920, 1080), (WindowPosition{1840, 100, 640, 480}));
    EXPECT_EQ(FitOnScreen({1845, 100, 640, 480}, 1920, 1080).x, 0) << "exactly 75 pixels left is not enough";
    EXPECT_EQ(FitOnScreen({100, 1010, 640, 480}, 1920, 1080), (WindowPosition{100, 0, 640, 480}));
    EXPECT_EQ(FitOnScreen({100, 1000, 640, 480}, 1920, 1080), (WindowPosition{100, 1000, 640, 480}));
}

} // namespace
