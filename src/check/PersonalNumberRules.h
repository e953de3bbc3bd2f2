// SPDX-License-Identifier: Apache-2.0
// The personal identification numbers of the states that issue European health insurance cards:
// for each state with a published rule, the form of the number (length, letters, digits, an
// embedded birth date) and its check digit. The card's field 6 carries the number the issuing
// state uses for the holder; where that is a health-insurance number rather than the national
// identity number, the rule names which one it takes and why.
//
// A state without a rule accepts any number: the check cannot know better than the card.
#pragma once

#include <QString>

// True when state (a code of sysStates, any case) has a rule for its personal numbers.
bool hasPersonalNumberRule(const QString& state);

// True when number fits the rule of state, or when state has no rule. The number is read as the
// operator sees it on the card: blanks, dots and slashes between its groups are ignored, letters
// are compared without regard to case; a hyphen is ignored except where it is part of the number
// (the century sign of a Finnish number).
bool personalNumberFits(const QString& state, const QString& number);
