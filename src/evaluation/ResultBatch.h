// SPDX-License-Identifier: Apache-2.0
// The result file side of the evaluation: one line per page in the layout the import expects, and
// appending a run's lines so that a run that dies or a full disk never leaves half a line behind.
#pragma once

#include "CardReader.h"

#include <QDate>
#include <QString>
#include <QStringList>

namespace evaluation {

// The result line of a page: BMPName, SCANDAT (the receipt date, else scanDate, as DD.MM.YYYY),
// TYP, BMOffsetX, BMOffsetY, T4_L1..T4_L6, T5_L1..T5_L7, joined by separator. A page without a
// card gets its name, date and empty card columns, so that the operator still sees it.
QString resultLine(const QString& bmpName, const QDate& scanDate, const PageReading& reading, const QString& separator);

// The alternatives file beside the result file: its name with the last extension replaced by
// ".alt" ("ergebnis.txt" -> "ergebnis.alt", "ergebnis" -> "ergebnis.alt").
QString alternativesPath(const QString& resultPath);

// The alternatives lines of a page: for every "\f" of a card line that has candidates,
// "BMPName<TAB>column<TAB>n<TAB>candidates" with the result line's column name (T4_L1.., T5_L1..), n
// the mark's 1-based ordinal in that value and the candidates best first.
QStringList alternativesLines(const QString& bmpName, const PageReading& reading);

// Appends lines to the file at path as UTF-8 with CR LF, with a byte-order mark (unless withoutMark)
// when the file is new or empty. The lines are first written to a temporary file beside it and flushed to disk, then
// appended in one write and flushed; a failed append is cut back to the file's old end. Returns
// false with a German message in *error when anything fails; the file is then as it was.
bool appendLines(const QString& path, const QStringList& lines, QString* error, bool withoutMark = false);

// Cuts the file at path back to size bytes, or removes it when size is negative (it did not exist).
void cutBack(const QString& path, qint64 size);

} // namespace evaluation
