// SPDX-License-Identifier: Apache-2.0
// The evaluation program's alternatives file taken over with its result file: each mark's
// candidates land on the "?" the clean-up made of it, in the field it mapped the raw line into;
// marks whose place is not certain and faulty lines keep nothing; a failed import keeps the file
// with its result file and stores nothing.

#include "ImportFixture.h"
#include "app/TextFile.h"
#include "workflow/mdlWorkflow.h"

#include <QSqlQuery>

namespace {

// A layout 5 card read with six doubtful characters (written "\f"): in the surname, the first
// name's initial, the state's second letter, the personal number (which has gaps that the clean-up
// removes), a frame character before the institution, and a heading line the clean-up does not use
// when the state is readable.
const QString markedLine = "31901003.tif;15.11.2026;5;0;0;;;;;;;EHIC  \\f;F\\f;Dup\\font;\\farie;"
                           "14/09/1990     290 \\f97 512;\\f  75 - CPAM Paris;80250000001234567890     30/09/2027";
const QString otherLine = "31901004.tif;15.11.2026;5;0;0;;;;;;;EHIC  DE;DE;M\\fller;Hans;"
                          "01/02/1970     1234567890;AOK Bayern;80276000001234567890     31/12/2028";

const QStringList alternativesLines = {
    "31901003.tif\tT5_L3\t1\to0\u00f6",  // surname: the reader's best guesses, an umlaut among them
    "31901003.tif\tT5_L4\t1\tmn",        // the first name's initial: the clean-up capitalises it
    "31901003.tif\tT5_L2\t1\tRX",        // "FX" is no state: only R fits the state field's "?"
    "31901003.tif\tT5_L5\t1\t06",        // the gaps of the personal number go: position 3, not 4
    "31901003.tif\tT5_L6\t1\tA",         // a frame character the clean-up drops: no "?" is left
    "31901003.tif\tT5_L1\t1\tR",         // the heading line: no field shows it
    "31901003.tif\tT5_L3\t2\tx",         // the surname has one mark only
    "31901003.tif\tT5_L3\tzwei\to",      // faulty: the ordinal is no number
    "31901004.tif\tT5_L3\t1\t\u00fcue?", // faulty: a "?" among the candidates
    "31909999.tif\tT5_L3\t1\to",         // an image this file does not hold
    "31901004.tif\tT5_L3\t1\t\u00fcu",
};

class AlternativesImport : public ImportTest {
protected:
    AlternativesImport() { withoutOcrRules(); }

    void writeAlternatives() const {
        home.writeFile("import/zvscan.alt", alternativesLines.join("\r\n").toUtf8() + "\r\n");
    }
    // "LfdNr FIELD position candidates value" of every stored candidate, in that order.
    QStringList stored() const {
        QStringList rows;
        QSqlQuery q = execSql("SELECT LfdNr, Feld, Position, Zeichen, Wert FROM zvbAlternativen "
                              "ORDER BY LfdNr, Feld, Position");
        while (q.next())
            rows << QString("%1 %2 %3 %4 %5")
                        .arg(q.value(0).toString(), q.value(1).toString(), q.value(2).toString(), q.value(3).toString(),
                             q.value(4).toString());
        return rows;
    }
};

TEST_F(AlternativesImport, candidates_land_on_the_question_mark_the_clean_up_made_of_each_mark) {
    writeResult({markedLine, otherLine});
    writeAlternatives();
    const QByteArray original = home.readFile("import/zvscan.alt");
    ASSERT_EQ(import(), 2);
    expectTexts(
        1, {"NACHNAME=Dup?ont", "VORNAME=?arie", "STATE=F?", "PERSONAL_ID=290?97512", "INSTITUT_ID=75 - CPAM Paris"});
    EXPECT_EQ(stored(), QStringList({"1 NACHNAME 3 o0\u00f6 Dup?ont", "1 PERSONAL_ID 3 06 290?97512", "1 STATE 1 R F?",
                                     "1 VORNAME 0 MN ?arie", "2 NACHNAME 1 \u00fcu M?ller"}));
    EXPECT_TRUE(log().contains("Alternativendatei '" + home.path("import/zvscan.tmp.alt") +
                               "': 2 fehlerhafte Zeile(n) übersprungen, die erste ist Zeile 8."))
        << log().toStdString();
    // Taken over like the result file: copied beside its backup copy, then deleted.
    EXPECT_FALSE(exists("import/zvscan.alt"));
    EXPECT_FALSE(exists("import/zvscan.tmp.alt"));
    EXPECT_EQ(home.readFile("backup/261115/importdata/zvscan.alt_103000_261115"), original);
    EXPECT_TRUE(messages.messages().isEmpty()) << messages.prompts().join("|").toStdString();

    // The candidates go with their record.
    ASSERT_EQ(TakeNextRecord(), 1);
    ASSERT_TRUE(DiscardRecord(1, true));
    EXPECT_EQ(stored(), QStringList({"2 NACHNAME 1 \u00fcu M?ller"}));

    // An alternatives file that is no text at all imports as if there were none.
    writeResult({otherLine});
    home.writeFile("import/zvscan.alt", QByteArray("\xff\xfe\x00\x01\x80\r\n\t\t\t\n", 10));
    EXPECT_EQ(import(), 1);
    EXPECT_FALSE(exists("import/zvscan.tmp.alt"));
    EXPECT_EQ(stored(), QStringList({"2 NACHNAME 1 \u00fcu M?ller"}));
}

// A failing clean-up deletes only the new rows and their candidates, never an older record, and keeps
// the file with its alternatives file and its backup copy.
TEST_F(AlternativesImport, failed_import_stores_nothing_and_keeps_the_file_with_its_result_file) {
    execSql("INSERT INTO zvbWerte (BMPName, NACHNAME, Workflow_Status, Workflow_KorrID, Neuimport)"
            " VALUES ('31900001.tif', 'Gruber', 30, 1, false)");
    execSql("DROP TABLE sysStates"); // the clean-up cannot map a single card
    writeResult({markedLine, otherLine});
    writeAlternatives();
    const QByteArray original = home.readFile("import/zvscan.alt");
    EXPECT_EQ(import(), -1);
    ASSERT_EQ(messages.messages().size(), 1);
    EXPECT_TRUE(messages.messages()[0].prompt.startsWith("Laufzeitfehler in Funktion 'ImportNachbearbeitung()'!"));
    EXPECT_TRUE(messages.messages()[0].prompt.contains("sysStates")) << messages.messages()[0].prompt.toStdString();
    EXPECT_EQ(rowCount(), 1);
    expectTexts(1, {"NACHNAME=Gruber", "Workflow_Status=30"});
    EXPECT_EQ(CountRows("*", "zvbAlternativen", QString()), 0);
    EXPECT_EQ(home.readFile("import/zvscan.tmp"), encodeText(markedLine + "\n" + otherLine + "\n"));
    EXPECT_TRUE(exists("backup/261115/importdata/zvscan.txt_103000_261115"));
    EXPECT_EQ(home.readFile("import/zvscan.tmp.alt"), original);

    // The next import keeps both aside and takes the new pair.
    writeResult({otherLine});
    home.writeFile("import/zvscan.alt", "31901004.tif\tT5_L3\t1\tu\r\n");
    execSql("CREATE TABLE sysStates (State_ID VARCHAR(2), State_Name VARCHAR(60))");
    execSql("INSERT INTO sysStates (State_ID) VALUES ('DE')");
    EXPECT_EQ(import(), 1);
    EXPECT_EQ(home.readFile("import/zvscan.tmp.alt.261115-103000"), original);
    EXPECT_TRUE(exists("import/zvscan.tmp.261115-103000"));
    EXPECT_EQ(stored(), QStringList({"2 NACHNAME 1 u M?ller"}));
}

} // namespace
