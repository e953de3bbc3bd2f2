// SPDX-License-Identifier: Apache-2.0
// The record in hand: filled from a row, changed by name, written back by type.

#include "model/ZVBWerteArray.h"
#include "HomeTest.h"
#include "app/Database.h"
#include "app/mdlDB.h"

namespace {

class RecordValues : public HomeTest {
protected:
    void SetUp() override {
        execSql("INSERT INTO zvbWerte (BMPName, TYP, BMOffsetX, FORM_ID, STATE, NACHNAME, VORNAME, GEBDAT,"
                " Korrigiert, Workflow_Status, Workflow_KorrID, Neuimport)"
                " VALUES ('31901001A.tif', '4', 12, 'EHIC', 'AT', 'Huber', NULL, '03.07.1961', 0, 30, 1, 0)");
        fill();
    }
    void fill() {
        QSqlQuery q = execSql("SELECT * FROM zvbWerte WHERE LfdNr=1");
        ASSERT_TRUE(q.next());
        ASSERT_TRUE(werte.Fill(q));
    }
    QVariant stored(const char* column) { return GetValue(QString::fromLatin1(column), "zvbWerte", "LfdNr=1"); }
    ZVBWerteArray werte;
};

// GetFirst/GetNext walk the columns in table order; after the last one GetNext answers false and
// stays where it is.
TEST_F(RecordValues, fill_holds_every_column_as_text_in_table_order) {
    EXPECT_EQ(werte.GetValue("nachname"), "Huber");
    EXPECT_EQ(werte.GetValue("VORNAME"), "") << "null becomes the empty text";
    EXPECT_EQ(werte.GetValue("BMOffsetX"), "12");
    EXPECT_EQ(werte.GetValue("LfdNr"), "1");
    QString name, value;
    ASSERT_TRUE(werte.GetFirst(name, value));
    QStringList walked{name + '=' + value};
    while (werte.GetNext(name, value))
        walked << name + '=' + value;
    EXPECT_EQ(walked.size(), 33) << "every column of zvbWerte";
    EXPECT_EQ(walked.mid(0, 2), (QStringList{"BMPName=31901001A.tif", "SCANDAT="}));
    EXPECT_TRUE(walked.last().startsWith("Neuimport=")) << walked.last().toStdString();
    EXPECT_FALSE(werte.GetNext(name, value));
    EXPECT_EQ(name, "Neuimport");
}

// A number with letters or an empty one is stored as 0, not null.
TEST_F(RecordValues, save_writes_texts_numbers_and_flags_back) {
    werte.SetValue("Nachname", "Huber-Moser");
    werte.SetValue("VORNAME", "Maria");
    werte.SetValue("BMOffsetX", "1a");
    werte.SetValue("BMOffsetY", "-7");
    werte.SetValue("Workflow_KorrID", "");
    werte.SetValue("Workflow_Status", "40");
    werte.SetValue("Korrigiert", "True");
    werte.SetValue("LfdNr", "99");
    werte.Save(1);
    EXPECT_TRUE(messages.messages().isEmpty());
    EXPECT_EQ(stored("NACHNAME").toString(), "Huber-Moser");
    EXPECT_EQ(stored("VORNAME").toString(), "Maria");
    EXPECT_EQ(stored("BMOffsetX").toInt(), 0);
    EXPECT_EQ(stored("BMOffsetY").toInt(), -7);
    EXPECT_FALSE(stored("Workflow_KorrID").isNull());
    EXPECT_EQ(stored("Workflow_KorrID").toInt(), 0);
    EXPECT_EQ(stored("Workflow_Status").toInt(), 40);
    EXPECT_EQ(stored("Korrigiert").toInt(), 1);
    EXPECT_EQ(CountRows("*", "zvbWerte", "LfdNr=1"), 1) << "LfdNr is never written";
}

TEST_F(RecordValues, empty_date_is_stored_as_null_and_a_date_as_a_date) {
    execSql("ALTER TABLE zvbWerte ADD COLUMN Erfasst DATETIME");
    fill();
    werte.SetValue("Erfasst", "15.11.2026");
    werte.Save(1);
    EXPECT_EQ(stored("Erfasst").toString(), "2026-11-15 00:00:00");
    werte.SetValue("Erfasst", "");
    werte.Save(1);
    EXPECT_TRUE(stored("Erfasst").isNull());
}

TEST_F(RecordValues, unsupported_type_reports_once_per_save_and_keeps_its_value) {
    execSql("ALTER TABLE zvbWerte ADD COLUMN Gebuehr CURRENCY");
    execSql("UPDATE zvbWerte SET Gebuehr=12.5");
    fill();
    werte.SetValue("Gebuehr", "99");
    werte.SetValue("NACHNAME", "Gruber");
    werte.Save(1);
    ASSERT_EQ(messages.messages().size(), 1);
    EXPECT_TRUE(
        messages.messages()[0].prompt.startsWith("Problem beim Speichern des zvbWerteArrays!\r\nDas Feld 'Gebuehr'"));
    EXPECT_DOUBLE_EQ(stored("Gebuehr").toDouble(), 12.5);
    EXPECT_EQ(stored("NACHNAME").toString(), "Gruber");
    werte.EmptyArray(1);
    ASSERT_EQ(messages.messages().size(), 2);
    EXPECT_TRUE(messages.messages()[1].prompt.startsWith("Problem beim Speichern/Leeren des zvbWerteArrays!"));
}

// A record that is gone writes nothing; unknown names and an empty list are reported.
TEST_F(RecordValues, a_missing_record_unknown_names_and_an_empty_list_are_reported) {
    werte.SetValue("NACHNAME", "Niemand");
    werte.Save(4711);
    werte.EmptyArray(4711);
    EXPECT_EQ(stored("NACHNAME").toString(), "Huber");
    EXPECT_EQ(werte.GetValue("Strasse"), "");
    werte.SetValue("Strasse", "x");
    werte.Clear();
    EXPECT_EQ(werte.GetCount(), 0);
    EXPECT_EQ(werte.GetValue("NACHNAME"), "");
    werte.SetValue("NACHNAME", "x");
    QString name, value;
    EXPECT_FALSE(werte.GetFirst(name, value));
    EXPECT_EQ(messages.prompts(),
              (QStringList{
                  "Interner Fehler beim Speichern des zvbWerteArrays!\r\nDer Datensatz 4711 konnte nicht gefunden "
                  "werden",
                  "Interner Fehler beim Speichern/Leeren des zvbWerteArrays!\r\nDer Datensatz 4711 konnte nicht "
                  "gefunden werden",
                  "Problem beim Auslesen des zvbWerteArrays!\r\nDas gesuchte Feld 'Strasse' ist nicht vorhanden.",
                  "Problem beim Schreiben in das zvbWerteArray!\r\nDas zu füllende Feld 'Strasse' ist nicht vorhanden.",
                  "Problem beim Auslesen des zvbWerteArrays!\r\nDas Array ist leer.",
                  "Problem beim Schreiben in das zvbWerteArray!\r\nDas Array ist leer."}));
}

} // namespace
