// SPDX-License-Identifier: Apache-2.0
// Scan tests run on SANE's virtual devices through the demo's private SANE configuration, and
// evaluate with a stand-in for the evaluation program: a script in the home that writes one result
// line per scanned page and moves the page to the image folder, as the real program does.
#pragma once

#include "HomeTest.h"

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <cstdint>

// Points SANE at the private configuration; must run before the first scanner is made.
void useTestSane();

// Writes the stand-in evaluation program "zvscan" into the home. It waits seconds before it
// starts, then gives every page the surname "Huber" and the page's own name as BMPName.
void writeStandInEvaluation(const TempHome& home, int seconds = 0);

struct TiffFacts {
    // As libtiff stores them.
    uint16_t compression = 0;
    uint32_t width = 0;
    uint32_t height = 0;
    uint16_t bitsPerSample = 0;
    float xDpi = 0;
    float yDpi = 0;
    double blackShare = 0; // share of black pixels of a bitonal page
    QByteArray pbm;        // a bitonal first page as a PBM file, the input of SANE's pnm device
};
// What a TIFF file says of itself; compression 0 when it cannot be read.
TiffFacts readTiff(const QString& path);
