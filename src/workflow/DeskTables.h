// SPDX-License-Identifier: Apache-2.0
// What the correction desk reads while the operator works: the order of the form's fields
// (ZVBForm_Felder, written afresh at every start from the window's tab order, so a changed order
// needs no migration), the hot keys of zvbSysKeys that the key settings name, and how many records
// wait in the pool.
#pragma once

#include <QList>
#include <QString>
#include <optional>

// A field of the form and its place in the window's tab chain (`ReihenfolgeNr`).
struct FieldPlace {
    QString field; // `FeldNr`, the field's name
    int position = 0;
};

// Replaces the rows of ZVBForm_Felder by places, in one transaction. On a shared pool the table is
// the pool's: workstations starting together write it in turn, so it never holds a field twice.
// Throws VeridonError (the table keeps its old rows) when a statement fails.
void StoreFieldOrder(const QList<FieldPlace>& places);

// The rows of ZVBForm_Felder by ReihenfolgeNr, ascending or (backwards) descending. Throws
// VeridonError when the table cannot be read.
QList<FieldPlace> ReadFieldOrder(bool backwards);

// A row of zvbSysKeys: the character the key types (`KeyAscii`) and its key code (`KeyCode`).
struct StoredHotKey {
    int keyAscii = 0;
    int keyCode = 0;
};

// The row of zvbSysKeys with `KeyID` keyId; nothing when there is none. Throws VeridonError when the
// table cannot be read.
std::optional<StoredHotKey> ReadHotKey(qint32 keyId);

// The records waiting for correction (`Workflow_Status` 10) in the values table. Throws
// VeridonError when the table cannot be read.
int WaitingRecordCount();
