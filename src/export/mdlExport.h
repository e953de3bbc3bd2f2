// SPDX-License-Identifier: Apache-2.0
// The hand-over of finished records: every record in state 20 or 40 leaves as one XML file built
// from the home's "default.xml", is printed when its report type asks for it, goes to the day's
// backup (XML copy, image copy, one line in exp.txt) and is then removed with its image. A batch
// pass over the whole table, started after the operator has accepted a record. The steps are
// written ahead (see ExportBatch.h), so records that an interrupted pass left in 21 or 41 are
// finished by the next pass, and at start-up.
#pragma once

// Runs the export pass over every record in state 20 or 40 - and finishes those left in 21 or 41 -
// in ascending LfdNr, with progress texts "Export von korrigierten Daten: N". default.xml is read
// and checked once; a template that is missing, empty or not well-formed XML, or an unset export
// folder, is reported as "ExportZVBWerte()" before any record is touched. A failed write is reported
// ("ExportRecord_XML()" or "ExportCleanup()") and ends the pass; the records not finished keep
// their state and leave with a later pass. Returns true.
bool ExportZVBWerte();

// The start-up part: finishes the records left in 21 or 41 whose XML was handed over already (the
// clean-up was interrupted), without printing. Records whose hand-over itself was interrupted stay
// for the next export pass, which prints their report. Failures are reported as
// "FinishInterruptedExports()".
void FinishInterruptedExports();
