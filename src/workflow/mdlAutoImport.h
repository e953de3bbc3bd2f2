// SPDX-License-Identifier: Apache-2.0
// The automatic import of system tables at start: master-data files registered in zvbAutoImport
// replace their table's rows whenever the file is newer than the version imported last; counts that
// changed suspiciously are pointed out, and after any change every stored record is checked again
// against the new master data.
#pragma once

#include <QString>

// Imports every registered file whose modification time is later than its VersionsDatum (or that
// has none), in the registry's order: Vorbearbeitung, the delimited or fixed-width import, the new
// VersionsDatum, Konverter, then the count judgement ("Msg_Autoimport_NoData", "..._NoDataAnymore",
// "..._RecordCountDifference" for a change of more than ten per cent). Files that do not exist are
// skipped silently. When any table was imported, every stored record is checked again (all fields)
// and written back; the field definitions are filled first when none are held or ZVBFelder was
// among the tables. Returns the number of tables imported; failures are reported as
// "ZVBAutoImport()" and end the pass (what was imported stays).
qint16 ZVBAutoImport();

// Appends the lines of a delimited file to table: the n-th piece of a line (split at every
// separator, text delimiters or not) goes into the n-th column; one text delimiter is dropped at
// either end of a piece; texts are cut to their column's size. Empty lines are skipped, the first
// line is dropped when header is set. Returns the rows added; failures (a line with more pieces
// than columns, a value that does not fit its column's type) are reported as "auto_standard()" and
// end the import, keeping the rows added before.
int auto_standard(const QString& path, const QString& table, const QString& separator, const QString& textDelimiter,
                  bool header);

// Appends the lines of a fixed-width file to table by layout layoutId of
// zvbAutoImport_Spezifikation (columns in FeldNr order, each Breite characters, blanks trimmed). An
// empty line ends the import there. header is accepted for symmetry with the delimited import and
// not used: fixed-width files carry no heading. Returns the rows added; failures are reported as
// "auto_FesteBreite()" and end the import, keeping the rows added before.
int auto_FesteBreite(const QString& path, const QString& table, qint32 layoutId, bool header);
