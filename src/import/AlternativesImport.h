// SPDX-License-Identifier: Apache-2.0
// The evaluation program's alternatives file, taken over with the result file it belongs to. For
// every character the program marked as unreadable it may write its best candidates: one line
// "BMPName<TAB>column<TAB>n<TAB>candidates" (n: the mark's ordinal among the marks of that column's
// value), in a file beside the result file named like it with the extension ".alt".
//
// The import keeps the candidates with the record, at the place where the "?" ends up after the
// clean-up has mapped the raw card lines into the form's fields (it trims, splits, repairs and cuts
// them). The place is found by reading the row again with the candidate in place of the mark and
// seeing which one character of which field changes; a mark whose place is not certain keeps no
// candidates, because a candidate offered at the wrong character costs the operator more than none.
//
// Nothing here ever stops or slows the import down by much: a missing file is no alternatives, a
// faulty line is skipped (one log line for the file), and any failure drops the candidates only.
#pragma once

#include <QString>

// The alternatives file of the result file at path: its last extension replaced by ".alt"
// (".../zvscan.txt" -> ".../zvscan.alt"), ".alt" appended to a name without ".".
QString alternativesFileName(const QString& path);

// The alternatives file's name while its result file is imported, beside that temporary file
// (".../zvscan.tmp" -> ".../zvscan.tmp.alt").
QString alternativesTempName(const QString& resultTemp);

// Reads the alternatives file altTemp and stores the candidates of the rows just imported from
// resultTemp: the rows of table with LfdNr above numberBefore, one per line of that file in order;
// separator as the import used it. Runs inside the import's transaction, so the candidates commit
// or vanish with the rows. Never throws: what cannot be done is logged under the import's name.
// Returns the number of "?" given candidates.
int ImportAlternatives(const QString& altTemp, const QString& resultTemp, const QString& separator,
                       const QString& table, qint64 numberBefore);
