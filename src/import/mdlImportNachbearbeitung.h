// SPDX-License-Identifier: Apache-2.0
// The clean-up after an import: the evaluation program reads the card as raw text lines, one per
// printed line; this module maps them into the form's fields, repairs the typical reading errors on
// the way and releases the new rows for correction.
#pragma once

#include <QString>

// Maps the raw card lines of every new row (Neuimport true) into FORM_ID, STATE, NACHNAME,
// VORNAME, GEBDAT, PERSONAL_ID, INSTITUT_ID, CARD_ID and CARD_EXPIRY, by the layout in TYP (4, any
// other value becomes 5), each cut to its field length, and sets Workflow_Status 10 for all of
// them. The raw lines, Fehlerhaft and Korrigiert stay as imported: the checks set the status string
// when the record is taken. Progress: "Bearbeite Datensatz: n".
// Returns 1 when the rows were cleaned (also when there were none); 0 after a failure, which has
// been reported as "ImportNachbearbeitung()". What was written before the failure stays; the
// import then deletes the new rows.
int ImportNachbearbeitung();
