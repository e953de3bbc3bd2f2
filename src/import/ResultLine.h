// SPDX-License-Identifier: Apache-2.0
// One line of the evaluation program's result file taken apart: the parts between the separators
// and the escape codes the program writes into a value it could not read cleanly.
#pragma once

#include <QString>
#include <QVector>

// A part of a line. null: the separator stood at the first position of the remaining line (two
// separators in a row, or a line that begins with one); the value is then absent, not "".
struct ResultPart {
    QString text;
    bool null = false;
};

// The parts of line, at most maxParts of them; anything after the last part taken is ignored.
// separator is searched as a whole string and may be longer than one character. Every part is
// trimmed of blanks; the part after the last separator is the rest of the line. An empty line gives
// no parts, and a separator at the end of the line does not start another part.
QVector<ResultPart> splitResultLine(const QString& line, const QString& separator, int maxParts);
// The same into parts, whose memory is reused from line to line.
void splitResultLine(const QString& line, const QString& separator, int maxParts, QVector<ResultPart>& parts);

// value with the evaluation program's escape codes resolved, in the program's order, until none is
// left: "\bf" and "\f" (unreadable character) become "?", "\w" (unmarked field) makes the whole
// value "0", "\l" (marker without content) is removed. Afterwards a value that still contains "\i"
// (invalid field) becomes "?" and invalid is set; invalid is left alone otherwise.
QString resolveEscapeCodes(const QString& value, bool& invalid);
