// SPDX-License-Identifier: Apache-2.0
// The clean-up after an import: the evaluation program reads the card as raw text lines, one per
// printed line; this module maps them into the form's fields, repairs the typical reading errors on
// the way and releases the new rows for correction.
#pragma once

#include "OcrCorrection.h"

#include <QString>
#include <QStringList>
#include <QVector>
#include <array>

// The mapping of one row's raw card lines into the form's fields, with the master data it needs read
// once. The import applies it to each line before the row is written, so a row is written once.
class CardLineMapping {
public:
    // The columns the mapping reads, in the order of Raw: TYP, T4_L1 ... T4_L6, T5_L1 ... T5_L7.
    static const QStringList& sourceColumns();
    // The columns it writes, in the order of Fields: TYP, FORM_ID, STATE, NACHNAME, VORNAME, GEBDAT,
    // PERSONAL_ID, INSTITUT_ID, CARD_ID, CARD_EXPIRY.
    static const QStringList& targetColumns();
    using Raw = std::array<QString, 14>; // null reads as ""
    using Fields = std::array<QString, 10>;

    // Reads the state codes and the field lengths. Throws VeridonError when sysStates cannot be read.
    static CardLineMapping load();

    // The fields of a row whose raw columns hold raw: by the layout in TYP (4, any other value becomes
    // 5), each cut to its field length; FORM_ID "E-111N".
    Fields map(const Raw& raw) const;

private:
    StateCodes states_;
    QVector<int> lengths_; // by field
};

// Maps the raw card lines of every new row (Neuimport true: rows a failed import left waiting) into FORM_ID, STATE,
// NACHNAME, VORNAME, GEBDAT, PERSONAL_ID, INSTITUT_ID, CARD_ID and CARD_EXPIRY, by the layout in TYP (4, any other
// value becomes 5), each cut to its field length, and sets Workflow_Status 10 for all of them. The raw lines,
// Fehlerhaft and Korrigiert stay as imported: the checks set the status string when the record is taken. Progress:
// "Bearbeite Datensatz: n". Returns 1 when the rows were cleaned (also when there were none); 0 after a failure, which
// has been reported as "ImportNachbearbeitung()". What was written before the failure stays; the import then deletes
// the new rows.
int ImportNachbearbeitung();
