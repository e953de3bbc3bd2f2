// SPDX-License-Identifier: Apache-2.0
// The Jet SQL dialect on SQLite. Statements of the procedures and of the master data (pre- and
// post-processing of imports, check conditions) are written as for Jet; this module rewrites the
// few constructs SQLite reads differently and provides Jet's functions on every connection.
#pragma once

#include <QString>

struct sqlite3;

// Rewrites a Jet statement for SQLite: "DELETE * FROM" becomes "DELETE FROM", and "&" (Jet's text
// concatenation) outside literals becomes "||". Everything else passes unchanged: SQLite reads
// [name], TRUE/FALSE and double-quoted texts itself.
QString translateJet(const QString& sql);

// Jet's LIKE: case-insensitive; "*" any run, "?" one character, "#" one digit, "[A-Z]" a class,
// "[!0-9]" a negated class, "[*]" a literal special character.
bool jetLike(const QString& pattern, const QString& value);

// Jet's InStr: 1-based position of needle in haystack at or after start, 0 when absent. Compared
// without regard to case, as Jet does in text compare mode.
int jetInStr(int start, const QString& haystack, const QString& needle);

// Registers like() (2 and 3 arguments), InStr(), Now(), Date() and a few text functions of Jet
// on a connection. Now() and Date() read the program clock.
void registerJetFunctions(sqlite3* handle);
