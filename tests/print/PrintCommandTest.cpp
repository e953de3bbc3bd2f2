// SPDX-License-Identifier: Apache-2.0
// The print command for the record on screen: refused while a field fails, otherwise the record is
// stored as it stands on screen and printed, and its workflow state stays.

#include "PrintFixture.h"
#include "app/Database.h"
#include "model/FormModel.h"

namespace {

class PrintCommandTest : public PrintFixture {
protected:
    PrintCommandTest() {
        FelderArray().Fill();
        setting("Report_Other_Country", 1);
    }
    ~PrintCommandTest() override { WerteArray().Clear(); }

    // Puts the stored record lfdNr on screen.
    void show(qint32 lfdNr) {
        QSqlQuery q = execSql(QStringLiteral("SELECT * FROM zvbWerte WHERE LfdNr=%1").arg(lfdNr));
        ASSERT_TRUE(q.next());
        WerteArray().Fill(q);
    }
    qint32 inCorrection(int index, const RowValues& changes = {}) {
        RowValues row = demoForm(index);
        row.insert("FORM_ID", "E111");
        row.insert("Workflow_Status", 30);
        row.insert("Workflow_KorrID", 1);
        row.insert(changes);
        return insertRecord(row);
    }
    QVariant stored(qint32 lfdNr, const char* column) {
        return GetValue(QString::fromLatin1(column), "zvbWerte", QStringLiteral("LfdNr=%1").arg(lfdNr));
    }
};

TEST_F(PrintCommandTest, refused_while_a_field_fails_then_stored_as_on_screen_printed_and_keeps_its_state) {
    const qint32 number = inCorrection(0, {{"CARD_ID", "8004OOO1234"}});
    show(number);
    EXPECT_FALSE(PrintCommand(number));
    EXPECT_EQ(messages.prompts(), QStringList{"Daten enthalten noch Fehler, Drucken nicht möglich!"});
    EXPECT_TRUE(printed().isEmpty());

    messages.clear();
    WerteArray().SetValue("CARD_ID", demoForm(0).value("CARD_ID").toString()); // corrected on screen, not yet saved
    WerteArray().SetValue("NACHNAME", "Huber-Moser");
    EXPECT_TRUE(PrintCommand(number));
    EXPECT_TRUE(messages.messages().isEmpty()) << messages.prompts().join("|").toStdString();
    ASSERT_EQ(printed().size(), 2);
    EXPECT_AT(page(printed()[0]), "Huber-Moser", 15, 52);
    EXPECT_EQ(stored(number, "NACHNAME").toString(), "Huber-Moser");
    EXPECT_EQ(stored(number, "Korrigiert").toInt(), 1);
    EXPECT_EQ(stored(number, "Workflow_Status").toInt(), 30);
}

} // namespace
