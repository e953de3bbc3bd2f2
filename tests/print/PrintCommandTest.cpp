// SPDX-License-Identifier: Apache-2.0
// The print command for the record on screen: refused while a field fails, otherwise the record is
// stored as it stands on screen and printed, and its workflow state stays.

#include "PrintFixture.h"
#include "app/Database.h"
#include "model/FormModel.h"

namespace {

using PrintCommandTest = PrintFixture;

TEST_F(PrintCommandTest, refused_while_a_field_fails_then_stored_as_on_screen_printed_and_keeps_its_state) {
    FelderArray().Fill();
    setting("Report_Other_Country", 1);
    RowValues row = demoForm(0);
    row.insert({{"FORM_ID", "E111"}, {"Workflow_Status", 30}, {"Workflow_KorrID", 1}, {"CARD_ID", "8004OOO1234"}});
    const qint32 number = insertRecord(row);
    QSqlQuery q = execSql(QStringLiteral("SELECT * FROM zvbWerte WHERE LfdNr=%1").arg(number));
    ASSERT_TRUE(q.next());
    WerteArray().Fill(q); // on screen
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
    q = execSql(
        QStringLiteral("SELECT NACHNAME, Korrigiert, Workflow_Status FROM zvbWerte WHERE LfdNr=%1").arg(number));
    ASSERT_TRUE(q.next());
    EXPECT_EQ((QVariantList{q.value(0).toString(), q.value(1).toInt(), q.value(2).toInt()}),
              (QVariantList{"Huber-Moser", 1, 30}));
    WerteArray().Clear();
}

} // namespace
