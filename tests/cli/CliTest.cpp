// SPDX-License-Identifier: Apache-2.0
// veridon-cli as a user or a script runs it: exit codes, output and the files it leaves in a home.

#include "CliRun.h"
#include "RecordRows.h"
#include "TempHome.h"
#include "app/mdlDB.h"

#include <QDir>
#include <gtest/gtest.h>

namespace {

// Demo form index with its image in the home, accepted (state 40) unless changes say otherwise.
qint32 accepted(const TempHome& home, int index, const RowValues& changes = {}) {
    RowValues row = demoForm(index);
    row.insert("Workflow_Status", 40);
    row.insert(changes);
    home.writeFile("images/" + row.value("BMPName").toString(), "II*");
    return insertRecord(row);
}

// init creates the home and overwrites it only when forced.
TEST(CommandLine, init_creates_a_home_and_refuses_to_overwrite_it) {
    TempHome home(TempHome::Content::Empty);
    CliRun first = runCli({"--home", home.dir(), "init"});
    EXPECT_EQ(first.exitCode, 0) << first.err.toStdString();
    EXPECT_TRUE(QFileInfo::exists(home.path("data.mdb")));
    EXPECT_TRUE(QFileInfo::exists(home.path("tarnvel.ini")));

    CliRun second = runCli({"--home", home.dir(), "init"});
    EXPECT_EQ(second.exitCode, 2);
    EXPECT_TRUE(second.err.contains("--force"));
    EXPECT_EQ(runCli({"--home", home.dir(), "init", "--force"}).exitCode, 0);
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

// Help and version answer with 0; a call that cannot be meant exits with 2.
TEST(CommandLine, help_and_version_answer_and_usage_errors_exit_with_two) {
    TempHome home;
    const QString dir = home.dir();
    const struct {
        QStringList args;
        int exit;
        QString output;
    } cases[] = {
        {{"--help"}, 0, "\n  init "},
        {{"--help"}, 0, "\n  sql "},
        {{"--version"}, 0, "veridon-cli 0.1.0\n"},
        {{}, 2, ""},
        {{"gibtsnicht"}, 2, ""},
        {{"--unbekannt", "info"}, 2, ""},
        {{"--yes", "--no", "info"}, 2, ""},
        {{"--home", dir, "sql"}, 2, ""},
        {{"--home", dir, "print"}, 2, ""},
        {{"--home", dir, "export", "--pdf"}, 2, ""},
        {{"--home", dir, "export", "--report", "vielleicht"}, 2, "--report"},
        {{"--home", dir, "autoimport", "jetzt"}, 2, ""},
        {{"--home", dir, "housekeeping", "jetzt"}, 2, ""},
    };
    for (const auto& c : cases) {
        const CliRun run = runCli(c.args);
        EXPECT_EQ(run.exitCode, c.exit) << c.args.join(' ').toStdString();
        EXPECT_TRUE((run.out + run.err).contains(c.output)) << c.args.join(' ').toStdString();
    }
}

// The detail of a run-time error reads in the language chosen in the options, as the operator sees
// it: a value that does not fit while importing, a home that exists.
TEST(CommandLine, run_time_errors_read_in_the_chosen_language) {
    const struct {
        const char* language;
        QString badValue, homeExists;
    } cases[] = {
        {"EN", "#13: Data type conversion error in line 2: the value '1O' does not fit the field 'BMOffsetX'.",
         "already holds a data.mdb. With --force it is created anew"},
        {"DE", "#13: Datentypenkonvertierungsfehler in Zeile 2: der Wert '1O' passt nicht in das Feld 'BMOffsetX'.",
         "gibt es bereits eine data.mdb. Mit --force wird sie neu angelegt"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.language);
        TempHome home;
        const QString dir = home.dir();
        ASSERT_EQ(
            runCli({"--home", dir, "sql", QString("UPDATE zvbSys SET APP_Language='%1'").arg(c.language)}).exitCode, 0);
        const QString file = home.writeFile("import/zvscan.txt", "31901001.tif;15.11.2026;4;0;0;X;AT;Huber\r\n"
                                                                 "31901002.tif;15.11.2026;4;1O;0;X;NL\r\n");
        const CliRun imported = runCli({"--home", dir, "import", file});
        EXPECT_EQ(imported.exitCode, 1);
        EXPECT_TRUE(imported.err.contains(c.badValue)) << imported.err.toStdString();
        const CliRun init = runCli({"--home", dir, "init"});
        EXPECT_EQ(init.exitCode, 2);
        EXPECT_TRUE(init.err.contains(c.homeExists)) << init.err.toStdString();
    }
}

TEST(ExportCommands, export_writes_xml_and_prints_the_reports_into_pdf_files) {
    TempHome home;
    SetSysValue("Report_Other_Country", 3); // ask: answered by --report
    accepted(home, 0);                      // Austrian card
    accepted(home, 5);                      // German card: its own report
    const CliRun run = runCli({"--home", home.dir(), "export", "--pdf", home.path("berichte"), "--report", "ambulant"});
    EXPECT_EQ(run.exitCode, 0) << run.err.toStdString();
    EXPECT_TRUE(run.out.contains("2 Datensatz/Datensätze exportiert nach " + home.path("export")))
        << run.out.toStdString();
    EXPECT_TRUE(run.out.contains("2 Berichtsseite(n) als PDF in " + home.path("berichte")));
    EXPECT_EQ(QDir(home.path("berichte")).entryList(QDir::Files, QDir::Name),
              (QStringList{"0001-31901001_bericht_ambulant.pdf", "0002-31901006_bericht_ambrix.pdf"}));
    EXPECT_EQ(QDir(home.path("export")).entryList(QDir::Files, QDir::Name),
              (QStringList{"31901001.xml", "31901006.xml"}));
    EXPECT_EQ(CountRows("*", "zvbWerte", ""), 0);
}

// Without --report an open report type prints nothing; a due report that cannot be printed is
// reported, and the records are exported all the same.
TEST(ExportCommands, export_on_a_machine_without_printers_reports_the_printer_and_still_exports) {
    TempHome home;
    SetSysValue("Report_Other_Country", 3);
    accepted(home, 2); // French card: asked, and nobody answers
    accepted(home, 5); // German card: a report is due
    // A print server that cannot be reached: no printers, even on a machine that has some.
    const QByteArray server = qgetenv("CUPS_SERVER");
    qputenv("CUPS_SERVER", "127.0.0.1:9");
    const CliRun run = runCli({"--home", home.dir(), "export"});
    server.isNull() ? qunsetenv("CUPS_SERVER") : qputenv("CUPS_SERVER", server);
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_EQ(run.err.count("Beim Initialisieren des Druckers trat ein Fehler auf!"), 1) << run.err.toStdString();
    EXPECT_EQ(QDir(home.path("export")).entryList(QDir::Files, QDir::Name),
              (QStringList{"31901003.xml", "31901006.xml"}));
    EXPECT_EQ(CountRows("*", "zvbWerte", ""), 0);
}

// Checks fail closed: with field definitions that cannot be loaded nothing is known to have been
// checked, so the export refuses and leaves records, images and folders as they were. (Which
// definitions cannot be loaded is the check command's tests' business.)
TEST(ExportCommands, export_refuses_when_the_field_definitions_cannot_be_loaded) {
    TempHome home;
    accepted(home, 0);
    execSql("DELETE FROM ZVBFelder");
    const CliRun run = runCli({"--home", home.dir(), "export"});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_TRUE(run.err.contains("Die Felddefinitionen (ZVBFelder) konnten nicht geladen werden."))
        << run.err.toStdString();
    EXPECT_EQ(CountRows("*", "zvbWerte", "Workflow_Status=40"), 1);
    EXPECT_TRUE(QFileInfo::exists(home.path("images/31901001.tif")));
    EXPECT_TRUE(QDir(home.path("export")).isEmpty());
}

TEST(ExportCommands, autoimport_takes_newer_files_once_and_housekeeping_runs_the_start_up_steps) {
    TempHome home;
    const CliRun first = runCli({"--home", home.dir(), "autoimport"});
    EXPECT_EQ(first.exitCode, 0) << first.err.toStdString();
    EXPECT_EQ(first.out, "2 Systemtabelle(n) neu eingelesen\n");
    EXPECT_EQ(runCli({"--home", home.dir(), "autoimport"}).out, "0 Systemtabelle(n) neu eingelesen\n");

    TempHome fresh; // whose tables the housekeeping must import itself
    const CliRun run = runCli({"--home", fresh.dir(), "housekeeping"});
    EXPECT_EQ(run.exitCode, 0) << run.err.toStdString();
    EXPECT_TRUE(run.out.startsWith("Start-Schritte ausgeführt; zuletzt geöffnet: "));
    EXPECT_FALSE(GetSysValue("APP_LastOpened").isNull());
    EXPECT_EQ(CountRows("*", "zvbAutoImport", "VersionsDatum IS NULL"), 0);
}

// A clean record is printed and keeps its state; a faulty one and one that does not exist are
// refused.
TEST(PrintCommand, prints_a_clean_record_and_refuses_a_faulty_one) {
    TempHome home;
    SetSysValue("Report_Other_Country", 3);
    const qint32 good = accepted(home, 0, {{"FORM_ID", "E111"}, {"Workflow_Status", 30}});
    const qint32 bad = accepted(home, 1, {{"CARD_ID", "8052800OOO"}});
    const QString pdf = home.path("berichte");

    const CliRun run =
        runCli({"--home", home.dir(), "print", QString::number(good), "--pdf", pdf, "--report", "stationaer"});
    EXPECT_EQ(run.exitCode, 0) << run.err.toStdString();
    EXPECT_EQ(run.out, "2 Berichtsseite(n) als PDF in " + pdf + "\n");
    EXPECT_EQ(GetValue("Workflow_Status", "zvbWerte", QStringLiteral("LfdNr=%1").arg(good)).toInt(), 30);

    const CliRun refused = runCli({"--home", home.dir(), "print", QString::number(bad), "--pdf", pdf});
    EXPECT_EQ(refused.exitCode, 1);
    EXPECT_TRUE(refused.err.contains("Daten enthalten noch Fehler, Drucken nicht möglich!"))
        << refused.err.toStdString();
    EXPECT_EQ(QDir(pdf).entryList(QDir::Files).size(), 2);
    const CliRun missing = runCli({"--home", home.dir(), "print", "999"});
    EXPECT_EQ(missing.exitCode, 1);
    EXPECT_TRUE(missing.err.contains("999"));
}

} // namespace
