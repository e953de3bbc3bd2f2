// SPDX-License-Identifier: Apache-2.0
// TIFF output through libtiff: one directory per page, group 4 for bitonal pages.
#include "TiffWriter.h"

#include <QFile>
#include <QImage>

#include <tiffio.h>

#include <cmath>
#include <vector>

namespace {

constexpr double inchesPerMetre = 39.3700787;

double dotsPerInch(int dotsPerMetre) {
    if (dotsPerMetre <= 0)
        return 200.0;
    return std::round(dotsPerMetre / inchesPerMetre);
}

void setCommonTags(TIFF* tif, const QImage& page, int pageIndex, int pageCount) {
    TIFFSetField(tif, TIFFTAG_IMAGEWIDTH, static_cast<uint32_t>(page.width()));
    TIFFSetField(tif, TIFFTAG_IMAGELENGTH, static_cast<uint32_t>(page.height()));
    TIFFSetField(tif, TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG);
    TIFFSetField(tif, TIFFTAG_ORIENTATION, ORIENTATION_TOPLEFT);
    TIFFSetField(tif, TIFFTAG_RESOLUTIONUNIT, RESUNIT_INCH);
    TIFFSetField(tif, TIFFTAG_XRESOLUTION, static_cast<float>(dotsPerInch(page.dotsPerMeterX())));
    TIFFSetField(tif, TIFFTAG_YRESOLUTION, static_cast<float>(dotsPerInch(page.dotsPerMeterY())));
    if (pageCount > 1) {
        TIFFSetField(tif, TIFFTAG_SUBFILETYPE, FILETYPE_PAGE);
        TIFFSetField(tif, TIFFTAG_PAGENUMBER, static_cast<uint16_t>(pageIndex), static_cast<uint16_t>(pageCount));
    }
}

// A bitonal page with 1 for black, as PHOTOMETRIC_MINISWHITE wants it.
bool writeBitonal(TIFF* tif, const QImage& source) {
    const QImage page = source.convertToFormat(QImage::Format_Mono);
    const bool indexZeroIsBlack = page.colorCount() > 1 && qGray(page.color(0)) < qGray(page.color(1));
    TIFFSetField(tif, TIFFTAG_BITSPERSAMPLE, 1);
    TIFFSetField(tif, TIFFTAG_SAMPLESPERPIXEL, 1);
    TIFFSetField(tif, TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_MINISWHITE);
    TIFFSetField(tif, TIFFTAG_COMPRESSION, COMPRESSION_CCITTFAX4);
    TIFFSetField(tif, TIFFTAG_FILLORDER, FILLORDER_MSB2LSB);
    TIFFSetField(tif, TIFFTAG_ROWSPERSTRIP, static_cast<uint32_t>(page.height()));
    const int bytes = (page.width() + 7) / 8;
    std::vector<uint8_t> row(static_cast<size_t>(bytes));
    for (int y = 0; y < page.height(); ++y) {
        const uchar* line = page.constScanLine(y);
        for (int i = 0; i < bytes; ++i)
            row[static_cast<size_t>(i)] = indexZeroIsBlack ? static_cast<uint8_t>(~line[i]) : line[i];
        if (TIFFWriteScanline(tif, row.data(), static_cast<uint32_t>(y), 0) < 0)
            return false;
    }
    return true;
}

bool writeGrey(TIFF* tif, const QImage& page) {
    TIFFSetField(tif, TIFFTAG_BITSPERSAMPLE, 8);
    TIFFSetField(tif, TIFFTAG_SAMPLESPERPIXEL, 1);
    TIFFSetField(tif, TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_MINISBLACK);
    TIFFSetField(tif, TIFFTAG_COMPRESSION, COMPRESSION_LZW);
    TIFFSetField(tif, TIFFTAG_ROWSPERSTRIP, TIFFDefaultStripSize(tif, 0));
    for (int y = 0; y < page.height(); ++y)
        if (TIFFWriteScanline(tif, const_cast<uchar*>(page.constScanLine(y)), static_cast<uint32_t>(y), 0) < 0)
            return false;
    return true;
}

bool writeColour(TIFF* tif, const QImage& source) {
    const QImage page = source.convertToFormat(QImage::Format_RGB888);
    TIFFSetField(tif, TIFFTAG_BITSPERSAMPLE, 8);
    TIFFSetField(tif, TIFFTAG_SAMPLESPERPIXEL, 3);
    TIFFSetField(tif, TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_RGB);
    TIFFSetField(tif, TIFFTAG_COMPRESSION, COMPRESSION_LZW);
    TIFFSetField(tif, TIFFTAG_PREDICTOR, PREDICTOR_HORIZONTAL);
    TIFFSetField(tif, TIFFTAG_ROWSPERSTRIP, TIFFDefaultStripSize(tif, 0));
    for (int y = 0; y < page.height(); ++y)
        if (TIFFWriteScanline(tif, const_cast<uchar*>(page.constScanLine(y)), static_cast<uint32_t>(y), 0) < 0)
            return false;
    return true;
}

bool fail(QString* error, const QString& text) {
    if (error)
        *error = text;
    return false;
}

} // namespace

bool writeTiffPages(const QString& path, const QList<QImage>& pages, QString* error) {
    if (pages.isEmpty())
        return fail(error, QStringLiteral("Keine Seite zum Schreiben für '%1'.").arg(path));
    TIFF* tif = TIFFOpen(QFile::encodeName(path).constData(), "w");
    if (!tif)
        return fail(error, QStringLiteral("Die Datei '%1' kann nicht angelegt werden.").arg(path));
    bool ok = true;
    for (int i = 0; ok && i < pages.size(); ++i) {
        const QImage& page = pages.at(i);
        if (page.isNull()) {
            ok = false;
            break;
        }
        setCommonTags(tif, page, i, int(pages.size()));
        if (page.format() == QImage::Format_Mono || page.format() == QImage::Format_MonoLSB)
            ok = writeBitonal(tif, page);
        else if (page.format() == QImage::Format_Grayscale8)
            ok = writeGrey(tif, page);
        else
            ok = writeColour(tif, page);
        ok = ok && TIFFWriteDirectory(tif);
    }
    TIFFClose(tif);
    if (!ok) {
        QFile::remove(path);
        return fail(error, QStringLiteral("Die Datei '%1' konnte nicht geschrieben werden.").arg(path));
    }
    return true;
}
