// SPDX-License-Identifier: Apache-2.0
// Where the two printed versions of the form (layouts 4 and 5) put the card and the lines printed
// on it, in pixels of the page scanned at 200 dpi with the origin at the top left. The field
// regions carry the same numbers as the field definitions' coordinate columns of ZVBFelder; the
// card outline and its heading are what the reader finds the form by.
#pragma once

#include <array>
#include <vector>

namespace evaluation {

struct Region {
    int x, y, dx, dy;
};

// What a region may hold: the reader narrows the characters it considers accordingly.
enum class Content { Text, Name, StateCode, CardNumber, Date, ReceiptDate, Heading };

// One printed part of a card line.
struct LinePart {
    Region region;
    Content content;
};

// One card line of the result file: one part, or two parts set apart by a wide gap.
using CardLine = std::vector<LinePart>;

struct CardLayout {
    int typ;                     // 4 or 5
    Region card;                 // the card's outline
    Region receiptDate;          // the receipt stamp outside the card (SCANDAT)
    std::vector<CardLine> lines; // T4_L1..T4_L6 or T5_L1..T5_L7
};

// The card layouts, layout 4 first.
const std::array<CardLayout, 2>& cardLayouts();

} // namespace evaluation
