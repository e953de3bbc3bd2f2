// SPDX-License-Identifier: Apache-2.0
// The clean-up: raw card lines as a reader returns them, mapped into the form's fields for both
// layouts, and the replacement rules on their own.

#include "ImportFixture.h"
#include "RecordRows.h"
#include "app/Database.h"
#include "app/mdlDB.h"
#include "import/OcrCorrection.h"
#include "import/mdlImportNachbearbeitung.h"

namespace {

class Cleanup : public ImportTest {
protected:
    // A new row as the import leaves it; returns its LfdNr.
    int newRow(const QString& typ, const QStringList& lines) {
        RowValues row{{"BMPName", "319010" + QString::number(++images_) + ".tif"}, {"TYP", typ}, {"Neuimport", true}};
        for (int i = 0; i < lines.size(); ++i)
            row.insert(QString("T%1_L%2").arg(typ == "4" ? 4 : 5).arg(i + 1), lines[i]);
        return insertRecord(row);
    }
    int images_ = 0;
};

// One clean-up over new rows as a reader returns them: frames, blanks and misread slashes repaired,
// shared lines split at the first of the widest gaps, values cut to their field length. A row
// already committed is left alone, and the raw lines stay as read. The demo import covers the
// layout 4 card, an unreadable state read from the heading line and an ambiguous one.
TEST_F(Cleanup, new_rows_of_both_layouts_are_mapped_into_the_fields_and_repaired) {
    EXPECT_EQ(ImportNachbearbeitung(), 1) << "nothing to clean is a success";
    execSql("INSERT INTO zvbWerte (TYP, T5_L3, NACHNAME, Workflow_Status, Neuimport)"
            " VALUES ('5', 'huber', 'Huber-Moser', 30, false)");
    const QString longName = "Wolfeschlegelsteinhausenbergerdorffvoralternwaren";
    const int layout5 = newRow("5", {"EHIC  DE", "]  de", "|  MUELLER", "anna-lena", "12/03/1960    123 456",
                                     "108310400 - AOK Bayern  |", "8027 6883 1100 0012 3456     12|03\\2031"});
    const int slashB = newRow("5", {"", "FR", "DUPONT", "JEAN", "0111211985     185127512", "l 75 - CPAM Paris",
                                    "80250000001234567891     3010912027x"});
    const int month13 = newRow("5", {"", "FR", "DUPONT", "LUC", "12113/1960     160137512", "75 - CPAM Paris",
                                     "80250000001234567892     30/09/2027"});
    const int unique = newRow("5", {"", "A?", "HUBER", "MARIA"});
    const int noHeading = newRow("4", {"EUROPÄISCHE KRANKENVERSICHERUNGSKARTE", "XX", "HUBER"});
    const int tooLong = newRow("5", {"", "DE", longName, "Hubert", "01/01/1970     1234567890     12345678901234"});
    const int noLayout = newRow("", {"", "AT", "huber"});
    ASSERT_EQ(ImportNachbearbeitung(), 1);

    expectTexts(1, {"NACHNAME=Huber-Moser", "Workflow_Status=30"});
    expectTexts(layout5,
                {"TYP=5", "FORM_ID=E-111N", "STATE=DE", "NACHNAME=MUELLER", "VORNAME=Anna-Lena", "GEBDAT=12/03/1960",
                 "PERSONAL_ID=123456", "INSTITUT_ID=108310400 - AOK Bayern", "CARD_ID=80276883110000123456",
                 "CARD_EXPIRY=12/03/2031", "Workflow_Status=10", "T5_L3=|  MUELLER", "Neuimport=1"});
    // One blank beside a character does not make it a frame.
    expectTexts(slashB, {"GEBDAT=01/12/1985", "CARD_EXPIRY=30/09/2027", "INSTITUT_ID=l 75 - CPAM Paris"});
    EXPECT_EQ(text(month13, "GEBDAT"), "12113/1960") << "month 13 is no date: left for the operator";
    EXPECT_EQ(text(unique, "STATE"), "AT");
    EXPECT_EQ(text(noHeading, "STATE"), "") << "a layout 4 card has no second line with the code";
    EXPECT_EQ(text(tooLong, "NACHNAME"), longName.left(40));
    EXPECT_EQ(text(tooLong, "PERSONAL_ID"), "12345678901234567890") << "split at the first of the widest gaps";
    expectTexts(noLayout, {"TYP=5", "NACHNAME=Huber"}); // an empty layout is the other layout
    EXPECT_TRUE(messages.messages().isEmpty());
}

TEST_F(Cleanup, replacement_rules_read_hash_as_blank_and_apply_in_table_order) {
    withoutOcrRules();
    execSql("INSERT INTO ocrErsetzungen (Feld, Suchstring, Ersatzstring) VALUES ('*', '0#', 'O#')");
    execSql("INSERT INTO ocrErsetzungen (Feld, Suchstring, Ersatzstring) VALUES ('NACHNAME', 'O#B', 'O''B')");
    execSql("INSERT INTO ocrErsetzungen (Feld, Suchstring, Ersatzstring) VALUES ('VORNAME', '#', '')");
    EXPECT_EQ(OcrErsetzen("NACHNAME", "0 BRIEN"), "O'BRIEN") << "the second rule sees the first one's result";
    EXPECT_EQ(OcrErsetzen("nachname", "2010"), "2010") << "a zero without a blank stays";
    EXPECT_EQ(OcrErsetzen("T5_L5", "10 0 12"), "1O O 12");
    EXPECT_EQ(OcrErsetzen("VORNAME", "Jan Pieter"), "JanPieter");
    EXPECT_EQ(OcrErsetzen("STATE", "DE"), "DE");
}

} // namespace
