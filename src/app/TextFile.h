// SPDX-License-Identifier: Apache-2.0
// The one place that converts between the program's texts and the files it reads and writes. Files
// are written as Windows-1252 with CR LF line ends; reading accepts Windows-1252, LF alone and a
// UTF-8 byte-order mark (then the file is read as UTF-8).
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

// Bytes of a file as text. A leading UTF-8 byte-order mark selects UTF-8; anything else is read as
// Windows-1252, which maps every byte, so no input is ever rejected.
QString decodeText(const QByteArray& bytes);

// Text as Windows-1252 bytes. Lone "\n" line ends become CR LF. A character that Windows-1252 cannot
// hold becomes "?", so a name with such a letter is still written, recognisably damaged.
QByteArray encodeText(const QString& text);

// Splits text into lines at CR LF, LF or CR. A final line end does not make an extra empty line.
QStringList splitLines(const QString& text);

// Reads a whole text file into lines. Returns false (and leaves lines empty) when it cannot be read.
bool readTextLines(const QString& path, QStringList& lines);

// Reads a whole text file; returns false when it cannot be read.
bool readTextFile(const QString& path, QString& text);

// Writes lines, each ended by CR LF, replacing the file (through writeFileChecked: complete, synced
// and renamed into place, or the old file untouched). Returns false when it cannot be written.
bool writeTextLines(const QString& path, const QStringList& lines);

// Writes text as it stands (line ends converted to CR LF), replacing the file.
bool writeTextFile(const QString& path, const QString& text);

// Appends one line ended by CR LF, creating the file when missing, synced (appendFileChecked: a
// failed append leaves no partial line). Returns false when it cannot be written.
bool appendTextLine(const QString& path, const QString& line);
