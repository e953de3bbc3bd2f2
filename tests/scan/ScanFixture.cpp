// SPDX-License-Identifier: Apache-2.0
#include "ScanFixture.h"

#include <QDir>
#include <QFile>

#include <tiffio.h>

void useTestSane() {
    qputenv("SANE_CONFIG_DIR", VERIDON_SANE_CONFIG);
}

void writeStandInEvaluation(const TempHome& home, int seconds) {
    const QString script =
        QStringLiteral(
            "#!/bin/sh\n"
            "sleep %1\n"
            "cd '%2scan' || exit 1\n"
            "mkdir -p '%2images' '%2import'\n"
            "for page in *.tif; do\n"
            "  [ -e \"$page\" ] || continue\n"
            "  printf '%s;15.11.2026;4;0;0;EUROPAEISCHE KRANKENVERSICHERUNGSKARTE;|  at;huber;"
            "Maria      03/07/1961;1234 030761      1100 - OEGK;8004 0001 2345 6789 0123     31|12/2029;;;;;;;\\r\\n'"
            " \"$page\" >> '%2import/zvscan.txt'\n"
            "  mv \"$page\" '%2images/'\n"
            "done\n")
            .arg(seconds)
            .arg(home.dir());
    const QString path = home.writeFile(QStringLiteral("zvscan"), script.toUtf8());
    QFile::setPermissions(path, QFile::permissions(path) | QFile::ExeOwner);
}

TiffFacts readTiff(const QString& path) {
    TiffFacts facts;
    TIFF* tif = TIFFOpen(QFile::encodeName(path).constData(), "r");
    if (!tif)
        return facts;
    uint16_t photometric = 0;
    TIFFGetField(tif, TIFFTAG_COMPRESSION, &facts.compression);
    TIFFGetField(tif, TIFFTAG_IMAGEWIDTH, &facts.width);
    TIFFGetField(tif, TIFFTAG_IMAGELENGTH, &facts.height);
    TIFFGetField(tif, TIFFTAG_BITSPERSAMPLE, &facts.bitsPerSample);
    TIFFGetField(tif, TIFFTAG_PHOTOMETRIC, &photometric);
    TIFFGetField(tif, TIFFTAG_XRESOLUTION, &facts.xDpi);
    TIFFGetField(tif, TIFFTAG_YRESOLUTION, &facts.yDpi);
    if (facts.bitsPerSample == 1) {
        facts.pbm = QStringLiteral("P4\n%1 %2\n").arg(facts.width).arg(facts.height).toLatin1();
        QByteArray row(TIFFScanlineSize(tif), '\0');
        qint64 black = 0;
        for (uint32_t y = 0; y < facts.height; ++y) {
            TIFFReadScanline(tif, row.data(), y, 0);
            // PBM has 1 for black, as "min is white" does.
            if (photometric != PHOTOMETRIC_MINISWHITE)
                for (char& c : row)
                    c = char(~c);
            for (uint32_t x = 0; x < facts.width; ++x)
                black += (uchar(row[x / 8]) >> (7 - x % 8)) & 1;
            facts.pbm += row.left((facts.width + 7) / 8);
        }
        facts.blackShare = double(black) / (double(facts.width) * facts.height);
    }
    TIFFClose(tif);
    return facts;
}
