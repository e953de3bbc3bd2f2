// SPDX-License-Identifier: Apache-2.0
// Reading rendered form pages with the real engine: the layout and the form's shift are found, the
// card's lines read, a smudged character marked unreadable, and a page without a card still gives
// its result line.
#include "CardReader.h"
#include "PageDrawing.h"
#include "ResultBatch.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

class CardReaderTest : public ::testing::Test {
protected:
    QString write(const QImage& page, const QString& name) {
        const QString path = dir_.filePath(name);
        EXPECT_TRUE(writeTiffPages(path, {page}));
        return path;
    }
    QTemporaryDir dir_;
    evaluation::CardReader reader_{95.5, ";"};
};

TEST_F(CardReaderTest, FindsLayoutAndShiftAndReadsTheLines) {
    ASSERT_TRUE(reader_.ready()) << reader_.error().toStdString();
    struct Case {
        int typ, dx, dy;
        QStringList lines;
    };
    const QList<Case> cases{
        {4,
         0,
         0,
         {"EUROPÄISCHE KRANKENVERSICHERUNGSKARTE", "PL", "Wiśniewska-Żółć", "Małgorzata      03/07/1961",
          "7801012345      0110 - NFZ Warszawa", "80616000000012345678      31/03/2027"}},
        {5,
         -47,
         38,
         {"EUROPÄISCHE KRANKENVERSICHERUNGSKARTE", "PL", "Wiśniewska-Żółć", "Małgorzata", "03/07/1961      7801012345",
          "0110 - NFZ Warszawa", "80616000000012345678      31/03/2027"}},
        {4, 55, -58, {}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.typ * 1000 + c.dx);
        const QImage page = renderForm(formlayout::layoutFor(c.typ), cardValues("PL", "Wiśniewska-Żółć", "Małgorzata"));
        const auto reading = reader_.readPage(write(shiftedPage(page, c.dx, c.dy), "page.tif"));
        EXPECT_EQ(reading.typ, c.typ);
        EXPECT_NEAR(reading.offsetX, c.dx, 3);
        EXPECT_NEAR(reading.offsetY, c.dy, 3);
        EXPECT_EQ(reading.receiptDate, QDate(2026, 11, 15));
        if (!c.lines.isEmpty()) {
            EXPECT_EQ(reading.lines.join('|').toStdString(), c.lines.join('|').toStdString());
        }
    }
}

TEST_F(CardReaderTest, SmudgedCharacterIsMarkedUnreadable) {
    // A blot over the middle of the surname's third letter (layout 4 region at x 190, y 650).
    const QImage page = renderForm(formlayout::layout4, cardValues("CZ", "Dvořák", "Jiří"));
    const QImage smudged = shiftedPage(page, 0, 0, {QRect(246, 678, 30, 18)});
    const auto reading = reader_.readPage(write(smudged, "smudged.tif"));
    ASSERT_EQ(reading.lines.size(), 6);
    EXPECT_TRUE(reading.lines[2].contains("\\f")) << reading.lines[2].toStdString();
    EXPECT_EQ(reading.lines[3], "Jiří      03/07/1961");
}

TEST_F(CardReaderTest, PageWithoutCardStillGivesALine) {
    QImage blank(formlayout::pageWidth, formlayout::pageHeight, QImage::Format_Grayscale8);
    blank.fill(Qt::white);
    const auto reading = reader_.readPage(write(shiftedPage(blank, 0, 0), "blank.tif"));
    EXPECT_EQ(reading.typ, 0);
    EXPECT_EQ(evaluation::resultLine("blank.tif", QDate(2026, 11, 20), reading, ";"),
              "blank.tif;20.11.2026;;0;0;;;;;;;;;;;;;");

    const auto missing = reader_.readPage(dir_.filePath("none.tif"));
    EXPECT_TRUE(missing.error.contains("none.tif"));
}

} // namespace
