// SPDX-License-Identifier: Apache-2.0
// The check primitives: small functions behind the keywords of the field checks. Each takes the
// field's value (a null QString reads as "") and the already converted parameters and answers a
// check result, 0 passed or 2 failed. None shows a message; the engine (mdlCheck) builds them.
//
// Almost every primitive lets the empty value pass, because emptiness is Pflichtfeld's business.
// The exceptions are written at the primitive: Pflichtfeld itself, Waehrung (an amount needs its
// separator) and Lookup (the empty text is looked up like any other).
//
// Decimal separator: the workstations are German, so numbers are written with "," (decimalSeparator()).
// The parameters in the field definitions are written with "." or "," and read either way.
#pragma once

#include <QChar>
#include <QDate>
#include <QString>

namespace CheckResult {
inline constexpr qint16 Passed = 0;
inline constexpr qint16 Error = 2;
inline constexpr qint16 Warning = 3;
} // namespace CheckResult

// The separator between whole and fractional part that operators type: ",".
QChar decimalSeparator();

// Passes when value holds digits 0-9 only (the empty value included).
qint16 NurZiffern(const QString& value);

// A decimal number with separator: without separator the value must be digits only; with it, both
// parts must be digits only, and either part may be empty (so "," and ",5" pass). A second
// separator fails.
qint16 Gleitkommazahl(QChar separator, const QString& value);

// Passes when value is "" or exactly n characters long.
qint16 Laenge(qint32 n, const QString& value);

// At most a digits before and b digits after separator. Without separator: digits only and at most
// a of them. With separator: only a well-formed number (Gleitkommazahl) is measured; a malformed
// one (two separators, a letter) passes here on purpose, because reporting the syntax is
// Gleitkommazahl's job and the field must not get the same fault twice.
qint16 Gleitkommazahllaenge(qint32 a, qint32 b, const QString& value, QChar separator);

// Passes when value is not "" (a value of blanks is filled).
qint16 Pflichtfeld(const QString& value);

// Passes when value is "" or min <= value <= max, read as a whole number. A value of digits only
// that is too long for any number lies outside every range and fails. Throws VeridonError (type
// mismatch) when value is not a whole number; the engine tests NurZiffern first.
qint16 Bereich(qint64 min, qint64 max, const QString& value);

// Passes when value is "" or min <= value <= max, value read as a decimal number ("," or ".").
// Throws VeridonError (type mismatch) when value is not a number.
qint16 Gleitkommazahlbereich(double min, double max, const QString& value);

// command is the whole check command, e.g. "Werteliste(E111,E128,EHIC)". Passes when value is ""
// or equals one item of the list between the first "(" and the first ")": items are separated by
// ",", compared exactly (case matters, blanks are part of the item).
qint16 Werteliste(const QString& command, const QString& value);

// Passes when the single-value look-up GetValue(column, table, condition) finds a non-empty
// value. condition is ready SQL; the caller quotes the value into it with sqlQuote. Throws
// VeridonError when the table is missing or the condition is not valid SQL.
qint16 Lookup(const QString& column, const QString& table, const QString& condition);

// A time of day: "" passes, a "?" fails; otherwise the value is brought to hh:mm (NormiereZeit) and
// passes when it is five characters long, its first two and last two characters are digits, the
// hours lie in 0..23 (24:00 counts as 00:00) and the minutes in 0..59. Only those four characters
// are read, so the middle character is not looked at.
qint16 Zeit(const QString& value);

// An amount with exactly n digits after separator: fails without separator (so "" fails too), fails
// when it is not a Gleitkommazahl, else passes when the part after the separator is n long.
qint16 Waehrung(const QString& value, QChar separator, qint32 n);

// Datum modes: 1 for Datum(), 2 for Datum_Bereich(from,to).
namespace DatumMode {
inline constexpr qint16 Valid = 1;
inline constexpr qint16 Range = 2;
} // namespace DatumMode

// A date in one of NormiereDatum's forms. "" passes. Mode 1: passes when it is a valid date.
// Mode 2: from is the number of days into the past, to into the future, either may be ""; the
// difference is counted in days from appClock().today() (positive in the future):
//  - only to:   passes when diff <= to (every past date passes);
//  - only from: passes when -from <= diff <= 0; fails for diff 1; passes for diff >= 2 (dates two
//               or more days ahead pass: kept on purpose, the forms are filled in that way);
//  - both:      passes when 1 <= diff < to, or when diff <= 0 and -diff < from (both exclusive);
//  - neither:   fails.
// Any other mode fails. Throws VeridonError (type mismatch) when from or to is not a whole number.
qint16 Datum(const QString& value, qint16 mode, const QString& from, const QString& to);

// value brought to hh:mm by the first rule that fits: "hh:mm" stays; "hhmm" -> hh:mm; "h:mm" ->
// 0h:mm; three characters without ":" ("hmm") -> 0h:mm; ":mm" -> 00:mm; "h:m" -> 0h:0m; two digits
// -> hh:00; one digit -> 0h:00; anything else stays as it is.
QString NormiereZeit(const QString& value);

// value (blanks around it ignored) brought to dd.mm.yyyy. Accepted forms:
//  - digits only: ddmmyy and ddmmyyyy;
//  - day, month and year separated by ".", "/" or "-" (mixed allowed): a one- or two-digit day and
//    month (padded with "0") and a two- or four-digit year.
// Century rule: a two-digit year up to the last two digits of appClock().today()'s year gets "20",
// a later one "19" (in 2026: "26" is 2026, "27" is 1927).
// flag (strict): when true, a result that is not a valid calendar date is not returned; the value
// comes back unchanged instead, so a caller that writes the result into the field never replaces
// what the operator typed by a reshaped impossible date. The checks call it with false and test
// validity themselves.
// A value of any other shape comes back unchanged.
QString NormiereDatum(const QString& value, bool flag);

// The date value of dd.mm.yyyy text; invalid for any other text or an impossible date.
QDate dateOfNormalised(const QString& normalised);
