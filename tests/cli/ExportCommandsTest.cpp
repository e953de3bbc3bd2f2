// SPDX-License-Identifier: Apache-2.0
// The export, auto-import and housekeeping commands as a script runs them.

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
    EXPECT_TRUE(QFileInfo::exists(home.path("export/31901001.xml")));
    EXPECT_TRUE(QFileInfo::exists(home.path("export/31901006.xml")));
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
    EXPECT_TRUE(QFileInfo::exists(home.path("export/31901003.xml")));
    EXPECT_TRUE(QFileInfo::exists(home.path("export/31901006.xml")));
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
    EXPECT_TRUE(run.out.contains("0 Datensatz/Datensätze exportiert")) << run.out.toStdString();
    EXPECT_EQ(CountRows("*", "zvbWerte", "Workflow_Status=40"), 1);
    EXPECT_TRUE(QFileInfo::exists(home.path("images/31901001.tif")));
    EXPECT_TRUE(QDir(home.path("export")).isEmpty());
    EXPECT_TRUE(QDir(home.path("backup")).entryList(QDir::AllEntries | QDir::NoDotAndDotDot).isEmpty());
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

TEST(PrintCommand, prints_a_clean_record_and_refuses_a_faulty_one) {
    TempHome home;
    SetSysValue("Report_Other_Country", 3);
    const qint32 good = accepted(home, 0, {{"FORM_ID", "E111"}, {"Workflow_Status", 30}});
    const qint32 bad = accepted(home, 1, {{"CARD_ID", "8052800OOO"}});

    const CliRun run = runCli({"--home", home.dir(), "print", QString::number(good), "--pdf", home.path("berichte"),
                               "--report", "stationaer"});
    EXPECT_EQ(run.exitCode, 0) << run.err.toStdString();
    EXPECT_EQ(run.out, "2 Berichtsseite(n) als PDF in " + home.path("berichte") + "\n");
    EXPECT_EQ(GetValue("Workflow_Status", "zvbWerte", QStringLiteral("LfdNr=%1").arg(good)).toInt(), 30);

    const CliRun refused =
        runCli({"--home", home.dir(), "print", QString::number(bad), "--pdf", home.path("berichte")});
    EXPECT_EQ(refused.exitCode, 1);
    EXPECT_TRUE(refused.err.contains("Daten enthalten noch Fehler, Drucken nicht möglich!"))
        << refused.err.toStdString();
    EXPECT_EQ(QDir(home.path("berichte")).entryList(QDir::Files).size(), 2);

    const CliRun missing = runCli({"--home", home.dir(), "print", "999"});
    EXPECT_EQ(missing.exitCode, 1);
    EXPECT_TRUE(missing.err.contains("999"));
}

} // namespace
