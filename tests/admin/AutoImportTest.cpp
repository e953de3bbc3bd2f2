// SPDX-License-Identifier: Apache-2.0
// The automatic import of master-data files at start: when a file is taken, how its lines become
// rows, and what the operator is told about the counts.

#include "HomeTest.h"
#include "RecordRows.h"
#include "app/Database.h"
#include "app/Home.h"
#include "app/MasterData.h"
#include "app/TextFile.h"
#include "app/mdlDB.h"
#include "workflow/mdlAutoImport.h"

#include <QFile>
#include <QSqlRecord>

namespace {

class AutoImport : public HomeTest {
protected:
    AutoImport() { execSql("DELETE FROM zvbAutoImport"); }

    // Registers a delimited file (";" unless given, text delimiter '"', with a heading line).
    void registerDelimited(const QString& file, const QString& table, const QString& preparation = {},
                           const QString& converter = {}) {
        execSql("INSERT INTO zvbAutoImport (Dateiname, zieltabelle, Vorbearbeitung, Funktionstyp, delim, textdelim,"
                " Header, Konverter) VALUES (?, ?, ?, 1, ';', '\"', 1, ?)",
                {file, table, preparation.isEmpty() ? QVariant() : preparation,
                 converter.isEmpty() ? QVariant() : converter});
    }
    // Writes a master-data file as delivered (Windows-1252, CR LF) with its modification time.
    void deliver(const QString& file, const QStringList& lines, const QDateTime& modified) {
        const QString path = home.path(file);
        QDir().mkpath(QFileInfo(path).absolutePath());
        ASSERT_TRUE(writeTextLines(path, lines));
        touch(file, modified);
    }
    void touch(const QString& file, const QDateTime& modified) {
        QFile f(home.path(file));
        ASSERT_TRUE(f.open(QIODevice::ReadWrite));
        ASSERT_TRUE(f.setFileTime(modified, QFileDevice::FileModificationTime));
    }
    QStringList rows(const QString& sql) {
        QStringList result;
        QSqlQuery q = execSql(sql);
        while (q.next()) {
            QStringList cells;
            for (int i = 0; i < q.record().count(); ++i)
                cells << (q.value(i).isNull() ? "NULL" : q.value(i).toString());
            result << cells.join('|');
        }
        return result;
    }
    static QDateTime at(int day, int hour, int minute, int ms = 0) {
        return QDateTime(QDate(2026, 11, day), QTime(hour, minute, 0, ms));
    }
};

TEST_F(AutoImport, a_newer_file_replaces_the_rows_and_the_same_file_is_not_imported_again) {
    registerDelimited("stammdaten/sprachen.txt", "sysLanguages", "DELETE * FROM sysLanguages");
    deliver("stammdaten/sprachen.txt", {"\"Language_ID\";\"Bezeichnung\"", "\"DE\";\"Deutsch\"", "\"EN\";\"Englisch\""},
            at(14, 8, 0, 700));
    EXPECT_EQ(ZVBAutoImport(), 1);
    EXPECT_TRUE(messages.messages().isEmpty()) << messages.prompts().join("|").toStdString();
    EXPECT_EQ(rows("SELECT Language_ID, Bezeichnung FROM sysLanguages ORDER BY rowid"),
              (QStringList{"DE|Deutsch", "EN|Englisch"}));
    EXPECT_EQ(GetValue("VersionsDatum", "zvbAutoImport", "").toString(), "2026-11-14 08:00:00")
        << "the file's time, to the second";

    execSql("DELETE FROM sysLanguages WHERE Language_ID='EN'");
    EXPECT_EQ(ZVBAutoImport(), 0) << "same modification time: not imported again";
    EXPECT_EQ(CountRows("*", "sysLanguages", ""), 1);

    touch("stammdaten/sprachen.txt", at(15, 9, 45));
    EXPECT_EQ(ZVBAutoImport(), 1) << "a touched file is imported at the next start";
    EXPECT_EQ(CountRows("*", "sysLanguages", ""), 2);
    EXPECT_EQ(GetValue("VersionsDatum", "zvbAutoImport", "").toString(), "2026-11-15 09:45:00");

    touch("stammdaten/sprachen.txt", at(10, 7, 0)); // an older copy put back
    EXPECT_EQ(ZVBAutoImport(), 0);
}

// Counts that change by more than ten per cent either way are pointed out, a table that was empty
// or became empty is reported; the new data stay in every case.
TEST_F(AutoImport, count_changes_beyond_ten_per_cent_and_empty_tables_are_pointed_out) {
    registerDelimited("stammdaten/ocr.txt", "ocrErsetzungen", "DELETE * FROM ocrErsetzungen");
    const QString heading = "Hinweis zum Aktualisieren der Systemdaten!\r\n\r\nEine große Differenz zwischen den alten "
                            "und den neuen Daten\r\nin der Tabelle 'ocrErsetzungen' ist aufgefallen.\r\n\r\n";
    const QString failure = "Fehler beim Aktualisieren der Systemdaten!\r\nDie Tabelle 'ocrErsetzungen' ";
    const struct {
        int before, after;
        QString message; // "" for none
    } cases[] = {
        {100, 110, ""},
        {100, 90, ""},
        {100, 111, heading + "Anzahl der alten Datensätze: 100 Neue Datensätze: 111"},
        {100, 89, heading + "Anzahl der alten Datensätze: 100 Neue Datensätze: 89"},
        {0, 2, failure + "enthält keine Daten."},
        {2, 0, failure + "enthält nun keine Daten mehr."},
    };
    int minute = 0;
    for (const auto& c : cases) {
        SCOPED_TRACE(std::to_string(c.before) + " -> " + std::to_string(c.after));
        execSql("DELETE FROM ocrErsetzungen");
        for (int i = 0; i < c.before; ++i)
            execSql("INSERT INTO ocrErsetzungen (Feld, Suchstring, Ersatzstring) VALUES ('NACHNAME', ?, 'x')", {i});
        QStringList lines{"Feld;Suchstring;Ersatzstring"};
        for (int i = 0; i < c.after; ++i)
            lines << QString("CARD_ID;%1;0").arg(i);
        deliver("stammdaten/ocr.txt", lines, at(15, 10, ++minute));
        messages.clear();
        EXPECT_EQ(ZVBAutoImport(), 1);
        EXPECT_EQ(CountRows("*", "ocrErsetzungen", ""), c.after);
        EXPECT_EQ(messages.prompts(), c.message.isEmpty() ? QStringList() : QStringList{c.message});
    }
}

TEST_F(AutoImport, delimited_lines_split_at_every_separator_and_keep_the_old_quirks) {
    registerDelimited("stammdaten/texte.txt", "sysTexts", "DELETE * FROM sysTexts WHERE Name LIKE 'Txt_T*'",
                      "UPDATE sysTexts SET Text=UCase(Text) WHERE Name='Txt_Test'");
    execSql("INSERT INTO sysTexts (Language_ID, Name, Text) VALUES ('DE', 'Txt_Talt', 'weg damit')");
    deliver("stammdaten/texte.txt",
            {"\"Language_ID\";\"Name\";\"Text\"", "\"DE\";\"Txt_Test\";\"Bitte warten\"", "",
             "\"EN\";\"Txt_Teil;Rest\"", "\"DEUTSCH\";\"Txt_Tlang\";\"Sprachcode zu lang\""},
            at(15, 8, 0));
    EXPECT_EQ(ZVBAutoImport(), 1);
    EXPECT_TRUE(messages.messages().isEmpty()) << messages.prompts().join("|").toStdString();
    // The delimited value is split and fills one column more; texts are cut to the column's size.
    EXPECT_EQ(rows("SELECT Language_ID, Name, Text FROM sysTexts WHERE Name LIKE 'Txt_T*' ORDER BY rowid"),
              (QStringList{"DE|Txt_Test|BITTE WARTEN", "EN|Txt_Teil|Rest", "DEUTS|Txt_Tlang|Sprachcode zu lang"}));
}

TEST_F(AutoImport, a_fixed_width_file_ends_at_its_first_empty_line) {
    execSql("INSERT INTO zvbAutoImport_Spezifikation (ID, FeldNr, Breite, ZielFeld) VALUES"
            " (7, 3, 4, 'KeyAscii'), (7, 1, 4, 'KeyID'), (7, 2, 20, 'Bezeichnung'), (7, 4, 4, 'KeyCode')");
    execSql("INSERT INTO zvbAutoImport (Dateiname, zieltabelle, Vorbearbeitung, Funktionstyp, id, Header)"
            " VALUES ('stammdaten/tasten.txt', 'zvbSysKeys', 'DELETE * FROM zvbSysKeys', 2, 7, 0)");
    deliver("stammdaten/tasten.txt",
            {"   1+ (Ziffernblock)     43 107", "   2- (Ziffernblock)     45 109", "  12Suchen\tF2              0 113",
             "", "   3* (Ziffernblock)     42 106", "   4/ (Ziffernblock)     47 111"},
            at(15, 8, 0));
    EXPECT_EQ(ZVBAutoImport(), 1);
    EXPECT_EQ(rows("SELECT KeyID, Bezeichnung, KeyAscii, KeyCode FROM zvbSysKeys ORDER BY rowid"),
              (QStringList{"1|+ (Ziffernblock)|43|107", "2|- (Ziffernblock)|45|109", "12|Suchen\tF2|0|113"}));
    ASSERT_EQ(messages.messages().size(), 1) << "four keys before, three after";
    EXPECT_TRUE(messages.saw("Anzahl der alten Datensätze: 4 Neue Datensätze: 3"));
}

// The demo home's master-data files must hold what its tables hold: an operator's first automatic
// import would otherwise change states or replacement rules behind everyone's back.
TEST_F(AutoImport, the_demo_master_data_files_import_the_rows_the_tables_already_hold) {
    execSql("DELETE FROM zvbAutoImport");
    execSql("DELETE FROM zvbAutoImport_Spezifikation");
    loadTableFile("zvbAutoImport", masterDataDir() + "tables/zvbAutoImport.tsv");
    loadTableFile("zvbAutoImport_Spezifikation", masterDataDir() + "tables/zvbAutoImport_Spezifikation.tsv");
    const QString statesSql = "SELECT State_ID, State_Name, State_XmlType, State_IsoNumeric FROM sysStates ORDER BY 1";
    const QString rulesSql = "SELECT Feld, Suchstring, Ersatzstring FROM ocrErsetzungen ORDER BY rowid";
    const QStringList states = rows(statesSql), rules = rows(rulesSql);
    EXPECT_EQ(ZVBAutoImport(), 2) << "the delimited states and the fixed-width OCR rules";
    EXPECT_TRUE(messages.messages().isEmpty()) << messages.prompts().join("|").toStdString();
    EXPECT_EQ(rows(statesSql), states) << "data/home/stammdaten/staaten.txt must hold what sysStates.tsv holds";
    EXPECT_EQ(rows(rulesSql), rules)
        << "data/home/stammdaten/ocr_ersetzungen.txt must hold what ocrErsetzungen.tsv holds";
}

// A value that does not fit ends that file and keeps the rows before it; a missing file is
// skipped silently and an unknown table is reported.
TEST_F(AutoImport, a_bad_value_ends_its_file_a_missing_file_is_skipped_and_an_unknown_table_reported) {
    registerDelimited("stammdaten/tasten.txt", "zvbSysKeys", "DELETE * FROM zvbSysKeys");
    deliver("stammdaten/tasten.txt",
            {"KeyID;Bezeichnung;KeyAscii;KeyCode", "1;Plus;43;107", "zwei;Minus;45;109", "3;Stern;42;106"},
            at(15, 8, 0));
    registerDelimited("stammdaten/gibtsnicht.txt", "sysLanguages", "DELETE * FROM sysLanguages");
    EXPECT_EQ(ZVBAutoImport(), 1);
    EXPECT_TRUE(messages.saw("auto_standard()") && messages.saw("Zeile 3") && messages.saw("'zwei'"));
    EXPECT_EQ(rows("SELECT KeyID, Bezeichnung FROM zvbSysKeys"), QStringList{"1|Plus"});
    EXPECT_EQ(CountRows("*", "sysLanguages", ""), 2);

    messages.clear();
    registerDelimited("stammdaten/x.txt", "sysGibtsNicht");
    deliver("stammdaten/x.txt", {"a;b", "1;2"}, at(15, 8, 0));
    EXPECT_EQ(ZVBAutoImport(), 0);
    EXPECT_TRUE(messages.saw("ZVBAutoImport()") && messages.saw("sysGibtsNicht"));
}

// Stored records were checked against the old master data: an import checks them again. STATE is
// the third field of the status string.
TEST_F(AutoImport, stored_records_are_checked_again_against_the_new_master_data) {
    registerDelimited("stammdaten/staaten.txt", "sysStates", "DELETE * FROM sysStates");
    QStringList lines{"\"State_ID\";\"State_Name\";\"State_XmlType\""};
    for (const QString& row : rows("SELECT State_ID, State_Name, State_XmlType FROM sysStates WHERE State_ID<>'AT'"))
        lines << "\"" + row.split('|').join("\";\"") + "\"";
    deliver("stammdaten/staaten.txt", lines << "\"XK\";\"Kosovo\";\"1\"", at(15, 8, 0));
    QList<qint32> numbers;
    for (const char* state : {"XK", "AT"}) {
        RowValues row = demoForm(int(numbers.size()));
        row.insert({{"STATE", state}, {"FORM_ID", "E111"}, {"Workflow_Status", 10}, {"Korrigiert", 0}});
        numbers << insertRecord(row);
    }
    const auto stateCheck = [](qint32 number) {
        const QString row = QString("LfdNr=%1").arg(number);
        return GetValue("Fehlerhaft", "zvbWerte", row).toString().mid(2, 1) +
               QString::number(GetValue("Korrigiert", "zvbWerte", row).toInt());
    };
    EXPECT_EQ(ZVBAutoImport(), 1);
    EXPECT_TRUE(messages.messages().isEmpty()) << messages.prompts().join("|").toStdString();
    EXPECT_EQ(stateCheck(numbers[0]), "01") << "a state the new list knows passes and the record is corrected";
    EXPECT_EQ(stateCheck(numbers[1]), "30") << "a state the new list dropped fails";

    execSql("UPDATE zvbWerte SET Fehlerhaft='unberührt'");
    EXPECT_EQ(ZVBAutoImport(), 0);
    EXPECT_EQ(GetValue("Fehlerhaft", "zvbWerte", QString()).toString(), "unberührt")
        << "without an import the stored records stay as they are";
}

} // namespace
