// SPDX-License-Identifier: Apache-2.0
// What the card's own rules say about a reading: the state code and the card number's prefix ("80"
// and the state's ISO 3166 numeric code) must agree, names and institutions of a state are written
// in its alphabet, dates are calendar dates. A character the rules contradict is written as the
// escape "\f" (read as "?") instead of passing silently; where one value fixes another's unreadable
// characters (an unreadable state code beside a readable card number), they are filled in.
#pragma once

#include "CardLayouts.h"

#include <QString>
#include <QStringList>

#include <vector>

namespace evaluation {

// One read part of a card line: the raw text with its escapes, what the layout says it holds and,
// per character of the text (an escape counts as one), the characters the engine also saw there,
// best first. choices may be empty or shorter than the text: the rest then has none.
struct ReadPart {
    Content content;
    QString text;
    std::vector<QStringList> choices = {};
};

// Applies the rules to the parts of one card, in place. Afterwards each part's choices hold, for
// each unreadable character ("\f") only, the candidates the card allows there (its state's
// alphabet, digits in numbers and dates), at most five, best first; other characters have none.
void checkCard(std::vector<ReadPart*>& parts);

// The text as a list of characters, each escape one element.
QStringList charactersOf(const QString& text);

} // namespace evaluation
