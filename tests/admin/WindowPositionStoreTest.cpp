// The stored window rectangles and the rule that keeps a window's corner on the screen.

#include "HomeTest.h"
#include "admin/mdlWindowPositions.h"
#include "app/Database.h"
#include "app/mdlDB.h"

namespace {

class WindowPositionStore : public HomeTest {
protected:
    int rowsOf(const QString& form) {
        return CountRows(QStringLiteral("*"), QStringLiteral("zvbSysWindowPositions"),
                         QStringLiteral("formName=") + sqlQuote(form));
    }
};

TEST_F(WindowPositionStore, writing_adds_one_row_and_then_updates_it) {
    WriteWindowPosition(QStringLiteral("frmMain"), {120, 40, 1024, 700});
    EXPECT_EQ(ReadWindowPosition(QStringLiteral("frmMain")), (WindowPosition{120, 40, 1024, 700}));
    WriteWindowPosition(QStringLiteral("frmMain"), {10, 20, 800, 600});
    EXPECT_EQ(ReadWindowPosition(QStringLiteral("frmMain")), (WindowPosition{10, 20, 800, 600}));
    EXPECT_EQ(rowsOf(QStringLiteral("frmMain")), 1);
    // Windows keep their own rows.
    WriteWindowPosition(QStringLiteral("frmFehler"), {600, 500, 400, 200});
    EXPECT_EQ(ReadWindowPosition(QStringLiteral("frmMain")), (WindowPosition{10, 20, 800, 600}));
    EXPECT_EQ(ReadWindowPosition(QStringLiteral("frmFehler")), (WindowPosition{600, 500, 400, 200}));
}

TEST_F(WindowPositionStore, names_with_an_apostrophe_are_stored_too) {
    WriteWindowPosition(QStringLiteral("frm'Spezial"), {5, 6, 7, 8});
    EXPECT_EQ(ReadWindowPosition(QStringLiteral("frm'Spezial")), (WindowPosition{5, 6, 7, 8}));
}

TEST_F(WindowPositionStore, null_columns_read_as_zero) {
    execSql(QStringLiteral("INSERT INTO zvbSysWindowPositions (formName, x, y) VALUES ('frmAbout', 50, NULL)"));
    EXPECT_EQ(ReadWindowPosition(QStringLiteral("frmAbout")), (WindowPosition{50, 0, 0, 0}));
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
