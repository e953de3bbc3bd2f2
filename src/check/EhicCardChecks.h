// SPDX-License-Identifier: Apache-2.0
// The checks that know the European health insurance card: EhicKarte(STATE) for the card's
// identification number and PersonenNr(STATE) for the holder's personal number, each judged by
// the issuing state held in the record's field STATE.
//
// Both only warn (result 3): a card is what the holder carries, and an odd one - a number from a
// rule change, a state's exception - is for the operator to confirm, not to refuse.
//
// A field of asterisks is what some states print on a card that leaves a field empty by design
// (a national card whose back is not a valid European card); it passes where the issuing state
// does that and warns elsewhere.
#pragma once

#include <QString>

struct CheckCommand;

// The card fields a state may fill with asterisks.
enum class CardField { PersonalNumber, CardNumber };

// True when value is one or more "*" (blanks between them ignored).
bool isAsteriskField(const QString& value);

// True when the cards of state (a code of sysStates, any case) fill field with asterisks by design.
bool stateFillsWithAsterisks(const QString& state, CardField field);

// EhicKarte: "" passes. Otherwise the value must be 20 digits beginning with "80" (the health
// sector of ISO/IEC 7812) followed by the three-digit ISO 3166-1 numeric code that column
// State_IsoNumeric of sysStates holds for state. When state is empty, holds "?" or has no code,
// only the 20 digits and the "80" are checked. Returns 0 or 3. A master table without the column
// is not the value's fault: the answer is 2 and problem says what is missing.
qint16 EhicKarte(const QString& value, const QString& state, QString& problem);

// PersonenNr: "" passes; so does any number while state is empty, holds "?" or has no rule
// (PersonalNumberRules.h). Otherwise the number must fit the state's rule. Returns 0 or 3.
qint16 PersonenNr(const QString& value, const QString& state);

// Runs command (EhicKarte or PersonenNr) on value with the state taken from the record field the
// command names (text1). A field the record does not have sets problem and answers 2.
qint16 ehicCardCheck(const CheckCommand& command, const QString& value, QString& problem);
