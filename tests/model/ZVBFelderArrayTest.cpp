// SPDX-License-Identifier: Apache-2.0
// Field definitions asked by name, on the master data of a new home.

#include "model/ZVBFelderArray.h"
#include "HomeTest.h"
#include "app/Database.h"

namespace {

class FieldDefinitions : public HomeTest {
protected:
    ZVBFelderArray felder;
};

// Names match without regard to case, the first of two rows of one name answers, only layout 4
// selects the T4 region, and nulls take their defaults.
TEST_F(FieldDefinitions, are_found_by_name_with_their_layouts_region_and_defaults_and_faults_reported) {
    execSql("UPDATE ZVBFelder SET T4_x=120, T4_y=340, T4_dx=900, T4_dy=60,"
            " T5_x=150, T5_y=410, T5_dx=880, T5_dy=64 WHERE VarName='NACHNAME'");
    execSql("INSERT INTO ZVBFelder (VarName, T4_x, T4_y, T4_dx, T4_dy, T5_x, T5_y, T5_dx, T5_dy, VarLng)"
            " VALUES ('Nachname', 1, 1, 1, 1, 1, 1, 1, 1, 99)");
    execSql("UPDATE ZVBFelder SET OkFarbe=NULL, gelbefelderjn=NULL, pruefe=NULL, pruefungen=NULL,"
            " satznummer=NULL WHERE VarName='VORNAME'");
    felder.Fill();
    EXPECT_EQ(felder.count(), 34);
    EXPECT_TRUE(felder.Exists("nachname"));
    EXPECT_EQ(felder.GetLaenge("nachname"), 40);
    EXPECT_EQ(felder.GetPruefungen("card_id"), "Pflichtfeld();Zahl();Laenge(20);EhicKarte(STATE)");
    const auto region = [&](int layout) {
        const auto typ = qint16(layout);
        return QList<qint32>{felder.GetX("NACHNAME", typ), felder.GetY("NACHNAME", typ), felder.GetDX("NACHNAME", typ),
                             felder.GetDY("NACHNAME", typ)};
    };
    EXPECT_EQ(region(4), (QList<qint32>{120, 340, 900, 60}));
    for (const int typ : {5, 0, 7})
        EXPECT_EQ(region(typ), (QList<qint32>{150, 410, 880, 64})) << "layout " << typ;
    EXPECT_EQ((QList<qint32>{felder.GetokFarbe("VORNAME"), felder.GetGelbeFelder("VORNAME"),
                             felder.GetPruefe("VORNAME"), felder.GetSatznummer("VORNAME")}),
              (QList<qint32>{1, 0, 0, 0}));
    EXPECT_EQ(felder.GetPruefungen("VORNAME"), "");
    EXPECT_TRUE(messages.messages().isEmpty());

    // An unknown name is reported by each getter and answers zero; a null in a required column
    // stops the load and keeps the rows read before it; with no rows every getter reports the
    // empty list.
    EXPECT_FALSE(felder.Exists("STRASSE"));
    EXPECT_TRUE(messages.messages().isEmpty()) << "Exists reports nothing";
    EXPECT_EQ(felder.GetLaenge("Strasse"), 0);
    EXPECT_EQ(felder.GetPruefungen("Strasse"), "");
    const QString unknown =
        "Problem beim Auslesen des zvbFelderArrays!\r\nDer gesuchte Eintrag 'Strasse' ist nicht vorhanden.";
    EXPECT_EQ(messages.prompts(), QStringList({unknown, unknown}));

    messages.clear();
    execSql("UPDATE ZVBFelder SET T4_x=NULL WHERE VarName='FORM_ID'");
    felder.Fill();
    EXPECT_EQ(felder.count(), 18) << "the 18 rows before FORM_ID";
    EXPECT_TRUE(felder.Exists("T5_L7"));
    EXPECT_FALSE(felder.Exists("FORM_ID"));
    ASSERT_EQ(messages.messages().size(), 1);
    EXPECT_TRUE(messages.prompts()[0].startsWith("Laufzeitfehler in Funktion 'zvbFelderArray.Fill()'!"));

    messages.clear();
    execSql("DELETE * FROM ZVBFelder");
    felder.Fill();
    EXPECT_EQ(felder.count(), 0);
    EXPECT_EQ(felder.GetX("NACHNAME", 4), 0);
    EXPECT_EQ(felder.GetFormatierung("NACHNAME"), "");
    EXPECT_EQ(felder.GetokFarbe("NACHNAME"), 0);
    const QString empty = "Problem beim Auslesen des zvbFelderArrays!\r\nDas Array ist leer.";
    EXPECT_EQ(messages.prompts(), QStringList({empty, empty, empty}));
}

} // namespace
