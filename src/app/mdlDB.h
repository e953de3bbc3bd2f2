// SPDX-License-Identifier: Apache-2.0
// Small helpers through which the program reads single values, counts rows, finds the database and
// the INI file, and writes the settings row zvbSys. Look-ups answer null instead of failing where a
// value is simply not there; a missing database or table is an error for the caller to report.
#pragma once

#include <QDateTime>
#include <QString>
#include <QVariant>

// The program database path: the home folder followed by "data.mdb".
QString GetDBPath();

// The value of column in the first row of table that matches condition (a Jet criteria expression
// without WHERE; empty for the first row). Null when the table is empty, no row matches or the
// column does not exist. Throws VeridonError when the database or the table is missing or the
// condition is not valid SQL.
QVariant GetValue(const QString& column, const QString& table, const QString& condition);

// The number of rows of table that match condition (may be empty). Throws on a bad statement.
int CountRows(const QString& column, const QString& table, const QString& condition);

// value, or defaultValue when value is null.
QVariant Nz(const QVariant& value, const QVariant& defaultValue);

// value as a 32-bit integer: 0 for null or the empty text, else converted with rounding to the even
// neighbour as the classic conversion does. Throws VeridonError (type mismatch, overflow) otherwise.
qint32 ToLong(const QVariant& value);

// value as a 16-bit integer, by the rules of ToLong.
qint16 ToInteger(const QVariant& value);

// text without any character of code 0.
QString StripNulls(const QString& text);

// The name of the values table, "zvbWerte", so every caller uses the same.
QString GetValuesTable();

// This workstation's number, APP_KorrID of zvbSys through ToInteger.
qint16 GetKorrID();

// The value of key in section of tarnvel.ini in the home. Trailing blanks are cut; a missing file,
// section or key gives "". Section and key are compared without regard to case.
QString GetIniValue(const QString& section, const QString& key);

// Settings: one column of the single zvbSys row, null when unset or unreadable.
QVariant GetSysValue(const QString& column);
// A setting as text, defaultText when null.
QString GetSysText(const QString& column, const QString& defaultText = QString());
// A setting as a flag: "1", "-1", "true", "wahr", "yes", "ja" and non-zero numbers are true.
bool GetSysFlag(const QString& column, bool defaultValue);

// A stored value read as a flag by the rule of GetSysFlag.
bool ToFlag(const QVariant& value, bool defaultValue);

// A stored date/time ("YYYY-MM-DD HH:MM:SS", or a date alone) as a QDateTime; invalid when empty.
QDateTime ToDateTime(const QVariant& value);

// Writes one or two columns of the settings row with "UPDATE zvbSys SET ...". A null value writes
// NULL; a bool writes TRUE/FALSE; numbers as numbers; texts quoted. Throws VeridonError when a
// column does not exist.
void SetSysValue(const QString& column, const QVariant& value);
void SetSysValues(const QString& column1, const QVariant& value1, const QString& column2, const QVariant& value2);
// Writes a column from an SQL expression of the dialect, such as "Now()".
void SetSysExpression(const QString& column, const QString& expression);

// A value as an SQL literal by the rules of SetSysValue.
QString sqlLiteral(const QVariant& value);
