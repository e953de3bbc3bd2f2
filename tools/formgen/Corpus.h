// SPDX-License-Identifier: Apache-2.0
// The test corpus: forms of made-up but realistic card holders from every EU/EEA state and
// Switzerland, drawn on both layouts and then spoilt the way scanners and photocopiers spoil them.
// One seed gives the same corpus every time, so accuracy figures can be compared between versions.
#pragma once

#include "DemoForms.h"
#include "FormLayout.h"

#include <QImage>
#include <QList>

#include <random>

// How a page is spoilt and stored.
struct Degradation {
    bool cardBackground = true; // tinted card with the circle of stars and a fine pattern
    double skewDegrees = 0;     // up to +-2
    int shiftX = 0, shiftY = 0; // up to +-60 px at 200 dpi
    int speckles = 0;           // black dots scattered over the page
    double tonerLoss = 0;       // share of ink pixels that stay white
    bool blur = false;          // blurred before the cut to black and white
    int threshold = 128;        // where the grey page is cut
    int dpi = 200;              // 200 or 300
    bool grey = false;          // stored as 8-bit grey instead of bitonal group 4
};

// count forms with names of their holders' own alphabets, personal and institution numbers, card
// numbers "80" + the state's ISO 3166 numeric code + issuer + serial, and dates; both layouts. The
// values use the demo form columns (dates as DD.MM.YYYY); BMPName is "C" + a running number.
QList<DemoForm> corpusForms(int count, std::mt19937& random);

// A random degradation within the limits above; dpi 0 picks 200 or 300 at random.
Degradation randomDegradation(std::mt19937& random, int dpi);

// page (a rendered form of layout) spoilt by d: bitonal (Format_Mono) or grey, marked with its dpi.
QImage degradePage(const QImage& page, const formlayout::Layout& layout, const Degradation& d, std::mt19937& random);

// Writes forms as a tab-separated truth file in the demo form list's format.
bool writeTruth(const QString& path, const QList<DemoForm>& forms);
