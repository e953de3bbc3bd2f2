// SPDX-License-Identifier: Apache-2.0
// The evaluation program's second guesses for the characters it could not read with confidence,
// kept with the record they belong to. Each row of zvbAlternativen names a record (LfdNr), a field
// (Feld), the place of one "?" in that field (Position, from 0) and the characters the reader
// thought possible there, best first (Zeichen). Wert holds the field's value as imported, the text
// Position counts in: the operator may have changed the field since, and a candidate must never be
// offered at another character than the one it was read for.
//
// The table lives beside zvbWerte (in data.mdb, or on the shared pool) and its rows go with their
// record, whichever way the record leaves the pool.
#pragma once

#include <QString>
#include <QVector>

// The table's name.
inline const QString& alternativesTable() {
    static const QString name = QStringLiteral("zvbAlternativen");
    return name;
}

// The candidates for one "?" of a field.
struct CharacterAlternatives {
    QString field;      // the zvbWerte column (NACHNAME, GEBDAT, ...)
    int position = 0;   // index of the "?" in imported, from 0
    QString candidates; // 1 to 5 characters, best first, none of them "?"
    QString imported;   // the field's value as imported
};

// Creates the table where it is missing (a home made before the table existed). Throws VeridonError
// when the database refuses.
void ensureAlternativesTable();

// Stores the candidates of record number, one row per entry. Throws VeridonError when a row cannot
// be written.
void storeAlternatives(qint64 number, const QVector<CharacterAlternatives>& marks);

// The candidates stored for record number, in field and position order; empty when there are none,
// the table does not exist yet, or it cannot be read (the operator then simply types).
QVector<CharacterAlternatives> LoadAlternatives(qint64 number);

// Deletes the candidates of record number. Nothing to do when the table does not exist. Throws
// VeridonError when the database refuses, so a caller's transaction keeps record and candidates
// together.
void DeleteAlternatives(qint64 number);

// Deletes every candidate whose record is gone from zvbWerte (after a bulk delete of records).
// Nothing to do when the table does not exist. Throws VeridonError when the database refuses.
void DeleteOrphanAlternatives();
