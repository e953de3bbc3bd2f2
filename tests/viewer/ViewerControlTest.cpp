// SPDX-License-Identifier: Apache-2.0
// Working the shown page: the numeric-pad scroll codes, the zoom steps, quarter turns, inversion
// and inversion, each checked on what the viewer shows.
#include "ViewerPages.h"
#include "viewer/zvbkor.h"

#include <QWidget>

#include <gtest/gtest.h>

namespace {

class ViewerControl : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(dir.isValid());
        Schliessen();
        colourPath = writeTiff(dir, QStringLiteral("farbe.tif"), {standardPage(PageKind::Colour)});
    }
    void TearDown() override { Schliessen(); }

    QRect blue() const { return boxOf(grabPageArea(), isBlockBlue); }
    QRect green() const { return boxOf(grabPageArea(), isNotchGreen); }

    QTemporaryDir dir;
    QString colourPath;
};

// 6 moves the view right (the page moves left on screen), 4 back, 2 down, 8 up, each by a quarter
// of the view; other codes do nothing. At 100 % the page is wider than the view.
TEST_F(ViewerControl, numeric_pad_codes_scroll) {
    ASSERT_EQ(show(colourPath, surnameBlock), 1);
    ASSERT_EQ(AnzeigeZoom(1), 1);
    ASSERT_EQ(AnzeigeZoom(1), 1);
    ASSERT_TRUE(viewerStatus().contains(QStringLiteral("100 %")));
    const QSize view = grabPageArea().size();
    const QRect start = blue();
    ASSERT_FALSE(start.isEmpty());

    const struct {
        int code, dx, dy;
    } moves[] = {{6, -(view.width() / 4), 0}, {4, 0, 0}, {2, 0, -(view.height() / 4)}, {8, 0, 0}};
    for (const auto& m : moves) {
        ASSERT_EQ(AnzeigeTaste(m.code), 1);
        EXPECT_EQ(blue(), start.translated(m.dx, m.dy)) << m.code;
    }
    for (const int other : {5, 0, 66})
        EXPECT_EQ(AnzeigeTaste(other), 0) << other;
    EXPECT_EQ(blue(), start);
}

// Each step zooms by about 1.41 and keeps the marked field in sight (vertically where it was; the
// page's left edge is near), and the steps end at both sides.
TEST_F(ViewerControl, zoom_steps_keep_the_field_in_sight) {
    ASSERT_EQ(show(colourPath, surnameBlock), 1);
    const QSize view = grabPageArea().size();
    const QRect start = blue();
    EXPECT_TRUE(viewerStatus().contains(QStringLiteral("50 %")));

    ASSERT_EQ(AnzeigeZoom(1), 1);
    QRect now = blue();
    EXPECT_NEAR(double(now.width()) / start.width(), 1.414, 0.03);
    EXPECT_TRUE(whollyInside(now, view));
    EXPECT_NEAR(now.center().y(), start.center().y(), 2);
    EXPECT_TRUE(viewerStatus().contains(QStringLiteral("71 %")));

    ASSERT_EQ(AnzeigeZoom(0), 1);
    EXPECT_EQ(blue(), start);
    ASSERT_EQ(AnzeigeZoom(0), 1);
    now = blue();
    EXPECT_NEAR(double(now.width()) / start.width(), 0.707, 0.03);
    EXPECT_TRUE(whollyInside(now, view));

    EXPECT_EQ(AnzeigeZoom(2), 0);
    EXPECT_EQ(AnzeigeZoom(-1), 0);
    EXPECT_EQ(blue(), now);

    for (const auto& [direction, fewest] : {std::pair{1, 4}, {0, 7}}) {
        int steps = 0;
        while (AnzeigeZoom(direction) == 1 && steps < 50)
            ++steps;
        EXPECT_TRUE(steps >= fewest && steps < 50) << "zoom direction " << direction << ": " << steps << " steps";
    }
}

// A positive turn is clockwise: the wide block stands upright and the notch right of it comes to
// lie below it; the mark turns with the page. A negative turn undoes it, another one turns
// anticlockwise (notch above). Inversion turns paper black and the blue block yellow, the red mark
// stays red, and a second call restores the page exactly.
TEST_F(ViewerControl, quarter_turns_inversion_and_a_new_image_upright) {
    ASSERT_EQ(show(colourPath, surnameBlock), 1);
    const QRect start = blue();
    ASSERT_GT(start.width(), start.height());
    ASSERT_GT(green().left(), start.right());

    ASSERT_EQ(AnzeigeDrehen(1), 1);
    QRect b = blue(), g = green();
    EXPECT_GT(b.height(), b.width());
    EXPECT_GT(g.top(), b.bottom());
    EXPECT_TRUE(g.left() >= b.left() && g.right() <= b.right());
    const QImage turned = grabPageArea();
    EXPECT_TRUE(isMarkRed(turned.pixel(b.left() - 3, b.center().y())));
    EXPECT_TRUE(viewerStatus().contains(QStringLiteral("90°")));

    ASSERT_EQ(AnzeigeDrehen(-1), 1);
    EXPECT_EQ(blue(), start);
    ASSERT_EQ(AnzeigeDrehen(-1), 1);
    b = blue();
    g = green();
    EXPECT_GT(b.height(), b.width());
    EXPECT_LT(g.bottom(), b.top());
    EXPECT_EQ(AnzeigeDrehen(0), 0);

    const QImage normal = grabPageArea();
    const QPoint paper(b.center().x(), b.bottom() + 30);
    ASSERT_TRUE(isPaper(normal.pixel(paper)));
    ASSERT_EQ(AnzeigeInvert(), 1);
    const QImage inverted = grabPageArea();
    EXPECT_EQ(inverted.pixel(b.center()), qRgb(255 - blockBlue.red(), 255 - blockBlue.green(), 255 - blockBlue.blue()));
    EXPECT_LT(qGray(inverted.pixel(paper)), 10);
    EXPECT_TRUE(isMarkRed(inverted.pixel(b.left() - 3, b.center().y())));
    EXPECT_TRUE(viewerStatus().contains(QStringLiteral("invertiert")));
    ASSERT_EQ(AnzeigeInvert(), 1);
    EXPECT_EQ(grabPageArea(), normal);

    // A new image starts upright and not inverted; the zoom is kept.
    ASSERT_EQ(AnzeigeZoom(1), 1);
    ASSERT_EQ(AnzeigeInvert(), 1);
    ASSERT_EQ(show(writeTiff(dir, QStringLiteral("neu.tif"), {standardPage(PageKind::Colour)}), surnameBlock), 1);
    b = blue();
    EXPECT_GT(b.width(), b.height());
    EXPECT_TRUE(isPaper(grabPageArea().pixel(b.center().x(), b.bottom() + 30)));
    EXPECT_TRUE(viewerStatus().contains(QStringLiteral("71 %")));
}

} // namespace
