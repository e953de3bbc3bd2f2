// SPDX-License-Identifier: Apache-2.0
// The texts of the field checks: one message id per check keyword with its German default, in one
// place. The engine appends them after the field's display name, so each begins with a blank.
// Translations live in sysTexts (data/tables/sysTexts.check.tsv); these defaults stand in when a
// language has no row.
#pragma once

#include "app/MessageIds.h"

namespace CheckMsg {
// clang-format off
inline constexpr MessageText Pflicht{"ZVCHECKPFLICHT_FT", " muss ausgefüllt sein"};
inline constexpr MessageText Integer{"ZVCHECKINTEGER_FT", " muss eine Zahl enthalten."};
inline constexpr MessageText Double{"ZVCHECKDOUBLE_FT", " muss eine Zahl enthalten."};
inline constexpr MessageText DoubleLaenge{"ZVCHECKDOUBLELAENGE_FT", " muss einen Wert enthalten der Laenge "};
inline constexpr MessageText Laenge{"ZVCHECKLAENGE_FT", " muss einen Wert enthalten der Laenge "};
inline constexpr MessageText Bereich{"ZVCHECKBEREICH_FT", " enthält einen Wert ausserhalb des gültigen Bereiches. Gültiger Bereich: "};
inline constexpr MessageText BereichDouble{"ZVCHECKBEREICHDOUBLE_FT", " enthält eine Wert ausserhalb des gültigen Bereiches "};
inline constexpr MessageText Werteliste{"ZVCHECKWERTELISTE_FT", " enthält einen Wert der nicht in der Werteliste steht. Werteliste: "};
inline constexpr MessageText Lookup{"ZVCHECKLOOKUP_FT", " ist nicht in der dazugehörigen Stammdatentabelle vorhanden."};
inline constexpr MessageText Time{"ZVCHECKTIME_FT", " enthält keine gültige Zeitangabe"};
inline constexpr MessageText Waehrung{"ZVCHECKWAEHRUNG_FT", " enthält kein gültiges Währungsformat."};
inline constexpr MessageText Date{"ZVCHECKDATE_FT", " enthält kein gültiges Datum."};
inline constexpr MessageText DateBereich{"ZVCHECKDATEBEREICH_FT", " enthält ein Datum ausserhalb des gültigen Bereiches."};
// Warnings of the card checks; the issuing state's code follows.
inline constexpr MessageText EhicKarte{"ZVCHECKEHICKARTE_FT", " ist keine Kartennummer (20 Ziffern, beginnend mit 80 und der Ländernummer) des Staates "};
inline constexpr MessageText PersonenNr{"ZVCHECKPERSONENNR_FT", " passt nicht zu Aufbau und Prüfziffer der persönlichen Kennnummer des Staates "};
// A command whose parameters or look-up names do not fit (a fault of the field definitions, not of
// the value): %1 the command, %2 the field's display name, %3 what is wrong.
inline constexpr MessageText Invalid{"Txt_checkInvalid", "Der Befehl '%1' im Feld '%2' kann nicht ausgeführt werden: %3"};
// The field definitions could not be loaded, so no record can pass.
inline constexpr MessageText NoDefinitions{"Txt_checkNoDefinitions", "Die Felddefinitionen (ZVBFelder) konnten nicht geladen werden: der Datensatz gilt als fehlerhaft."};
// clang-format on

// Every text above, for the tests that keep the translations complete.
inline constexpr MessageText all[] = {Pflicht,       Integer,    Double,     DoubleLaenge, Laenge,       Bereich,
                                      BereichDouble, Werteliste, Lookup,     Time,         Waehrung,     Date,
                                      DateBereich,   EhicKarte,  PersonenNr, Invalid,      NoDefinitions};
} // namespace CheckMsg
