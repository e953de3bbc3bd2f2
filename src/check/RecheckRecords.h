// SPDX-License-Identifier: Apache-2.0
// Re-checking stored records in bulk, as after a change of master data: each record is filled into
// the record in hand, checked with all its fields and written back, all in one transaction.
#pragma once

#include <QString>
#include <functional>

struct RecheckedRecord {
    qint32 lfdNr = 0;
    qint16 result = 0;  // 0, 2 or 3
    QString fehlerhaft; // the status string as written back
    QString errorText;  // the accumulated messages, each after CR LF
};

// Re-checks the stored record lfdNr, or every stored record in LfdNr order when lfdNr is negative.
// The field definitions must be filled (FelderArray().Fill()). onRecord, when given, sees each
// record after it was written back. The record in hand is used for the work and left empty.
// Returns the number of records checked (0 for an unknown
// LfdNr). Messages of the check and the write-back are shown as they arise; a failing statement
// throws VeridonError and rolls the whole batch back.
int recheckRecords(qint32 lfdNr, const std::function<void(const RecheckedRecord&)>& onRecord = {});
