// SPDX-License-Identifier: Apache-2.0
// Showing a page: the region is in view and framed on bitonal, grey and colour scans, offsets shift
// it, other fields of the same file are reached without reading the file again, the first page of
// a multi-page file is the one shown, and files that cannot be shown leave the viewer as it was.
#include "ViewerPages.h"
#include "viewer/zvbkor.h"

#include <QFile>
#include <QFileInfo>
#include <QWidget>

#include <gtest/gtest.h>

namespace {

std::function<bool(QRgb)> inkOf(PageKind kind) {
    return kind == PageKind::Colour ? std::function<bool(QRgb)>(isBlockBlue) : std::function<bool(QRgb)>(isDarkInk);
}

class ViewerDisplay : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(dir.isValid());
        Schliessen();
    }
    void TearDown() override { Schliessen(); }

    QTemporaryDir dir;
};

class ViewerDisplayKinds : public ViewerDisplay, public ::testing::WithParamInterface<PageKind> {};

// The block where the region lies is wholly visible (in the middle as far as the page's edges
// allow), at its own shape, framed in red on all four sides; the status line names file and field.
TEST_P(ViewerDisplayKinds, region_is_in_view_and_framed) {
    const PageKind kind = GetParam();
    const QString path = writeTiff(dir, QStringLiteral("31901001.tif"), {standardPage(kind)});
    ASSERT_EQ(show(path, surnameBlock), 1);
    QWidget* window = viewerWindow();
    ASSERT_NE(window, nullptr);
    EXPECT_TRUE(window->isVisible());

    const QImage view = grabPageArea();
    const QRect block = boxOf(view, inkOf(kind));
    ASSERT_FALSE(block.isEmpty()) << "the block is not in view";
    EXPECT_TRUE(whollyInside(block, view.size()));
    EXPECT_NEAR(block.center().y(), view.height() / 2, 3);
    EXPECT_NEAR(double(block.width()) / block.height(), 400.0 / 120.0, 0.15);

    const QPoint mid = block.center();
    for (const QPoint& beside : {QPoint(block.left() - 3, mid.y()), QPoint(block.right() + 3, mid.y()),
                                 QPoint(mid.x(), block.bottom() + 3), QPoint(mid.x(), block.top() - 3)})
        EXPECT_TRUE(isMarkRed(view.pixel(beside))) << beside.x() << ',' << beside.y();
    EXPECT_TRUE(isPaper(view.pixel(block.left() - 12, mid.y()))) << "paper outside the frame";

    EXPECT_TRUE(viewerStatus().contains(QStringLiteral("31901001.tif")));
    EXPECT_TRUE(viewerStatus().contains(QStringLiteral("NACHNAME")));
}

// A multi-page file shows its first page: the first page's block is there, the second page's
// block (elsewhere) is not.
TEST_P(ViewerDisplayKinds, multi_page_file_shows_its_first_page) {
    const PageKind kind = GetParam();
    const QImage first = makePage(kind, {{surnameBlock, blockBlue}});
    const QImage second = makePage(kind, {{otherBlock, blockBlue}});
    const QString path = writeTiff(dir, QStringLiteral("mehrseitig.tif"), {first, second});
    ASSERT_EQ(show(path, surnameBlock), 1);
    EXPECT_FALSE(boxOf(grabPageArea(), inkOf(kind)).isEmpty());
    ASSERT_EQ(show(path, otherBlock), 1);
    const QImage view = grabPageArea();
    EXPECT_TRUE(boxOf(view, inkOf(kind)).isEmpty()) << "second page shown";
    EXPECT_TRUE(isPaper(view.pixel(view.width() / 2, view.height() / 2)));
}

INSTANTIATE_TEST_SUITE_P(PageKinds, ViewerDisplayKinds,
                         ::testing::Values(PageKind::Bitonal, PageKind::Grey, PageKind::Colour),
                         [](const auto& info) { return std::string(kindName(info.param)); });

// The record's offsets move the region: a region defined 30 px left and 20 px above the block,
// with offsets "30" and "20", shows the block exactly as the block's own region does; blanks and
// signs in the offset texts are read, an empty text counts 0.
TEST_F(ViewerDisplay, offsets_shift_the_region) {
    const QString path = writeTiff(dir, QStringLiteral("versatz.tif"), {standardPage(PageKind::Colour)});
    ASSERT_EQ(show(path, surnameBlock), 1);
    const QRect expected = boxOf(grabPageArea(), isBlockBlue);

    ASSERT_EQ(show(path, surnameBlock.translated(-30, -20), "NACHNAME", "30", "20"), 1);
    EXPECT_EQ(boxOf(grabPageArea(), isBlockBlue), expected);
    ASSERT_EQ(show(path, surnameBlock.translated(12, 7), "NACHNAME", " -12", "-7 "), 1);
    EXPECT_EQ(boxOf(grabPageArea(), isBlockBlue), expected);
    ASSERT_EQ(show(path, surnameBlock, "NACHNAME", "", ""), 1);
    EXPECT_EQ(boxOf(grabPageArea(), isBlockBlue), expected);
}

// A region bigger than the view at the starting zoom is still shown whole: the viewer zooms out.
TEST_F(ViewerDisplay, large_region_is_shown_whole) {
    const QRect card(150, 430, 1400, 1100);
    const QString path = writeTiff(dir, QStringLiteral("karte.tif"), {makePage(PageKind::Grey, {{card, Qt::black}})});
    ASSERT_EQ(show(path, card, "KARTE"), 1);
    const QImage view = grabPageArea();
    const QRect block = boxOf(view, isDarkInk);
    EXPECT_TRUE(whollyInside(block, view.size()));
    EXPECT_NEAR(double(block.width()) / block.height(), 1400.0 / 1100.0, 0.05);
}

// Scans at 300 dpi are shown in their own pixels: the region of the 300 dpi block is found.
TEST_F(ViewerDisplay, colour_page_at_300_dpi) {
    const QRect block300(450, 1050, 600, 180);
    const QImage page = makePage(PageKind::Colour, {{block300, blockBlue}}, QSize(2480, 3508), 300);
    const QString path = writeTiff(dir, QStringLiteral("farbe300.tif"), {page});
    ASSERT_EQ(show(path, block300), 1);
    const QImage view = grabPageArea();
    const QRect block = boxOf(view, isBlockBlue);
    EXPECT_TRUE(whollyInside(block, view.size()));
    EXPECT_NEAR(block.center().y(), view.height() / 2, 3);
    EXPECT_NEAR(double(block.width()) / block.height(), 600.0 / 180.0, 0.15);
}

// Going to another field of the same file repositions from the page already in memory: the file
// is replaced by bytes no reader understands (same size and time), and the viewer still moves to
// the other block. A file written anew under the same name (a new scan) is read again.
TEST_F(ViewerDisplay, the_file_is_read_again_only_when_it_changed) {
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
    ASSERT_EQ(show(path, otherBlock, "CARD_ID"), 1);
    const QImage view = grabPageArea();
    const QRect block = boxOf(view, isDarkInk);
    EXPECT_TRUE(whollyInside(block, view.size()));
    EXPECT_NEAR(double(block.width()) / block.height(), 1.0, 0.1) << "the square block is in view";

    writeTiff(dir, QStringLiteral("31901002.tif"), {makePage(PageKind::Grey, {{otherBlock, Qt::black}})});
    {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::ReadWrite));
        file.setFileTime(modified.addSecs(5), QFileDevice::FileModificationTime);
    }
    ASSERT_EQ(show(path, surnameBlock), 1);
    EXPECT_TRUE(boxOf(grabPageArea(), isDarkInk).isEmpty()) << "old page still shown";
}

// A missing file, a file that is no image and an empty name answer 0; a closed viewer stays closed
// and an open one keeps showing what it showed.
TEST_F(ViewerDisplay, unreadable_files_leave_the_viewer_as_it_was) {
    const QString missing = dir.filePath(QStringLiteral("fehlt.tif"));
    EXPECT_EQ(show(missing, surnameBlock), 0);
    EXPECT_TRUE(viewerWindow() == nullptr || !viewerWindow()->isVisible());

    const QString path = writeTiff(dir, QStringLiteral("31901004.tif"), {standardPage(PageKind::Colour)});
    ASSERT_EQ(show(path, surnameBlock), 1);
    const QImage shown = grabPageArea();

    QFile text(dir.filePath(QStringLiteral("notiz.tif")));
    ASSERT_TRUE(text.open(QIODevice::WriteOnly));
    text.write("Dies ist kein Bild.\r\n");
    text.close();
    EXPECT_EQ(show(text.fileName(), otherBlock), 0);
    EXPECT_EQ(show(missing, otherBlock), 0);
    EXPECT_EQ(Anzeigen("", "NACHNAME", "0", "0", 1, 1, 10, 10), 0);
    EXPECT_EQ(Anzeigen(nullptr, nullptr, nullptr, nullptr, 1, 1, 10, 10), 0);
    EXPECT_TRUE(viewerWindow()->isVisible());
    EXPECT_EQ(grabPageArea(), shown);
}

// A region of width or height 0 shows the page from its top left corner, unmarked.
TEST_F(ViewerDisplay, empty_region_shows_the_page_unmarked) {
    const QImage page = makePage(PageKind::Colour, {{QRect(20, 20, 200, 100), blockBlue}});
    const QString path = writeTiff(dir, QStringLiteral("ohnefeld.tif"), {page});
    ASSERT_EQ(show(path, QRect(500, 500, 0, 0), ""), 1);
    const QImage view = grabPageArea();
    const QRect block = boxOf(view, isBlockBlue);
    ASSERT_FALSE(block.isEmpty());
    EXPECT_LT(block.left(), 20);
    EXPECT_LT(block.top(), 20);
    EXPECT_TRUE(boxOf(view, isMarkRed).isEmpty());
}

// Every display reuses the one window; Schliessen hides it, and a second Schliessen has nothing to
// close.
TEST_F(ViewerDisplay, one_window_reused_and_closed) {
    const QString first = writeTiff(dir, QStringLiteral("31901005.tif"), {standardPage(PageKind::Bitonal)});
    const QString second = writeTiff(dir, QStringLiteral("31901006.tif"), {standardPage(PageKind::Colour)});
    ASSERT_EQ(show(first, surnameBlock), 1);
    QWidget* window = viewerWindow();
    ASSERT_NE(window, nullptr);
    ASSERT_EQ(show(second, otherBlock, "CARD_ID"), 1);
    EXPECT_EQ(viewerWindows(), QList<QWidget*>{window});
    EXPECT_TRUE(viewerStatus().contains(QStringLiteral("31901006.tif")));
    EXPECT_TRUE(viewerStatus().contains(QStringLiteral("CARD_ID")));

    EXPECT_EQ(Schliessen(), 1);
    EXPECT_FALSE(window->isVisible());
    EXPECT_EQ(Schliessen(), 0);
    EXPECT_EQ(AnzeigeTaste(6), 0);
    EXPECT_EQ(AnzeigeZoom(1), 0);
    EXPECT_EQ(AnzeigeDrehen(1), 0);
    EXPECT_EQ(AnzeigeInvert(), 0);

    ASSERT_EQ(show(first, surnameBlock), 1);
    EXPECT_TRUE(window->isVisible());
    EXPECT_EQ(viewerWindows(), QList<QWidget*>{window});
}

} // namespace
