// veridon-cli check as an operator runs it on a home with stored records.

#include "CliRun.h"
#include "TempHome.h"
#include "app/Database.h"
#include "app/mdlDB.h"

#include <gtest/gtest.h>

namespace {

// Two stored cards: Maria Huber's clean one, and one with a "?" in the surname and a letter in the
// card number. The dates hold on any day the test runs.
void storeTwoCards() {
    const QString insert =
        "INSERT INTO zvbWerte (BMPName, TYP, SCANDAT, FORM_ID, STATE, NACHNAME, VORNAME, GEBDAT, PERSONAL_ID,"
        " INSTITUT_ID, CARD_ID, CARD_EXPIRY, Korrigiert, Workflow_Status) VALUES (?,?,?,?,?,?,?,?,?,?,?,?,?,?)";
    execSql(insert, {"31901001.tif", "4", "15.11.2026", "E-111N", "AT", "Huber", "Maria", "03.07.1961", "1236030761",
                     "1100 - OEGK", "80040001234567890123", "31.12.2029", 0, 10});
    execSql(insert, {"31901002.tif", "4", "15.11.2026", "E-111N", "NL", "de Vr?es", "Jan Pieter", "22.02.1985",
                     "123456782", "3311 - Zilveren Kruis", "8052800001234567890I", "15.06.2028", 1, 10});
    closeDatabase();
}

// One record by its number first, leaving the other alone; then all of them with their errors.
TEST(CheckCommand, prints_each_record_with_its_errors_indented_and_stores_the_result) {
    TempHome home;
    storeTwoCards();
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
}

TEST(CheckCommand, an_unknown_record_or_argument_is_refused) {
    TempHome home;
    storeTwoCards();
    const CliRun unknown = runCli({"--home", home.dir(), "check", "99"});
    EXPECT_EQ(unknown.exitCode, 1);
    EXPECT_EQ(unknown.out, "");
    EXPECT_TRUE(unknown.err.contains("LfdNr 99")) << unknown.err.toStdString();

    const CliRun wrong = runCli({"--home", home.dir(), "check", "alle"});
    EXPECT_EQ(wrong.exitCode, 2);
    EXPECT_TRUE(wrong.err.contains("alle"));
}

} // namespace
