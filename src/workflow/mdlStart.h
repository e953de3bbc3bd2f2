// SPDX-License-Identifier: Apache-2.0
// The head-less steps of start-up, shared by the windows program and the command line: the field
// definitions and the empty record, the six field colours, the daily housekeeping, the finishing of
// an export that a crash interrupted and the automatic import of system tables, in this order. Whatever shows windows
// (the single-instance check, the database path check, the main window) stays with the windows program.
#pragma once

#include "app/FieldColours.h"

// The program-wide field colours, loaded by LoadColours (the defaults until then).
FieldColours& ProgramColours();

// Reads the six colours from zvbSys in their fixed order, a null taking its default text. When any
// read or conversion fails, "Msg_ColorDefaults" (information icon) names the error and all six
// colours take their defaults, also those already read.
void LoadColours();

// The once-a-day housekeeping: when APP_LastOpened (by calendar date) is missing, unreadable or
// earlier than today, the backup tree is cleaned; when it is later than today,
// "Msg_WarningLastOpened" warns of a clock set back; then APP_LastOpened becomes now. Failures are
// reported as "DBAufraeumen()".
void DBAufraeumen();

// Start-up steps 4 to 8 without windows: fills the field definitions, empties the record values,
// LoadColours, DBAufraeumen, FinishInterruptedExports and the automatic import of system tables. An
// unexpected failure is shown as "Msg_RuntimeErr" for "MAIN()" (shown, not logged) and the remaining
// steps still run.
void RunStartupSteps();
