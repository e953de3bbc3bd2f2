// The hand-over of finished records: every record in state 20 or 40 leaves as one XML file built
// from the home's "default.xml", is printed when its report type asks for it, goes to the day's
// backup (XML copy, image copy, one line in exp.txt) and is then removed with its image. A batch
// pass over the whole table, started after the operator has accepted a record.
#pragma once

#include <QSqlRecord>
#include <QString>

// Runs the export pass over every record in state 20 or 40, in ascending LfdNr, with progress
// texts "Export von korrigierten Daten: N". Returns true; its own failures are reported as
// "ExportZVBWerte()" (records handled before the failure stay handled).
bool ExportZVBWerte();

// Exports one record (a row of zvbWerte with all its columns): the XML file, then the report when
// one is due, then the clean-up. A failed XML write leaves the record untouched for the next pass.
void ExportRecord(const QSqlRecord& record);

// Writes the record's XML file into Export_Pfad (replacing a file of the same name), copies it to
// the day's export backup when backup is on, and raises Workflow_Status by one (20 to 21, 40 to 41).
// Returns false after a reported failure ("ExportRecord_XML()"); the state is then unchanged.
bool ExportRecord_XML(const QSqlRecord& record);

// Copies the record's image to the day's image backup (when backup and image backup are on),
// deletes the image (failures ignored), appends the record to the day's exp.txt (when backup is
// on) and deletes the record. Failures are reported as "ExportCleanup()"; the steps before stay.
void ExportCleanup(const QSqlRecord& record);

// Appends the record's values to fileName as one comma-separated line (LfdNr and Workflow_*
// columns left out, values neither quoted nor escaped). Throws VeridonError when the file cannot
// be written.
void AppendExportLine(const QString& fileName, const QSqlRecord& record);
