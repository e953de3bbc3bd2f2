// SPDX-License-Identifier: Apache-2.0
// Showing a page: the region is in view and framed on bitonal, grey and colour scans, offsets shift
// it, other fields of the same file are reached without reading the file again, the first page of
// a multi-page file is the one shown, and a file that cannot be shown never leaves another page in view.
#include "ViewerPages.h"
#include "viewer/zvbkor.h"

#include <QFile>
#include <QFileInfo>
#include <QWidget>

#include <array>
#include <gtest/gtest.h>

namespace {

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
TEST_F(ViewerDisplay, offsets_shift_the_region_and_an_empty_one_shows_the_corner) {
    const QString path = writeTiff(dir, QStringLiteral("versatz.tif"), {standardPage(PageKind::Colour)});
    ASSERT_EQ(show(path, surnameBlock), 1);
    const QRect expected = boxOf(grabPageArea(), isBlockBlue);

    const struct {
        QRect region;
        const char* x;
        const char* y;
    } offsets[] = {{surnameBlock.translated(-30, -20), "30", "20"},
                   {surnameBlock.translated(12, 7), " -12", "-7 "},
                   {surnameBlock, "", ""}};
    for (const auto& o : offsets) {
        ASSERT_EQ(show(path, o.region, "NACHNAME", o.x, o.y), 1);
        EXPECT_EQ(boxOf(grabPageArea(), isBlockBlue), expected) << o.x << '/' << o.y;
    }

    ASSERT_EQ(show(path, QRect(500, 500, 0, 0), ""), 1);
    const QRect corner = boxOf(grabPageArea(), isBlockBlue);
    EXPECT_TRUE(boxOf(grabPageArea(), isMarkRed).isEmpty());
    EXPECT_EQ(AnzeigeTaste(8), 0);
    EXPECT_EQ(AnzeigeTaste(4), 0);
    EXPECT_EQ(boxOf(grabPageArea(), isBlockBlue), corner);
    EXPECT_EQ(AnzeigeTaste(2), 1);
}

// A region bigger than the view at the starting zoom is still shown whole (the viewer zooms out),
// and scans at 300 dpi are shown in their own pixels: each block is wholly in view at its shape.
TEST_F(ViewerDisplay, large_regions_and_300_dpi_pages_are_shown_whole) {
    const struct {
        QRect block;
        QImage page;
        std::function<bool(QRgb)> ink;
    } rows[] = {
        {QRect(150, 430, 1400, 1100), makePage(PageKind::Grey, {{QRect(150, 430, 1400, 1100), Qt::black}}), isDarkInk},
        {QRect(450, 1050, 600, 180),
         makePage(PageKind::Colour, {{QRect(450, 1050, 600, 180), blockBlue}}, QSize(2480, 3508), 300), isBlockBlue},
    };
    for (const auto& row : rows) {
        const QString path = writeTiff(dir, QStringLiteral("gross.tif"), {row.page});
        ASSERT_EQ(show(path, row.block, "KARTE"), 1);
        const QImage view = grabPageArea();
        const QRect block = boxOf(view, row.ink);
        EXPECT_TRUE(whollyInside(block, view.size())) << row.block.width();
        EXPECT_NEAR(block.center().y(), view.height() / 2, 3);
        EXPECT_NEAR(double(block.width()) / block.height(), double(row.block.width()) / row.block.height(), 0.05);
    }
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
    ASSERT_EQ(show(path, otherBlock, "CARD_ID"), 1) << "the page in memory is not used";

    writeTiff(dir, QStringLiteral("31901002.tif"), {makePage(PageKind::Grey, {{otherBlock, Qt::black}})});
    {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::ReadWrite));
        file.setFileTime(modified.addSecs(5), QFileDevice::FileModificationTime);
    }
    ASSERT_EQ(show(path, surnameBlock), 1);
    EXPECT_TRUE(boxOf(grabPageArea(), isDarkInk).isEmpty()) << "old page still shown";
}

// An empty name answers 0 and changes nothing. A missing file or one that is no image answers 0
// too, but the page shown before belongs to another record and must go: the viewer shows a blank
// sheet with the notice the caller gave, opening for it when it was closed. Once closed, a second
// Schliessen has nothing to close, nor have the commands.
TEST_F(ViewerDisplay, an_unreadable_file_replaces_the_page_by_a_blank_sheet_naming_it) {
    const QString path = writeTiff(dir, QStringLiteral("31901004.tif"), {standardPage(PageKind::Colour)});
    ASSERT_EQ(show(path, surnameBlock), 1);
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

} // namespace
