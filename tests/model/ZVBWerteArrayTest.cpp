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
    EXPECT_EQ(werte.GetValue("LfdNr"), "1");
    QString name, value;
    ASSERT_TRUE(werte.GetFirst(name, value));
    QStringList walked{name + '=' + value};
    while (werte.GetNext(name, value))
        walked << name + '=' + value;
    EXPECT_EQ(walked.size(), 33) << "every column of zvbWerte";
    EXPECT_EQ(walked.mid(0, 4), (QStringList{"BMPName=31901001A.tif", "SCANDAT=", "TYP=4", "BMOffsetX=12"}))
        << "null becomes the empty text";
    EXPECT_TRUE(walked.last().startsWith("Neuimport=")) << walked.last().toStdString();
    EXPECT_FALSE(werte.GetNext(name, value));
    EXPECT_EQ(name, "Neuimport");

    // A record that is gone writes nothing; unknown names and an empty list are reported.
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

// Each column is written back by its type: a number with letters or an empty one as 0, not null; a
// date as a date and an empty one as null; LfdNr never. A column of a type the array cannot write is
// reported once per save and keeps its value while the others are written.
TEST_F(RecordValues, save_writes_each_column_by_its_type) {
    execSql("ALTER TABLE zvbWerte ADD COLUMN Erfasst DATETIME");
    execSql("ALTER TABLE zvbWerte ADD COLUMN Gebuehr CURRENCY");
    execSql("UPDATE zvbWerte SET Gebuehr=12.5");
    fill();
    const std::pair<const char*, const char*> values[] = {
        {"Nachname", "Huber-Moser"}, {"VORNAME", "Maria"},      {"BMOffsetX", "1a"},    {"BMOffsetY", "-7"},
        {"Workflow_KorrID", ""},     {"Workflow_Status", "40"}, {"Korrigiert", "True"}, {"LfdNr", "99"},
        {"Erfasst", "15.11.2026"},   {"Gebuehr", "99"}};
    for (const auto& [column, value] : values)
        werte.SetValue(column, value);
    werte.Save(1);
    QStringList row;
    for (const auto& [column, value] : values) {
        const QVariant cell = stored(column);
        row << (cell.isNull() ? "null" : cell.toString());
    }
    EXPECT_EQ(row,
              QStringList({"Huber-Moser", "Maria", "0", "-7", "0", "40", "1", "1", "2026-11-15 00:00:00", "12.5"}));
    werte.SetValue("Erfasst", "");
    werte.EmptyArray(1);
    EXPECT_TRUE(stored("Erfasst").isNull());
    ASSERT_EQ(messages.prompts().size(), 2);
    EXPECT_TRUE(messages.prompts()[0].startsWith("Problem beim Speichern des zvbWerteArrays!\r\nDas Feld 'Gebuehr'"));
    EXPECT_TRUE(messages.prompts()[1].startsWith("Problem beim Speichern/Leeren des zvbWerteArrays!"));
}

} // namespace
