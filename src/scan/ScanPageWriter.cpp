// SPDX-License-Identifier: Apache-2.0
#include "ScanPageWriter.h"

#include <QFile>
#include <cstring>

#include <tiffio.h>

bool writeScanPage(const QString& path, const ScanPage& page, QString& error) {
    const QString part = path + QStringLiteral(".part");
    TIFF* tif = TIFFOpen(QFile::encodeName(part).constData(), "w");
    if (!tif) {
        error = QStringLiteral("Die Datei '%1' kann nicht angelegt werden.").arg(path);
        return false;
    }
    const bool bitonal = page.depth == 1;
    TIFFSetField(tif, TIFFTAG_IMAGEWIDTH, uint32_t(page.width));
    TIFFSetField(tif, TIFFTAG_IMAGELENGTH, uint32_t(page.height));
    TIFFSetField(tif, TIFFTAG_BITSPERSAMPLE, uint16_t(page.depth));
    TIFFSetField(tif, TIFFTAG_SAMPLESPERPIXEL, uint16_t(page.channels));
    TIFFSetField(tif, TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG);
    TIFFSetField(tif, TIFFTAG_FILLORDER, FILLORDER_MSB2LSB);
    // The scanner's bitonal data has 1 for black, which is what "min is white" means.
    TIFFSetField(tif, TIFFTAG_PHOTOMETRIC,
                 bitonal ? PHOTOMETRIC_MINISWHITE : (page.channels == 3 ? PHOTOMETRIC_RGB : PHOTOMETRIC_MINISBLACK));
    TIFFSetField(tif, TIFFTAG_COMPRESSION, bitonal ? COMPRESSION_CCITTFAX4 : COMPRESSION_LZW);
    TIFFSetField(tif, TIFFTAG_ROWSPERSTRIP, bitonal ? uint32_t(page.height) : TIFFDefaultStripSize(tif, 0));
    TIFFSetField(tif, TIFFTAG_XRESOLUTION, float(page.dpi));
    TIFFSetField(tif, TIFFTAG_YRESOLUTION, float(page.dpi));
    TIFFSetField(tif, TIFFTAG_RESOLUTIONUNIT, RESUNIT_INCH);
    bool ok = true;
    QByteArray row(page.bytesPerLine, '\0');
    for (int y = 0; ok && y < page.height; ++y) {
        std::memcpy(row.data(), page.pixels.constData() + qsizetype(y) * page.bytesPerLine, row.size());
        ok = TIFFWriteScanline(tif, row.data(), uint32_t(y), 0) == 1;
    }
    // Closing flushes the compressed strips, which is where a full disk shows.
    ok = TIFFFlush(tif) == 1 && ok;
    TIFFClose(tif);
    if (ok) {
        ok = QFile::rename(part, path);
    }
    if (!ok) {
        QFile::remove(part);
        error = QStringLiteral(
                    "Die Seite konnte nicht als '%1' gespeichert werden (Datenträger voll oder schreibgeschützt?).")
                    .arg(path);
    }
    return ok;
}
