// SPDX-License-Identifier: Apache-2.0
// Pages written by the TIFF writer read back as they were: one file with a bitonal, a grey and a
// colour page keeps all three, in order, with group 4 for the bitonal one.
#include "TiffWriter.h"

#include <QFile>
#include <QImageReader>
#include <QPainter>
#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <tiffio.h>

namespace {

QImage pageWithBlock(QImage::Format format, QColor colour) {
    QImage page(400, 300, format == QImage::Format_Mono ? QImage::Format_RGB32 : format);
    page.fill(Qt::white);
    {
        QPainter p(&page);
        p.fillRect(QRect(50, 60, 120, 40), colour);
    }
    if (format == QImage::Format_Mono)
        page = page.convertToFormat(QImage::Format_Mono, Qt::ThresholdDither);
    return page;
}

TEST(TiffWriter, three_kinds_of_page_in_one_file) {
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("drei.tif"));
    const QImage bitonal = pageWithBlock(QImage::Format_Mono, Qt::black);
    const QImage grey = pageWithBlock(QImage::Format_Grayscale8, QColor(90, 90, 90));
    const QImage colour = pageWithBlock(QImage::Format_RGB32, QColor(30, 60, 200));
    QString error;
    ASSERT_TRUE(writeTiffPages(path, {bitonal, grey, colour}, &error)) << error.toStdString();

    QImageReader reader(path);
    EXPECT_EQ(reader.imageCount(), 3);
    const QImage first = reader.read();
    EXPECT_EQ(first.convertToFormat(QImage::Format_RGB32), bitonal.convertToFormat(QImage::Format_RGB32));
    ASSERT_TRUE(reader.jumpToNextImage());
    const QImage second = reader.read();
    EXPECT_EQ(qGray(second.pixel(60, 70)), 90);
    EXPECT_EQ(qGray(second.pixel(10, 10)), 255);
    ASSERT_TRUE(reader.jumpToNextImage());
    EXPECT_EQ(QColor(reader.read().pixel(60, 70)), QColor(30, 60, 200));

    TIFF* tif = TIFFOpen(QFile::encodeName(path).constData(), "r");
    ASSERT_NE(tif, nullptr);
    uint16_t compression = 0, photometric = 0;
    TIFFGetField(tif, TIFFTAG_COMPRESSION, &compression);
    TIFFGetField(tif, TIFFTAG_PHOTOMETRIC, &photometric);
    TIFFClose(tif);
    EXPECT_EQ(compression, COMPRESSION_CCITTFAX4);
    EXPECT_EQ(photometric, PHOTOMETRIC_MINISWHITE);
}

TEST(TiffWriter, refuses_nothing_to_write_and_unwritable_places) {
    QString error;
    EXPECT_FALSE(writeTiffPages(QStringLiteral("/tmp/leer.tif"), {}, &error));
    EXPECT_EQ(error, QStringLiteral("Keine Seite zum Schreiben für '/tmp/leer.tif'."));
    EXPECT_FALSE(writeTiffPages(QStringLiteral("/nirgends/da.tif"), {QImage(10, 10, QImage::Format_RGB32)}, &error));
    EXPECT_EQ(error, QStringLiteral("Die Datei '/nirgends/da.tif' kann nicht angelegt werden."));
}

} // namespace
