// SPDX-License-Identifier: Apache-2.0
// The one place that converts between the program's texts and the files it reads and writes. Files
// are written as Windows-1252 with CR LF line ends; reading accepts Windows-1252, LF alone and a
// UTF-8 byte-order mark (then the file is read as UTF-8).
#pragma once

#include <QByteArray>
#include <QFile>
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

// Reads a text file line by line, holding only a block of it at a time, so a large file costs no
// more memory than one block. Lines and encodings are those of readTextLines.
class TextLineReader {
public:
    // Opens path; false when it cannot be read.
    bool open(const QString& path);
    // The next line into line; false at the end of the file or after a read error (see failed()).
    bool next(QString& line);
    // True when reading stopped because the file could not be read further.
    bool failed() const { return failed_; }
    // Bytes of the file taken as lines so far.
    qint64 position() const { return file_.pos() - (buffer_.size() - pos_); }

private:
    bool fill();

    QFile file_;
    QByteArray buffer_;
    qsizetype pos_ = 0;
    bool utf8_ = false;
    bool end_ = false;
    bool failed_ = false;
};

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
