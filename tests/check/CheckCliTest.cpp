// SPDX-License-Identifier: Apache-2.0
// veridon-cli check as an operator runs it on a home with stored records.

#include "CliRun.h"
#include "RecordRows.h"
#include "TempHome.h"
#include "app/Database.h"
#include "app/PoolConnection.h"
#include "app/mdlDB.h"

#include <QProcess>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QThread>
#include <gtest/gtest.h>

namespace {

// Two stored demo cards: Maria Huber's clean one, and Jan de Vries's with a "?" in the surname and a
// letter in the card number.
void storeTwoCards() {
    RowValues huber = demoForm(0), vries = demoForm(1);
    huber.insert("Workflow_Status", 10);
    vries.insert(
        {{"Workflow_Status", 10}, {"Korrigiert", 1}, {"NACHNAME", "de Vr?es"}, {"CARD_ID", "8052800001234567890I"}});
    insertRecord(huber);
    insertRecord(vries);
    closeDatabase();
}

// One record by its number first, leaving the other alone; then all of them with their errors. A
// date typed in a short reading form is stored in its full form once it passed.
TEST(CheckCommand, prints_each_record_with_its_errors_indented_and_stores_the_result) {
    TempHome home;
    storeTwoCards();
    execSql("UPDATE zvbWerte SET CARD_EXPIRY='310326', GEBDAT='3.7.61' WHERE LfdNr=1");
    closeDatabase();
    const CliRun one = runCli({"--home", home.dir(), "check", "2"});
    EXPECT_EQ(one.exitCode, 0) << one.err.toStdString();
    EXPECT_EQ(one.out, "2\t2\t0003000030\n");
    EXPECT_TRUE(GetValue("Fehlerhaft", "zvbWerte", "LfdNr=1").isNull());

    const CliRun run = runCli({"--home", home.dir(), "check", "--errors"});
    EXPECT_EQ(run.exitCode, 0) << run.err.toStdString();
    EXPECT_EQ(run.out, "1\t0\t0000000000\n"
                       "2\t2\t0003000030\n"
                       "    Im Feld 'Nachname' befindet sich noch ein ?\n"
                       "    Kennnummer der Karte muss eine Zahl enthalten.\n");
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(GetValue("Fehlerhaft", "zvbWerte", "LfdNr=2").toString(), "0003000030");
    EXPECT_EQ(GetValue("Korrigiert", "zvbWerte", "LfdNr=1").toInt(), 1);
    EXPECT_EQ(GetValue("Korrigiert", "zvbWerte", "LfdNr=2").toInt(), 0);
    EXPECT_EQ(GetValue("NACHNAME", "zvbWerte", "LfdNr=2").toString(), "de Vr?es") << "values are only checked";
    EXPECT_EQ(GetValue("CARD_EXPIRY", "zvbWerte", "LfdNr=1").toString(), "31.03.2026");
    EXPECT_EQ(GetValue("GEBDAT", "zvbWerte", "LfdNr=1").toString(), "03.07.1961");

    const CliRun unknown = runCli({"--home", home.dir(), "check", "99"});
    EXPECT_EQ(unknown.exitCode, 1);
    EXPECT_EQ(unknown.out, "");
    EXPECT_TRUE(unknown.err.contains("LfdNr 99")) << unknown.err.toStdString();
    const CliRun wrong = runCli({"--home", home.dir(), "check", "alle"});
    EXPECT_EQ(wrong.exitCode, 2);
    EXPECT_TRUE(wrong.err.contains("alle"));

    // Field definitions that cannot be loaded leave nothing checked: Maria Huber's clean card fails
    // instead of passing (and so is never handed over). Each fault adds to the one before.
    const struct {
        const char* fault;
        const char* statement;
        bool serverHoldsIt; // the server's typed columns refuse some values before they are stored
    } cases[] = {
        {"VarLng beyond a small integer", "UPDATE ZVBFelder SET VarLng=70000 WHERE VarName='VORNAME'", false},
        {"a field without its length", "UPDATE ZVBFelder SET VarLng=NULL WHERE VarName='VORNAME'", true},
        {"no definitions at all", "DELETE * FROM ZVBFelder", true},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.fault);
        if (!c.serverHoldsIt && !testPoolServer().isEmpty())
            continue;
        execSql(c.statement);
        closeDatabase();
        const CliRun run = runCli({"--home", home.dir(), "check", "1", "--errors"});
        EXPECT_TRUE(run.out.startsWith("1\t2\t")) << run.out.toStdString();
        EXPECT_TRUE(run.out.contains("Felddefinitionen (ZVBFelder) konnten nicht geladen werden"));
    }
}

// A connection of a second workstation to where the home's records are stored: data.mdb, or the
// pool server the home is joined to.
QSqlDatabase otherWorkstation(const TempHome& home) {
    if (homeUsesPool()) {
        const QString uri = homePoolUri();
        closeDatabase();
        return openPoolConnection(uri, "other-workstation");
    }
    QSqlDatabase other = QSqlDatabase::addDatabase("QSQLITE", "other-workstation");
    other.setDatabaseName(home.path("data.mdb"));
    other.open();
    return other;
}

// A second workstation writes while check all starts: it holds the write lock (on the server: the
// table, locked against every writer) and commits a change a moment later. The check waits for the
// lock and stores every result instead of failing half way; when the results cannot be stored at
// all (the table refuses updates), the command says so with exit code 1 and stores nothing.
TEST(CheckCommand, waits_for_another_writer_and_fails_with_1_when_it_cannot_store) {
    TempHome home;
    storeTwoCards();
    const bool pool = homeUsesPool();
    {
        QSqlDatabase other = otherWorkstation(home);
        ASSERT_TRUE(other.isOpen()) << other.lastError().text().toStdString();
        QSqlQuery hold(other);
        ASSERT_TRUE(hold.exec(pool ? "BEGIN" : "BEGIN IMMEDIATE"));
        if (pool) {
            ASSERT_TRUE(hold.exec(R"(LOCK TABLE "zvbWerte" IN EXCLUSIVE MODE)"))
                << hold.lastError().text().toStdString();
        }
        ASSERT_TRUE(hold.exec(R"(UPDATE "zvbWerte" SET "SCANDAT"='16.11.2026' WHERE "LfdNr"=1)"));
        QProcess check;
        check.start(VERIDON_CLI, {"--home", home.dir(), "check", "all"});
        ASSERT_TRUE(check.waitForStarted());
        QThread::msleep(1500);
        ASSERT_TRUE(hold.exec("COMMIT"));
        ASSERT_TRUE(check.waitForFinished(60000));
        EXPECT_EQ(check.exitCode(), 0) << check.readAllStandardError().toStdString();
        EXPECT_EQ(check.readAllStandardOutput(), "1\t0\t0000000000\n2\t2\t0003000030\n");
        EXPECT_EQ(GetValue("Fehlerhaft", "zvbWerte", "LfdNr=2").toString(), "0003000030");
        EXPECT_EQ(GetValue("SCANDAT", "zvbWerte", "LfdNr=1").toString(), "16.11.2026") << "the other's change stays";
        closeDatabase();

        ASSERT_TRUE(hold.exec(R"(UPDATE "zvbWerte" SET "Fehlerhaft"=NULL, "Korrigiert"=0)"));
        // A table that refuses every update, as a read-only copy of the records would.
        if (pool) {
            ASSERT_TRUE(hold.exec("CREATE FUNCTION readonly() RETURNS trigger LANGUAGE plpgsql AS"
                                  " $$ BEGIN RAISE EXCEPTION 'schreibgeschützt'; END $$"));
            ASSERT_TRUE(hold.exec("CREATE TRIGGER readonly BEFORE UPDATE ON \"zvbWerte\" FOR EACH ROW"
                                  " EXECUTE FUNCTION readonly()"));
        } else {
            ASSERT_TRUE(hold.exec("CREATE TRIGGER readonly BEFORE UPDATE ON zvbWerte BEGIN SELECT RAISE(ABORT, "
                                  "'schreibgeschützt'); END"));
        }
        hold = QSqlQuery();
        other.close();
    }
    QSqlDatabase::removeDatabase("other-workstation");

    const CliRun refused = runCli({"--home", home.dir(), "check", "all"});
    EXPECT_EQ(refused.exitCode, 1);
    EXPECT_TRUE(refused.err.contains("schreibgeschützt")) << refused.err.toStdString();
    EXPECT_TRUE(GetValue("Fehlerhaft", "zvbWerte", "LfdNr=2").isNull()) << "nothing stored";
    EXPECT_EQ(GetValue("Korrigiert", "zvbWerte", "LfdNr=1").toInt(), 0);
}

} // namespace
