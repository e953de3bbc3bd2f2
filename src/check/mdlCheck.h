// SPDX-License-Identifier: Apache-2.0
// The check engine: runs each field's check commands on the record in hand (WerteArray()) with the
// field definitions (FelderArray()), collects the error texts, keeps each field's one-character
// status code in the record's status string Fehlerhaft and answers an overall result.
//
// Results: 0 passed, 2 error, 3 warning (CheckResult in mdlCheckHelper.h).
// Status codes, at the field's satznummer (1-based) in Fehlerhaft:
//   "1" checking began, or the value is empty and every check passed;
//   "3" the value holds "?" or a check failed;  "5" a check warned;
//   the field's OkFarbe (its first character) when the checks passed;
//   "4" is written elsewhere: such a field is left out when all fields are checked.
// A string shorter than a field's position is padded with "1" (not yet checked, the no-check
// colour), so every position between belongs to a field that reads as unchecked.
//
// Error texts: each message is appended to the caller's text as CR LF followed by the message.
//
// Each field's command list is parsed once and kept (CheckCommands.h); Lookup statements are
// prepared once per database connection. These caches belong to the calling thread, like its
// database connection.
#pragma once

#include <QString>

// Merges one field's result into total: an error (2) always wins, a warning (3) only replaces 0.
// Returns the new total.
qint16 KombiniereErg(qint16& total, qint16 one);

// The status code of fieldName in statusString: "" when the field's satznummer is 0 or less or lies
// beyond the string. An unknown field is reported by the field definitions and reads as "".
QString statusCodeOf(const QString& statusString, const QString& fieldName);

// Writes code (its first character) at fieldName's position; nothing for a satznummer of 0 or less.
void setStatusCode(QString& statusString, const QString& fieldName, const QString& code);

// Checks one field with value. A field that is not marked for checking (gelbefelderjn not set) or
// whose pruefe is 0 yields 0 and keeps its code. A value with "?" is an error without running any
// command. Otherwise the commands run from the left; the first failing one adds its message and
// ends the run; a command without "(" or with an unknown keyword adds "Txt_checkNotSupported" and
// the run goes on. pruefe 1: a field left with code "3" is an error; pruefe 2: a non-empty value
// whose code is not "0" is an error. Returns 0, 2 or 3. A run-time failure is reported as
// "standardcheck_onefield()" and the result reached so far is returned.
qint16 standardcheck_onefield(const QString& fieldName, const QString& value, QString& errorText,
                              QString& statusString);

// which = "all": every value of the record in column order, except fields whose code is "4";
// otherwise the one named field. Returns the merged result. Failures are reported as
// "standardcheck()".
qint16 standardcheck(const QString& which, QString& errorText, QString& statusString);

// Checks the record in hand: reads Fehlerhaft, runs standardcheck, writes Fehlerhaft back; with
// "all" also sets Korrigiert to "1" when the result is 0 and to "0" otherwise. Returns 0, 2 or 3.
// Failures are reported as "Check()".
qint16 Check(const QString& which, QString& errorText);
