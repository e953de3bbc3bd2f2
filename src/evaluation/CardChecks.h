// SPDX-License-Identifier: Apache-2.0
// What the card's own rules say about a reading: the state code and the card number's prefix ("80"
// and the state's ISO 3166 numeric code) must agree, names and institutions of a state are written
// in its alphabet, dates are calendar dates. A character the rules contradict is written as the
// escape "\f" (read as "?") instead of passing silently; where one value fixes another's unreadable
// characters (an unreadable state code beside a readable card number), they are filled in.
#pragma once

#include "CardLayouts.h"

#include <QString>

#include <vector>

namespace evaluation {

// One read part of a card line: the raw text with its escapes, and what the layout says it holds.
struct ReadPart {
    Content content;
    QString text;
};

// Applies the rules to the parts of one card, in place.
void checkCard(std::vector<ReadPart*>& parts);

} // namespace evaluation
