// SPDX-License-Identifier: Apache-2.0
// Taking the evaluation program's result file into the values table. The file is moved to a
// temporary name first, so the evaluation program and other workstations no longer see it; every
// line becomes a new row of zvbWerte, filled positionally in the table's column order; the
// clean-up then maps the raw card lines into the form's fields, and the new rows are committed or
// thrown away together.
#pragma once

#include <QString>

// The result file's field separator: Trenner of section [Beleg] in tarnvel.ini. When the key is
// missing or empty the separator is "," and the log receives a line saying so.
QString importSeparator();

// Imports the result file at path into zvbWerte, all of it in one transaction:
// - a temporary file of an earlier run ("<name>.tmp") is logged and kept aside as
//   "<name>.tmp.<yymmdd-hhnnss>"; the import goes on;
// - the file is moved to "<name>.tmp"; when it cannot be moved (gone, locked, read-only folder)
//   "Msg_ImportStopLocked" is shown and nothing is written;
// - each line gives one new row with Neuimport true: parts trimmed, an empty part between two
//   separators stored as null (text columns as ""), escape codes resolved except in BMPName, ";"
//   read as "." unless the value is over the column's size, values cut to the column's size and to
//   the field length of ZVBFelder, the OCR replacement rules applied; the table's last column and
//   its running number are never taken from the file; "\i" writes a log line naming BMPName;
// - with backups on, a copy of the file goes to the day's import backup folder as
//   "<name.ext>_<hhnnss_yymmdd>" (a failure is a warning);
// - ImportNachbearbeitung cleans the new rows; when it fails they are deleted and the temporary
//   file stays; otherwise Neuimport is cleared and the temporary file deleted (a failure to delete
//   is a warning).
// - the alternatives file beside it ("<name>.alt", see AlternativesImport.h) goes the same way as
//   "<name>.tmp.alt": moved, copied, its candidates committed with the rows, deleted with the file;
//   a missing or faulty one only costs the candidates;
// Progress: "Importiere Datensatz: n". Rules, column sizes and field lengths are read once.
// Returns the number of lines imported and committed (0 for an empty file); -1 when the import was
// refused, failed in the clean-up (its rows deleted) or was ended by a run-time error, which is
// reported as "ImportZVBWerte()" (the rows written until then stay marked new and the temporary
// file stays, so a later import commits them and nothing is lost).
int ImportZVBWerte(const QString& path);
