// SPDX-License-Identifier: Apache-2.0
#include "Schema.h"

#include "app/Database.h"

namespace {

struct TableDefinition {
    const char* name;
    const char* columns;
};

// Text columns compare without regard to case, as the master data's conditions expect
// ("State_ID='de'" finds "DE").
#define TXT(n) "VARCHAR(" #n ") COLLATE NOCASE"

// clang-format off
const TableDefinition tables[] = {
    {"zvbSys",
     "APP_ServerDB " TXT(255) ", APP_LastOpened DATETIME, APP_Language " TXT(5) ", APP_State " TXT(2) ","
     " APP_KorrID SMALLINT, APP_Bildpfad " TXT(255) ", APP_TestBildpfad " TXT(255) ","
     " Color_OK " TXT(20) ", Color_NoCheck " TXT(20) ", Color_Syntaxok " TXT(20) ", Color_Fehler " TXT(20) ","
     " Color_Ausgegraut " TXT(20) ", Color_Warnung " TXT(20) ","
     " Cursor_allg SMALLINT, Cursor_F2 BOOLEAN, F2_WasSuchen SMALLINT, F2_WieWeitSuchen SMALLINT,"
     " GUI_FocusField " TXT(50) ", GUI_BildanzeigeEnabled BOOLEAN, GUI_StatusBarEnabled BOOLEAN,"
     " GUI_ToolBarEnabled BOOLEAN, GUI_VollbildEnabled BOOLEAN,"
     " Key_EnterLikeTab BOOLEAN, Key_NUMKommaGleichEntf BOOLEAN, Key_F2 INTEGER, Key_F3 INTEGER, Key_F4 INTEGER,"
     " Key_OK " TXT(30) ", Key_Verwerfen " TXT(30) ", Key_Alternative " TXT(30) ","
     " Scan_Pfad " TXT(255) ", Scan_RechnerId " TXT(10) ", Scan_NrDesTages SMALLINT, Scan_TagDesJahres SMALLINT,"
     " Import_Datei " TXT(255) ", Export_Pfad " TXT(255) ","
     " Backup_Enabled " TXT(1) ", Backup_Bilder BOOLEAN, Backup_Pfad " TXT(255) ", Backup_HistoryDays SMALLINT,"
     " Report_Ambrix_Country SMALLINT, Report_Other_Country SMALLINT, Report_Pfad " TXT(255) ","
     " Report_FontName " TXT(50) ", Report_PrinterUseDefault BOOLEAN, Report_PrinterName " TXT(255) ","
     " Scan_Geraet " TXT(255)},
    {"ZVBFelder",
     "VarName " TXT(50) " NOT NULL, T4_x SMALLINT, T4_y SMALLINT, T4_dx SMALLINT, T4_dy SMALLINT,"
     " T5_x SMALLINT, T5_y SMALLINT, T5_dx SMALLINT, T5_dy SMALLINT, VarLng SMALLINT, satznummer SMALLINT,"
     " gelbefelderjn BOOLEAN, pruefe SMALLINT, pruefungen " TXT(255) ", formatierung " TXT(255) ","
     " Fehlertextname " TXT(50) ", OkFarbe SMALLINT"},
    {"zvbWerte",
     "BMPName " TXT(255) ", SCANDAT " TXT(10) ", TYP " TXT(1) ", BMOffsetX SMALLINT, BMOffsetY SMALLINT,"
     " T4_L1 " TXT(100) ", T4_L2 " TXT(100) ", T4_L3 " TXT(100) ", T4_L4 " TXT(100) ", T4_L5 " TXT(100) ","
     " T4_L6 " TXT(100) ", T5_L1 " TXT(100) ", T5_L2 " TXT(100) ", T5_L3 " TXT(100) ", T5_L4 " TXT(100) ","
     " T5_L5 " TXT(100) ", T5_L6 " TXT(100) ", T5_L7 " TXT(100) ","
     " FORM_ID " TXT(10) ", STATE " TXT(2) ", NACHNAME " TXT(40) ", VORNAME " TXT(40) ", GEBDAT " TXT(10) ","
     " PERSONAL_ID " TXT(20) ", INSTITUT_ID " TXT(40) ", CARD_ID " TXT(20) ", CARD_EXPIRY " TXT(10) ","
     " Fehlerhaft " TXT(50) ", Korrigiert BOOLEAN, Workflow_Status SMALLINT, Workflow_KorrID SMALLINT,"
     " LfdNr INTEGER PRIMARY KEY AUTOINCREMENT, Neuimport BOOLEAN"},
    {"ZVBForm_Felder", "FeldNr " TXT(50) ", ReihenfolgeNr SMALLINT"},
    {"sysTexts", "Language_ID " TXT(5) ", Name " TXT(100) ", Text LONGTEXT"},
    {"sysLanguages", "Language_ID " TXT(5) ", Bezeichnung " TXT(50)},
    {"sysStates", "State_ID " TXT(2) ", State_Name " TXT(60) ", State_XmlType " TXT(5) ", State_IsoNumeric " TXT(3)},
    {"ocrErsetzungen", "Feld " TXT(50) ", Suchstring " TXT(50) ", Ersatzstring " TXT(50)},
    {"zvbSysKeys", "KeyID INTEGER, Bezeichnung " TXT(50) ", KeyAscii SMALLINT, KeyCode SMALLINT"},
    {"zvbSysWindowPositions", "formName " TXT(50) ", x INTEGER, y INTEGER, dx INTEGER, dy INTEGER"},
    {"sysReports", "Report_ID INTEGER, Report_File " TXT(255)},
    {"sysReportsForStates",
     "AppState " TXT(2) ", CardState " TXT(2) ", Report_Type SMALLINT, IsDefaultForAppState BOOLEAN,"
     " Page SMALLINT, Report_ID INTEGER"},
    {"sysReportFields", "Report_ID INTEGER, x DOUBLE, y DOUBLE, Field " TXT(50)},
    {"zvbAutoImport",
     "Dateiname " TXT(255) ", VersionsDatum DATETIME, zieltabelle " TXT(50) ", Vorbearbeitung LONGTEXT,"
     " Funktionstyp SMALLINT, delim " TXT(5) ", textdelim " TXT(5) ", Header BOOLEAN, id INTEGER,"
     " Konverter LONGTEXT"},
    {"zvbAutoImport_Spezifikation", "ID INTEGER, FeldNr SMALLINT, Breite SMALLINT, ZielFeld " TXT(50)},
    // The options chosen per scanner device in its settings dialog.
    {"zvbScanOptionen", "Geraet " TXT(255) ", Name " TXT(64) ", Wert " TXT(255)},
    // The reader's candidates for each "?" of a record's fields; see model/OcrAlternatives.h.
    {"zvbAlternativen",
     "LfdNr INTEGER NOT NULL, Feld " TXT(50) ", Position SMALLINT, Zeichen VARCHAR(5), Wert VARCHAR(100)"},
};

const char* const indexes[] = {
    "CREATE INDEX IF NOT EXISTS ix_sysTexts ON sysTexts (Language_ID, Name)",
    "CREATE INDEX IF NOT EXISTS ix_zvbWerte_status ON zvbWerte (Workflow_Status, Workflow_KorrID)",
    "CREATE INDEX IF NOT EXISTS ix_sysStates ON sysStates (State_ID)",
    "CREATE INDEX IF NOT EXISTS ix_zvbAlternativen ON zvbAlternativen (LfdNr)",
};
// clang-format on
#undef TXT

} // namespace

void createSchema() {
    createTables(schemaTables());
}

void createTables(const QStringList& names) {
    Transaction transaction;
    for (const TableDefinition& t : tables)
        if (names.contains(QLatin1String(t.name), Qt::CaseInsensitive))
            execSql(QStringLiteral("CREATE TABLE IF NOT EXISTS %1 (%2)")
                        .arg(QLatin1String(t.name), QLatin1String(t.columns)));
    for (const char* sql : indexes) {
        const QString statement = QLatin1String(sql);
        if (names.contains(statement.section(QLatin1Char(' '), 7, 7), Qt::CaseInsensitive))
            execSql(statement);
    }
    transaction.commit();
}

QStringList schemaTables() {
    QStringList names;
    for (const TableDefinition& t : tables)
        names << QLatin1String(t.name);
    return names;
}

QStringList valuesTableColumns() {
    QStringList names;
    for (const QString& part : QLatin1String(tables[2].columns).toString().split(QLatin1Char(',')))
        names << part.trimmed().section(QLatin1Char(' '), 0, 0);
    return names;
}
