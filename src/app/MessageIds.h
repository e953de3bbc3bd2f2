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
inline constexpr MessageText ExportNoDefinitions{"Msg_ExportNoDefinitions", "Die Felddefinitionen (ZVBFelder) konnten nicht geladen werden.\\nDer Export wird nicht ausgeführt; kein Beleg und keine Datei wurde verändert."};
inline constexpr MessageText ExportDateUnreadable{"Msg_ExportDateUnreadable", "%1 Beleg(e) nicht exportiert: ein Datum kann nicht gelesen werden (erwartet TT.MM.JJJJ).\\n%2\\nDiese Belege bleiben zur Übergabe stehen, bis das Datum korrigiert ist."};
inline constexpr MessageText Txt_RunAusw{"Txt_RunAusw", "Bitte warten bis die Auswertung beendet ist..."};
inline constexpr MessageText Txt_CheckQM{"Txt_CheckQM", "Im Feld '%1' befindet sich noch ein ?"};
inline constexpr MessageText Txt_checkNotSupported{"Txt_checkNotSupported", "Der Befehl '%1' wird nicht unterstützt!"};
inline constexpr MessageText Txt_ComDlgFilter{"Txt_ComDlgFilter", "Alle Dateien (*.*)|*.*"};
inline constexpr MessageText Txt_ComDlgDirectory{"Txt_ComDlgDirectory", "[Verzeichnis]"};
inline constexpr MessageText Txt_ComboEntryNone{"Txt_ComboEntryNone", "(keinen)"};
// The detail of run-time errors the program describes itself (VeridonError).
inline constexpr MessageText ErrTypeMismatchValue{"Msg_ErrTypeMismatchValue", "Typen unverträglich ('%1')"};
inline constexpr MessageText ErrTypeMismatch{"Msg_ErrTypeMismatch", "Typen unverträglich"};
inline constexpr MessageText ErrOverflow{"Msg_ErrOverflow", "Überlauf"};
inline constexpr MessageText ErrNullField{"Msg_ErrNullField", "Unzulässige Verwendung von Null (Feld '%1', Spalte '%2')"};
inline constexpr MessageText ErrNullVarName{"Msg_ErrNullVarName", "Unzulässige Verwendung von Null (VarName)"};
inline constexpr MessageText ErrPathNotFound{"Msg_ErrPathNotFound", "Pfad nicht gefunden: '%1'"};
inline constexpr MessageText ErrCannotReplace{"Msg_ErrCannotReplace", "'%1' kann nicht ersetzt werden: %2"};
inline constexpr MessageText ErrCannotCopy{"Msg_ErrCannotCopy", "'%1' kann nicht nach '%2' kopiert werden: %3"};
inline constexpr MessageText ErrCannotWrite{"Msg_ErrCannotWrite", "'%1' kann nicht geschrieben werden."};
inline constexpr MessageText ErrMixedStatement{"Msg_ErrMixedStatement", "Programmfehler: die Anweisung verbindet Tabellen der Arbeitsplatz-Datenbank und des gemeinsamen Pools [%1]"};
inline constexpr MessageText ErrPoolUnreachable{"Msg_ErrPoolUnreachable", "Der Server des gemeinsamen Belegpools (%1) antwortet nicht. Ihre Eingaben bleiben erhalten; versuchen Sie es gleich noch einmal.\\n%2"};
inline constexpr MessageText ErrNoPool{"Msg_ErrNoPool", "Dieser Arbeitsplatz ist mit keinem Belegpool verbunden."};
inline constexpr MessageText ErrFileWrite{"Msg_ErrFileWrite", "Die Datei '%1' kann nicht geschrieben werden: %2"};
inline constexpr MessageText ErrFileNotFound{"Msg_ErrFileNotFound", "Die Datei '%1' wurde nicht gefunden."};
inline constexpr MessageText ErrFileRead{"Msg_ErrFileRead", "Die Datei '%1' kann nicht gelesen werden."};
inline constexpr MessageText ErrCopyDiffers{"Msg_ErrCopyDiffers", "Die Kopie '%1' stimmt nicht mit '%2' überein."};
inline constexpr MessageText ErrFolderSync{"Msg_ErrFolderSync", "Der Ordner '%1' kann nicht gesichert werden: %2"};
inline constexpr MessageText ErrMasterFileRead{"Msg_ErrMasterFileRead", "Datei '%1' kann nicht gelesen werden."};
inline constexpr MessageText ErrMasterLine{"Msg_ErrMasterLine", "%1, Zeile %2: %3 Werte für %4 Spalten."};
inline constexpr MessageText ErrDatabaseMissing{"Msg_ErrDatabaseMissing", "Die Datenbank '%1' wurde nicht gefunden."};
inline constexpr MessageText ErrTableMissing{"Msg_ErrTableMissing", "Die Tabelle '%1' ist nicht vorhanden."};
inline constexpr MessageText ErrColumnMissing{"Msg_ErrColumnMissing", "Das Feld '%1' ist in der Tabelle '%2' nicht vorhanden."};
inline constexpr MessageText ErrFileTruncate{"Msg_ErrFileTruncate", "Die Datei '%1' kann nicht gekürzt werden."};
inline constexpr MessageText ErrCopyDiffersOriginal{"Msg_ErrCopyDiffersOriginal", "Die Kopie '%1' stimmt nicht mit dem Original überein."};
inline constexpr MessageText ErrNoExportFolder{"Msg_ErrNoExportFolder", "Es ist kein Exportverzeichnis eingestellt (Export_Pfad)."};
inline constexpr MessageText ErrTemplateRead{"Msg_ErrTemplateRead", "Die Vorlage '%1' kann nicht gelesen werden."};
inline constexpr MessageText ErrTemplateUnusable{"Msg_ErrTemplateUnusable", "Die Vorlage '%1' ist unbrauchbar: %2 Es wurde nichts exportiert."};
inline constexpr MessageText ErrInvalidXml{"Msg_ErrInvalidXml", "Die Datei '%1' wäre kein gültiges XML (%2)."};
inline constexpr MessageText ErrCopyIncomplete{"Msg_ErrCopyIncomplete", "Die Kopie '%1' ist unvollständig."};
inline constexpr MessageText ErrLinesMissing{"Msg_ErrLinesMissing", "Die Datei '%1' enthält die angefügten Zeilen nicht."};
inline constexpr MessageText ErrAutoImportValue{"Msg_ErrAutoImportValue", "Zeile %1: Der Wert '%2' passt nicht in das Feld '%3' (Typen unverträglich)."};
inline constexpr MessageText ErrTooManyFields{"Msg_ErrTooManyFields", "Zeile %1 hat %2 Felder, die Tabelle '%3' nur %4 Spalten."};
inline constexpr MessageText ErrNoLayoutFields{"Msg_ErrNoLayoutFields", "Für das Format %1 sind in zvbAutoImport_Spezifikation keine Felder angelegt."};
inline constexpr MessageText ErrRecordTaken{"Msg_ErrRecordTaken", "Beleg %1 gehört nicht mehr zu diesem Arbeitsplatz. %2 Er wurde weder übergeben noch verworfen; Ihre Eingaben daran sind nicht gespeichert."};
inline constexpr MessageText RecordTakenDeleted{"Msg_RecordTakenDeleted", "Er ist inzwischen gelöscht."};
inline constexpr MessageText RecordTakenElsewhere{"Msg_RecordTakenElsewhere", "Er wurde freigegeben und wird jetzt am Arbeitsplatz %1 bearbeitet."};
inline constexpr MessageText RecordTakenWaiting{"Msg_RecordTakenWaiting", "Er wurde freigegeben und wartet wieder im Pool."};
inline constexpr MessageText RecordTakenHandedOver{"Msg_RecordTakenHandedOver", "Er ist bereits übergeben (Status %1)."};
inline constexpr MessageText ErrHomeFileWrite{"Msg_ErrHomeFileWrite", "Datei '%1' konnte nicht geschrieben werden."};
inline constexpr MessageText ErrFolderCreate{"Msg_ErrFolderCreate", "Der Ordner '%1' kann nicht angelegt werden."};
inline constexpr MessageText ErrHomeExists{"Msg_ErrHomeExists", "In '%1' gibt es bereits eine data.mdb. Mit --force wird sie neu angelegt (alle Datensätze gehen verloren)."};
inline constexpr MessageText ErrImportValue{"Msg_ErrImportValue", "Datentypenkonvertierungsfehler in Zeile %1: der Wert '%2' passt nicht in das Feld '%3'."};
// clang-format on
} // namespace Msg

// Every message of the vocabulary above, in the order listed; master data must translate each.
const QVector<MessageText>& allMessageTexts();
