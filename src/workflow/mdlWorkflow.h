// SPDX-License-Identifier: Apache-2.0
// The record workflow shared by the main window and the command line: which workstation holds which
// record of zvbWerte (Workflow_Status, Workflow_KorrID), taking the next waiting record, saving it
// with a new state, handing it over and discarding it with its image. Every procedure reports its
// own failures as a run-time error and answers with a failure value; the database keeps what was
// already done.
#pragma once

#include <QString>
#include <functional>

// Workflow states of a record.
namespace WorkflowStatus {
inline constexpr qint16 Waiting = 10;       // imported, waiting for correction
inline constexpr qint16 OtherHandOver = 20; // handed over by another way; exported like 40
inline constexpr qint16 InCorrection = 30;  // held by the workstation in Workflow_KorrID
inline constexpr qint16 HandedOver = 40;    // checked and handed over, waiting for export
} // namespace WorkflowStatus

// Number of the error raised when a workstation hands over or discards a record it no longer holds.
inline constexpr int RecordTakenError = 3197;

// Gives this workstation's records in correction back to the pool (30 -> 10, holder 0). Records
// of other workstations stay as they are. Returns the number released, -1 after a reported failure.
int ReleaseOwnRecords();
int ReleaseOwnRecords(qint16 korrId);

// Releases korrId's records, then claims the first waiting record in table order for korrId. The
// claim only succeeds while the row is still waiting, so a row another workstation took in the
// meantime is skipped and two workstations never hold the same record. Returns the LfdNr claimed,
// -1 when the pool is empty. Throws VeridonError when the database fails.
qint32 ClaimNextRecord(qint16 korrId);

// Take next record: claims the next record for this workstation (APP_KorrID) and fills the
// program-wide values with it. Returns its LfdNr; -1 when the pool is empty or after a reported
// failure, and the values are then empty.
qint32 TakeNextRecord();

// Claims record number for korrId when it is waiting or already held by korrId (the command line
// names its record instead of taking the next). True when korrId holds it afterwards; false when
// there is no such row or it is held by another workstation or already handed over. Throws on a
// database failure.
bool ClaimRecord(qint32 number, qint16 korrId);

// Why ClaimRecord refused record number, in German for the operator: missing, held elsewhere, or
// already handed over. Throws on a database failure.
QString ClaimRefusal(qint32 number);

// Fills the program-wide values with record number and starts counting the work on it for the
// operator statistics (OperatorStats.h). False (values empty) when there is no such row or after a
// reported failure.
bool LoadRecord(qint32 number);

// The state and holder of record number; false when there is no such row. Throws on a database failure.
bool RecordState(qint32 number, qint16& status, qint16& korrId);

// Save with status: writes the values in hand into record number, empties them and sets the
// record's state to status with no holder, in one transaction that only goes ahead while this
// workstation (APP_KorrID) holds the record in correction. A record released meanwhile (leaving,
// start-up) and taken by another workstation is left exactly as it is and the refusal is reported
// (RecordTakenError, in German). Does nothing and returns false for number < 0 or after a reported
// failure; the values stay in hand then.
bool SaveWithStatus(qint32 number, qint16 status);

// True unless record number is known to be no longer held by this workstation (another one took
// it, it was handed over or deleted). A pool server that does not answer counts as still held.
bool StillHoldsRecord(qint32 number);

// The discard of the record in hand (number), as actionVerwerfen does after the window wrote its
// controls into the values: unless silent, asks "Msg_AskDelete" (No is the default answer) and
// stops on any answer but Yes. Like SaveWithStatus it only goes ahead while this workstation holds
// the record; otherwise the refusal is reported and neither the row nor the image is touched.
// A bare-named image is deleted from the image folder, after a "_d." copy into the day's image
// backup when images are backed up; a path-like name is never touched. A failed deletion is shown
// as "Msg_ImageDeleteErr" and the record is still deleted. The values are saved and emptied, the
// row deleted and "Beleg #n - <image> gelöscht!" logged; the day's statistics count a discard.
// Returns true when the record was deleted.
bool DiscardRecord(qint32 number, bool silent);

// The hand-over decision of actionOK for the values in hand: runs the check engine over all fields
// (errorText receives its messages) and decides by its result with HandOverDecision. True when the
// record may be handed over.
bool DecideHandOver(QString& errorText, const std::function<void(const QString&)>& showErrorList);

// The decision on a check result level: 0 hands over. 3 (warnings only) calls showErrorList with
// errorText, then asks "Msg_AskWarnings"; Yes marks the values corrected (Korrigiert "1"), empties
// errorText and hands over, any other answer does not. Every other level is an error. A record
// that is not handed over gets Korrigiert "0". Returns true when the record may be handed over.
bool HandOverDecision(qint16 level, QString& errorText, const std::function<void(const QString&)>& showErrorList);

// The durable half of a hand-over decided above: saves record number with state 40 (its values and
// state in one commit) and counts it with its corrected fields, keys and time in the day's
// statistics. The record waits in state 40 for the next export pass, which any later pass (this
// program's or another's) takes up, also after a crash. False when the save failed (reported).
bool SaveHandOver(qint32 number);

// Finishes a hand-over decided above: saves record number with state 40, counts it with its
// corrected fields, keys and time in the day's statistics, and runs the export pass over every
// record ready for hand-over. False when the save failed (reported); the export pass
// reports its own failures.
bool CompleteHandOver(qint32 number);

// Asked when leaving with a record on screen: "Msg_AskAppExit"; true on Yes, or when no record is
// on screen (number < 0).
bool ConfirmLeave(qint32 number);

// The image folder's clean-up when the program ends: deletes every "*.tif" file of the image folder
// that no record of zvbWerte names (in any state, held by any workstation), one by one, and returns
// how many were deleted. The images of waiting records and of records another workstation holds
// stay. When the pool cannot be read, nothing is deleted and the failure is reported as run-time
// error "DeleteUnreferencedImages()".
int DeleteUnreferencedImages();
