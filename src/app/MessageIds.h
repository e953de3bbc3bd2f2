// SPDX-License-Identifier: Apache-2.0
// The program's fixed vocabulary of messages: every message id with its German default text, in one
// place. The text shown is looked up in sysTexts for the current language; these defaults stand in
// when no row exists. "\n" (backslash, n) in a text is a line break, "%1".."%9" are placeholders.
#pragma once

#include <QString>
#include <QVector>

struct MessageText {
    const char* id;
    const char* defaultText; // UTF-8

    QString idText() const { return QString::fromLatin1(id); }
    QString text() const { return QString::fromUtf8(defaultText); }
};

namespace Msg {
// clang-format off
inline constexpr MessageText RuntimeErr{"Msg_RuntimeErr", "Laufzeitfehler in Funktion '%1'!\\n#%2: %3"};
inline constexpr MessageText ColorDefaults{"Msg_ColorDefaults", "Fehler beim Farbwerte auslesen!\\nEs werden die Standardfarben genommen.\\nFehler #%1: %2"};
inline constexpr MessageText WarningLastOpened{"Msg_WarningLastOpened", "Achtung!\\nDas Datum, zu dem die Anwendung das letzte Mal geöffnet wurde, liegt in der Zukunft.\\nÜberprüfen Sie das System-Datum Ihres Computers!\\nEs ist möglich, daß durch das verstellte Datum Daten verloren gehen."};
inline constexpr MessageText NoDBChange{"Msg_NoDBChange", "Auf die zentrale Programmdatenbank konnte nicht zugegriffen werden. Der aktuell eingestellte Zugriffspfad lautet: '%1'\\nKorrigieren Sie diese Einstellung!"};
inline constexpr MessageText NoDBExit{"Msg_NoDBExit", "Ohne zentrale Programmdatenbank kann die Anwendung nicht arbeiten. Das Programm wird beendet!"};
inline constexpr MessageText FelderArrayNoEntry{"Msg_FelderArrayNoEntry", "Problem beim Auslesen des zvbFelderArrays!\\nDer gesuchte Eintrag '%1' ist nicht vorhanden."};
inline constexpr MessageText FelderArrayEmpty{"Msg_FelderArrayEmpty", "Problem beim Auslesen des zvbFelderArrays!\\nDas Array ist leer."};
inline constexpr MessageText WerteArrayEmpty{"Msg_WerteArrayEmpty", "Problem beim Auslesen des zvbWerteArrays!\\nDas Array ist leer."};
inline constexpr MessageText WerteArrayNoEntry{"Msg_WerteArrayNoEntry", "Problem beim Auslesen des zvbWerteArrays!\\nDas gesuchte Feld '%1' ist nicht vorhanden."};
inline constexpr MessageText WerteArrayEmpty2{"Msg_WerteArrayEmpty2", "Problem beim Schreiben in das zvbWerteArray!\\nDas Array ist leer."};
inline constexpr MessageText WerteArrayNoEntry2{"Msg_WerteArrayNoEntry2", "Problem beim Schreiben in das zvbWerteArray!\\nDas zu füllende Feld '%1' ist nicht vorhanden."};
inline constexpr MessageText WerteArrayNoRecord{"Msg_WerteArrayNoRecord", "Interner Fehler beim Speichern/Leeren des zvbWerteArrays!\\nDer Datensatz %1 konnte nicht gefunden werden"};
inline constexpr MessageText WerteArrayNoRecord2{"Msg_WerteArrayNoRecord2", "Interner Fehler beim Speichern des zvbWerteArrays!\\nDer Datensatz %1 konnte nicht gefunden werden"};
inline constexpr MessageText WerteArrayDatatype{"Msg_WerteArrayDatatype", "Problem beim Speichern/Leeren des zvbWerteArrays!\\nDas Feld '%1' hat einen nicht unterstützen Datentyp und wird nicht gesichert!\\nEs wird normal fortgefahren."};
inline constexpr MessageText WerteArrayDatatype2{"Msg_WerteArrayDatatype2", "Problem beim Speichern des zvbWerteArrays!\\nDas Feld '%1' hat einen nicht unterstützen Datentyp und wird nicht gesichert!\\nEs wird normal fortgefahren."};
inline constexpr MessageText Autoimport_NoData{"Msg_Autoimport_NoData", "Fehler beim Aktualisieren der Systemdaten!\\nDie Tabelle '%1' enthält keine Daten."};
inline constexpr MessageText Autoimport_NoDataAnymore{"Msg_Autoimport_NoDataAnymore", "Fehler beim Aktualisieren der Systemdaten!\\nDie Tabelle '%1' enthält nun keine Daten mehr."};
inline constexpr MessageText Autoimport_RecordCountDifference{"Msg_Autoimport_RecordCountDifference", "Hinweis zum Aktualisieren der Systemdaten!\\n\\nEine große Differenz zwischen den alten und den neuen Daten\\nin der Tabelle '%1' ist aufgefallen.\\n\\nAnzahl der alten Datensätze: %2 Neue Datensätze: %3"};
inline constexpr MessageText AskAppExit{"Msg_AskAppExit", "Die aktuelle Ambrix wurde noch nicht geprüft und übergeben.\\nBeim Beenden der Anwendung gehen die Daten verloren!\\n\\nTrotzdem beenden?"};
inline constexpr MessageText AskWarnings{"Msg_AskWarnings", "Es gibt noch Warnungen zu diesem Beleg!\\nDie Belegdaten trotzdem übergeben?"};
inline constexpr MessageText AskDelete{"Msg_AskDelete", "Wollen Sie wirklich den aktuellen Datensatz verwerfen?"};
inline constexpr MessageText ImageDeleteErr{"Msg_ImageDeleteErr", "Bilddatei konnte nicht gelöscht werden, das Löschen des Datensatzes wird fortgesetzt.\\nFehler #%1: %2"};
inline constexpr MessageText NoImagefile{"Msg_NoImagefile", "Bilddatei kann nicht gefunden werden!"};
inline constexpr MessageText NoTwain{"Msg_NoTwain", "Kein TWAIN kompatibles Gerät gefunden, Einstellungsdialog kann nicht geöffnet werden!"};
inline constexpr MessageText ImportStopTmp{"Msg_ImportStopTmp", "Eine temp. Datei  '%1' ist bereits vorhanden.\\nDer Import der Datei '%2' wird abgebrochen."};
inline constexpr MessageText ImportStopLocked{"Msg_ImportStopLocked", "Auf die Importdatei '%1' konnte nicht zugegriffen werden, eventuell besteht ein Konflikt mit der ZV-Beleg Auswertung oder einem anderen Arbeitsplatz.\\nVersuchen Sie es später erneut."};
inline constexpr MessageText ImportBackup{"Msg_ImportBackup", "Fehler beim Bewegen der Importdatei ins Backup-Verzeichnis!\\nDie Datei wird nicht gesichert."};
inline constexpr MessageText ImportDelete{"Msg_ImportDelete", "Fehler beim Löschen der abgearbeiteten Importdatei!\\nDie Datei bleibt bestehen."};
inline constexpr MessageText DoubleHotkey{"Msg_DoubleHotkey", "HotKeys doppelt vergeben, Einstellungen können nicht gespeichert werden!"};
inline constexpr MessageText NoTestPath{"Msg_NoTestPath", "Testpfad nicht angegeben, bitte überprüfen Sie die Einstellungen unter <Optionen>!"};
inline constexpr MessageText ToTestDone{"Msg_ToTestDone", "Der Beleg wurde erfolgreich zum Test abgelegt: Dateiname '%1'"};
inline constexpr MessageText PrintDataUnchecked{"Msg_PrintDataUnchecked", "Daten enthalten noch Fehler, Drucken nicht möglich!"};
inline constexpr MessageText PrinterInitErr{"Msg_PrinterInitErr", "Beim Initialisieren des Druckers trat ein Fehler auf!\\n\\nDas Drucken kann nicht durchgeführt werden."};
inline constexpr MessageText ReportStatesErr{"Msg_ReportStatesErr", "Es konnte nicht ermittelt werden, welcher EHIC-Bericht zu drucken ist!\\n\\nDas Drucken kann nicht durchgeführt werden.\\nDetails: Application '%1', Card '%2'"};
inline constexpr MessageText ReportBmpErr{"Msg_ReportBmpErr", "Die Vorlagedatei '%1' ist nicht vorhanden!!\\n\\nDas Drucken kann nicht durchgeführt werden."};
inline constexpr MessageText Txt_RunAusw{"Txt_RunAusw", "Bitte warten bis die Auswertung beendet ist..."};
inline constexpr MessageText Txt_CheckQM{"Txt_CheckQM", "Im Feld '%1' befindet sich noch ein ?"};
inline constexpr MessageText Txt_checkNotSupported{"Txt_checkNotSupported", "Der Befehl '%1' wird nicht unterstützt!"};
inline constexpr MessageText Txt_ComDlgFilter{"Txt_ComDlgFilter", "Alle Dateien (*.*)|*.*"};
inline constexpr MessageText Txt_ComDlgDirectory{"Txt_ComDlgDirectory", "[Verzeichnis]"};
inline constexpr MessageText Txt_ComboEntryNone{"Txt_ComboEntryNone", "(keinen)"};
// clang-format on
} // namespace Msg

// Every message of the vocabulary above, in the order listed; master data must translate each.
const QVector<MessageText>& allMessageTexts();
