// SPDX-License-Identifier: Apache-2.0
// Showing a page: the region is in view and framed on bitonal, grey and colour scans, offsets shift
// it, other fields of the same file are reached without reading the file again, the first page of
// a multi-page file is the one shown, and a file that cannot be shown never leaves another page in
// view. Working the shown page: the numeric-pad scroll codes, the zoom steps, quarter turns and
// inversion, each checked on what the viewer shows.
#include "ViewerPages.h"
#include "viewer/zvbkor.h"

#include <QFile>
#include <QFileInfo>
#include <QWidget>

#include <array>
#include <gtest/gtest.h>

namespace {

class Viewer : public ::testing::Test {
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

class ViewerDisplayKinds : public Viewer, public ::testing::WithParamInterface<PageKind> {};

// The block where the region lies is wholly visible (in the middle as far as the page's edges
// allow), at its own shape, framed in red on all four sides; the status line names file and field.
// A multi-page file shows its first page: the second page's block is not shown. Every display
// reuses the one window.
TEST_P(ViewerDisplayKinds, region_of_the_first_page_is_in_view_and_framed) {
    const PageKind kind = GetParam();
    const QRect secondPageBlock(1000, 200, 200, 200);
    const QString path = writeTiff(dir, QStringLiteral("31901001.tif"),
                                   {standardPage(kind), makePage(kind, {{secondPageBlock, blockBlue}})});
    ASSERT_EQ(show(path, surnameBlock), 1);
    QWidget* window = viewerWindow();
    ASSERT_NE(window, nullptr);
    EXPECT_TRUE(window->isVisible());

    const QImage view = grabPageArea();
    const QRect block = boxOf(view, kind == PageKind::Colour ? isBlockBlue : isDarkInk);
    EXPECT_TRUE(whollyInside(block, view.size())) << "the block is not in view";
    EXPECT_NEAR(block.center().y(), view.height() / 2, 3);
    EXPECT_NEAR(double(block.width()) / block.height(), 400.0 / 120.0, 0.15);

    const QPoint mid = block.center();
    for (const QPoint& beside : {QPoint(block.left() - 3, mid.y()), QPoint(block.right() + 3, mid.y()),
                                 QPoint(mid.x(), block.bottom() + 3), QPoint(mid.x(), block.top() - 3)})
        EXPECT_TRUE(isMarkRed(view.pixel(beside))) << beside.x() << ',' << beside.y();
    EXPECT_TRUE(isPaper(view.pixel(block.left() - 12, mid.y()))) << "paper outside the frame";
    EXPECT_TRUE(viewerStatus().contains(QStringLiteral("31901001.tif")));
    EXPECT_TRUE(viewerStatus().contains(QStringLiteral("NACHNAME")));

    ASSERT_EQ(show(path, secondPageBlock), 1);
    const QImage first = grabPageArea();
    EXPECT_TRUE(isPaper(first.pixel(first.width() / 2, first.height() / 2))) << "second page shown";
    EXPECT_EQ(viewerWindows(), QList<QWidget*>{window});
}

INSTANTIATE_TEST_SUITE_P(PageKinds, ViewerDisplayKinds,
                         ::testing::Values(PageKind::Bitonal, PageKind::Grey, PageKind::Colour), [](const auto& info) {
                             return std::string(std::array{"Bitonal", "Grey", "Colour"}[int(info.param)]);
                         });

// The record's offsets move the region: a region defined 30 px left and 20 px above the block,
// with offsets "30" and "20", shows the block exactly as the block's own region does; blanks and
// signs in the offset texts are read, an empty text counts 0. A region of width or height 0 shows
// the page from its top left corner, unmarked: there the page scrolls neither up nor left.
TEST_F(Viewer, offsets_shift_the_region_and_an_empty_one_shows_the_corner) {
    ASSERT_EQ(show(colourPath, surnameBlock), 1);
    const QRect expected = blue();

    const struct {
        QRect region;
        const char* x;
        const char* y;
    } offsets[] = {{surnameBlock.translated(-30, -20), "30", "20"},
                   {surnameBlock.translated(12, 7), " -12", "-7 "},
                   {surnameBlock, "", ""}};
    for (const auto& o : offsets) {
        ASSERT_EQ(show(colourPath, o.region, "NACHNAME", o.x, o.y), 1);
        EXPECT_EQ(blue(), expected) << o.x << '/' << o.y;
    }

    ASSERT_EQ(show(colourPath, QRect(500, 500, 0, 0), ""), 1);
    const QRect corner = blue();
    EXPECT_TRUE(boxOf(grabPageArea(), isMarkRed).isEmpty());
    EXPECT_EQ(AnzeigeTaste(8), 0);
    EXPECT_EQ(AnzeigeTaste(4), 0);
    EXPECT_EQ(blue(), corner);
    EXPECT_EQ(AnzeigeTaste(2), 1);
}

// A region bigger than the view at the starting zoom is still shown whole (the viewer zooms out),
// and scans at 300 dpi are shown in their own pixels: each block is wholly in view at its shape.
TEST_F(Viewer, large_regions_and_300_dpi_pages_are_shown_whole) {
    const struct {
        QRect block;
        QSize page;
        int dpi;
    } rows[] = {{QRect(150, 430, 1400, 1100), QSize(1654, 2339), 200},
                {QRect(450, 1050, 600, 180), QSize(2480, 3508), 300}};
    for (const auto& row : rows) {
        const QImage page = makePage(PageKind::Grey, {{row.block, Qt::black}}, row.page, row.dpi);
        ASSERT_EQ(show(writeTiff(dir, QStringLiteral("gross.tif"), {page}), row.block, "KARTE"), 1);
        const QImage view = grabPageArea();
        const QRect block = boxOf(view, isDarkInk);
        EXPECT_TRUE(whollyInside(block, view.size())) << row.block.width();
        EXPECT_NEAR(block.center().y(), view.height() / 2, 3);
        EXPECT_NEAR(double(block.width()) / block.height(), double(row.block.width()) / row.block.height(), 0.05);
    }
}

// Going to another field of the same file repositions from the page already in memory: the file
// is replaced by bytes no reader understands (same size and time), and the viewer still moves to
// the other block. A file written anew under the same name (a new scan) is read again.
TEST_F(Viewer, the_file_is_read_again_only_when_it_changed) {
    const QString path = writeTiff(dir, QStringLiteral("31901002.tif"), {standardPage(PageKind::Grey)});
    ASSERT_EQ(show(path, surnameBlock), 1);
    const QFileInfo before(path);
    const QDateTime modified = before.lastModified();
    {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        file.write(QByteArray(before.size(), 'x'));
        file.flush();
        file.setFileTime(modified, QFileDevice::FileModificationTime);
    }
    ASSERT_EQ(show(path, otherBlock, "CARD_ID"), 1) << "the page in memory is not used";

    writeTiff(dir, QStringLiteral("31901002.tif"), {makePage(PageKind::Grey, {{otherBlock, Qt::black}})});
    ASSERT_EQ(show(path, surnameBlock), 1);
    EXPECT_TRUE(boxOf(grabPageArea(), isDarkInk).isEmpty()) << "old page still shown";
}

// An empty name answers 0 and changes nothing. A missing file or one that is no image answers 0
// too, but the page shown before belongs to another record and must go: the viewer shows a blank
// sheet with the notice the caller gave, opening for it when it was closed. Once closed, a second
// Schliessen has nothing to close, nor have the commands.
TEST_F(Viewer, an_unreadable_file_replaces_the_page_by_a_blank_sheet_naming_it) {
    ASSERT_EQ(show(colourPath, surnameBlock), 1);
    const QImage shown = grabPageArea();
    EXPECT_EQ(Anzeigen("", "NACHNAME", "0", "0", 1, 1, 10, 10), 0);
    EXPECT_EQ(Anzeigen(nullptr, nullptr, nullptr, nullptr, 1, 1, 10, 10), 0);
    EXPECT_EQ(grabPageArea(), shown);

    QFile text(dir.filePath(QStringLiteral("notiz.tif")));
    ASSERT_TRUE(text.open(QIODevice::WriteOnly));
    text.write("Dies ist kein Bild.\r\n");
    text.close();
    const QString missing = dir.filePath(QStringLiteral("fehlt.tif"));
    for (const QString& file : {text.fileName(), missing}) {
        const QByteArray notice = "Die Bilddatei '" + QFileInfo(file).fileName().toUtf8() + "' fehlt.";
        EXPECT_EQ(Anzeigen(QFile::encodeName(file).constData(), notice.constData(), "0", "0", 300, 700, 400, 120), 0);
        ASSERT_NE(viewerWindow(), nullptr);
        EXPECT_TRUE(viewerWindow()->isVisible());
        const QImage blank = grabPageArea();
        EXPECT_TRUE(boxOf(blank, isBlockBlue).isEmpty()) << "the other record's page is still shown";
        EXPECT_FALSE(boxOf(blank, isPaper).isEmpty());
        EXPECT_TRUE(viewerStatus().contains(QString::fromUtf8(notice))) << viewerStatus().toStdString();
        EXPECT_EQ(AnzeigeVoll(), 0); // nothing to show full screen
        EXPECT_EQ(Schliessen(), 1);
        EXPECT_FALSE(viewerWindow()->isVisible());
    }
    EXPECT_EQ(Schliessen(), 0);
    EXPECT_EQ(AnzeigeTaste(6), 0);
    EXPECT_EQ(AnzeigeZoom(1), 0);
    EXPECT_EQ(AnzeigeDrehen(1), 0);
    EXPECT_EQ(AnzeigeInvert(), 0);
}

// Each step zooms by about 1.41 and keeps the marked field in sight (vertically where it was; the
// page's left edge is near), and the steps end at both sides. At 100 % the page is wider than the
// view: numeric-pad code 6 moves the view right (the page moves left on screen), 4 back, 2 down,
// 8 up, each by a quarter of the view; other codes do nothing.
TEST_F(Viewer, zoom_steps_keep_the_field_in_sight_and_numeric_pad_codes_scroll) {
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

    ASSERT_EQ(AnzeigeZoom(1), 1);
    ASSERT_TRUE(viewerStatus().contains(QStringLiteral("100 %")));
    const QRect at100 = blue();
    const struct {
        int code, dx, dy;
    } moves[] = {{6, -(view.width() / 4), 0}, {4, 0, 0}, {2, 0, -(view.height() / 4)}, {8, 0, 0}};
    for (const auto& m : moves) {
        ASSERT_EQ(AnzeigeTaste(m.code), 1);
        EXPECT_EQ(blue(), at100.translated(m.dx, m.dy)) << m.code;
    }
    for (const int other : {5, 0, 66})
        EXPECT_EQ(AnzeigeTaste(other), 0) << other;
    EXPECT_EQ(blue(), at100);

    ASSERT_EQ(AnzeigeZoom(0), 1);
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
TEST_F(Viewer, quarter_turns_inversion_and_a_new_image_upright) {
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
