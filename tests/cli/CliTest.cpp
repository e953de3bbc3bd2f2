// SPDX-License-Identifier: Apache-2.0
// veridon-cli as a user runs it: exit codes, output and the files it leaves in a home.

#include "CliRun.h"
#include "TempHome.h"

#include <gtest/gtest.h>

namespace {

// A missing database is reported, not created; init creates the home and overwrites it only when
// forced.
TEST(CommandLine, init_creates_a_home_and_refuses_to_overwrite_it) {
    TempHome home(TempHome::Content::Empty);
    CliRun info = runCli({"--home", home.dir(), "info"});
    EXPECT_EQ(info.exitCode, 1);
    EXPECT_TRUE(info.err.contains("data.mdb"));
    EXPECT_FALSE(QFileInfo::exists(home.path("data.mdb")));

    CliRun first = runCli({"--home", home.dir(), "init"});
    EXPECT_EQ(first.exitCode, 0) << first.err.toStdString();
    EXPECT_TRUE(QFileInfo::exists(home.path("data.mdb")));
    EXPECT_TRUE(QFileInfo::exists(home.path("tarnvel.ini")));

    CliRun second = runCli({"--home", home.dir(), "init"});
    EXPECT_EQ(second.exitCode, 2);
    EXPECT_TRUE(second.err.contains("--force"));

    CliRun forced = runCli({"--home", home.dir(), "init", "--force"});
    EXPECT_EQ(forced.exitCode, 0);
}

TEST(CommandLine, sql_prints_rows_tab_separated_under_a_header) {
    TempHome home;
    CliRun run = runCli({"--home", home.dir(), "sql",
                         "SELECT State_ID, State_XmlType FROM sysStates WHERE State_ID LIKE 'C*' OR State_ID='DE'"});
    EXPECT_EQ(run.exitCode, 0) << run.err.toStdString();
    EXPECT_EQ(run.out, "State_ID\tState_XmlType\nCY\t1\nCZ\t1\nDE\t4\nCH\t3\n");

    CliRun update = runCli({"--home", home.dir(), "sql", "DELETE * FROM sysStates WHERE State_ID='CH'"});
    EXPECT_EQ(update.exitCode, 0);
    EXPECT_TRUE(update.out.startsWith("1 "));

    CliRun failing = runCli({"--home", home.dir(), "sql", "SELECT * FROM Gibtsnicht"});
    EXPECT_EQ(failing.exitCode, 1) << "a failing statement is a reported failure";
    EXPECT_TRUE(failing.err.contains("Gibtsnicht"));
}

TEST(CommandLine, usage_errors_exit_with_two) {
    TempHome home;
    const QString dir = home.dir();
    for (const QStringList& args : {QStringList{},
                                    {"gibtsnicht"},
                                    {"--unbekannt", "info"},
                                    {"--yes", "--no", "info"},
                                    {"--home", dir, "sql"},
                                    {"--home", dir, "print"},
                                    {"--home", dir, "export", "--pdf"},
                                    {"--home", dir, "autoimport", "jetzt"},
                                    {"--home", dir, "housekeeping", "jetzt"}})
        EXPECT_EQ(runCli(args).exitCode, 2) << args.join(' ').toStdString();
    const CliRun badAnswer = runCli({"--home", dir, "export", "--report", "vielleicht"});
    EXPECT_EQ(badAnswer.exitCode, 2);
    EXPECT_TRUE(badAnswer.err.contains("--report"));
}

TEST(CommandLine, help_lists_the_commands) {
    CliRun run = runCli({"--help"});
    EXPECT_EQ(run.exitCode, 0);
    for (const char* command : {"init", "sql", "info"})
        EXPECT_TRUE(run.out.contains(QString::fromLatin1("  ") + QLatin1String(command))) << command;
    EXPECT_EQ(runCli({"--version"}).out, "veridon-cli 0.1.0\n");
}

// The detail of a run-time error reads in the language chosen in the options, as the operator sees
// it: a value that does not fit while importing, a missing export folder, a home that exists.
TEST(CommandLine, run_time_errors_read_in_the_chosen_language) {
    struct Case {
        const char* language;
        QString badValue, noExportFolder, homeExists;
    };
    const Case cases[] = {
        {"EN", "#13: Data type conversion error in line 2: the value '1O' does not fit the field 'BMOffsetX'.",
         "#76: No export folder is set (Export_Pfad).", "already holds a data.mdb. With --force it is created anew"},
        {"DE", "#13: Datentypenkonvertierungsfehler in Zeile 2: der Wert '1O' passt nicht in das Feld 'BMOffsetX'.",
         "#76: Es ist kein Exportverzeichnis eingestellt (Export_Pfad).",
         "gibt es bereits eine data.mdb. Mit --force wird sie neu angelegt"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.language);
        TempHome home;
        const QString dir = home.dir();
        ASSERT_EQ(runCli({"--home", dir, "sql",
                          QString("UPDATE zvbSys SET APP_Language='%1', Export_Pfad=''").arg(c.language)})
                      .exitCode,
                  0);
        const QString file = home.writeFile("import/zvscan.txt", "31901001.tif;15.11.2026;4;0;0;X;AT;Huber\r\n"
                                                                 "31901002.tif;15.11.2026;4;1O;0;X;NL\r\n");
        const CliRun imported = runCli({"--home", dir, "import", file});
        EXPECT_EQ(imported.exitCode, 1);
        EXPECT_TRUE(imported.err.contains(c.badValue)) << imported.err.toStdString();

        runCli({"--home", dir, "sql", "UPDATE zvbWerte SET Workflow_Status=40, Neuimport=false"});
        const CliRun exported = runCli({"--home", dir, "export"});
        EXPECT_EQ(exported.exitCode, 1);
        EXPECT_TRUE(exported.err.contains(c.noExportFolder)) << exported.err.toStdString();

        const CliRun init = runCli({"--home", dir, "init"});
        EXPECT_EQ(init.exitCode, 2);
        EXPECT_TRUE(init.err.contains(c.homeExists)) << init.err.toStdString();
    }
}

} // namespace
