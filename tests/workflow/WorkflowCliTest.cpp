// SPDX-License-Identifier: Apache-2.0
// veridon-cli next, accept, discard and stats as an operator without a display uses them.

#include "CliRun.h"
#include "DemoRecords.h"
#include "HomeTest.h"
#include "app/Database.h"

#include <QDir>
#include <QFileInfo>
#include <tuple>

namespace {

class WorkflowCli : public HomeTest {
protected:
    CliRun cli(QStringList args) { return runCli(QStringList{"--home", home.dir()} + args); }
    // Runs args and expects them refused with exitCode, nothing printed and errPart in the error.
    void expectRefused(const QStringList& args, int exitCode, const QString& errPart = {}) {
        const CliRun run = cli(args);
        EXPECT_EQ(std::tuple(run.exitCode, run.out), std::tuple(exitCode, QString())) << args.join(' ').toStdString();
        EXPECT_TRUE(run.err.contains(errPart)) << run.err.toStdString();
    }
};

// next prints the record it took and fails on an empty pool. accept refuses a faulty record with
// its error text, another workstation's one with its number (as discard does), a record with
// warnings without --yes; a clean one is handed over and exported. What was handed over and
// discarded shows in the statistics beside the days before.
TEST_F(WorkflowCli, next_accept_discard_and_stats_as_an_operator_without_a_display_uses_them) {
    expectRefused({"next"}, 1, "Kein Beleg");
    expectRefused({"next", "7"}, 2);
    execSql("UPDATE zvbSys SET Report_Ambrix_Country=0, Report_Other_Country=0");
    FormValues form = demoForms().at(0);
    form["CARD_ID"] = "8004A";
    const qint32 faulty = insertRecord(form);
    form = demoForms().at(0);
    form["PERSONAL_ID"] = "1234030761"; // Austrian insurance number, check digit 6 would be right
    form["BMPName"] = "31901009.tif";
    const qint32 odd = insertRecord(form);
    const qint32 clean = insertRecord(demoForms().at(1));
    for (const char* image : {"images/31901001.tif", "images/31901009.tif", "images/31901002.tif"})
        home.writeFile(image, "II*");
    // Yesterday's figures of workstation 2, one of them damaged by hand.
    const QDate yesterday = QDate::currentDate().addDays(-1);
    home.writeFile("backup/" + yesterday.toString("yyMMdd") + "/stats/arbeitsplatz_2.txt",
                   "Uebergeben=viele\r\nVerworfen=0\r\nFelderKorrigiert=5\r\nTastenanschlaege=90\r\n");

    CliRun run = cli({"next"});
    EXPECT_EQ(run.out, QString::number(faulty) + "\n") << run.err.toStdString();
    expectRefused({"accept", QString::number(faulty)}, 1, "muss eine Zahl enthalten");
    EXPECT_EQ(workflowOf(faulty), "30/1");
    execSql("UPDATE zvbWerte SET Workflow_Status=30, Workflow_KorrID=2 WHERE LfdNr=?", {faulty});
    expectRefused({"accept", QString::number(faulty)}, 1, "Arbeitsplatz 2");
    expectRefused({"accept"}, 2);
    expectRefused({"discard", QString::number(faulty)}, 1, "Arbeitsplatz 2");
    EXPECT_EQ(workflowOf(faulty), "30/2");
    expectRefused({"discard", "999"}, 1, "999 gibt es nicht");
    expectRefused({"discard", "x"}, 2);

    expectRefused({"accept", QString::number(odd)}, 1,
                  "Warnungen zu Beleg:\n  Persönliche Kennnummer passt nicht zu Aufbau und Prüfziffer der "
                  "persönlichen Kennnummer des Staates AT\nFrage (Veridon): Es gibt noch Warnungen zu diesem "
                  "Beleg!\nDie Belegdaten trotzdem übergeben?");
    EXPECT_EQ(workflowOf(odd), "30/1");
    run = cli({"accept", QString::number(odd), "--yes"});
    EXPECT_EQ(run.exitCode, 0) << run.err.toStdString();
    EXPECT_EQ(workflowOf(odd), "");

    run = cli({"accept", QString::number(clean)});
    EXPECT_EQ(run.exitCode, 0) << run.err.toStdString();
    EXPECT_TRUE(run.out.contains("übergeben")) << run.out.toStdString();
    EXPECT_EQ(workflowOf(clean), "");
    EXPECT_EQ(QDir(home.path("export")).entryList(QDir::Files), (QStringList{"31901002.xml", "31901009.xml"}));

    execSql("UPDATE zvbWerte SET Workflow_KorrID=1 WHERE LfdNr=?", {faulty});
    ASSERT_EQ(cli({"discard", QString::number(faulty)}).exitCode, 0);
    EXPECT_EQ(workflowOf(faulty), "");
    EXPECT_FALSE(QFileInfo::exists(home.path("images/31901001.tif")));
    const QStringList lines = cli({"stats", "--days", "2"}).out.split('\n');
    ASSERT_EQ(lines.size(), 4) << lines.join('|').toStdString();
    EXPECT_EQ(lines.first(2), (QStringList{"Datum\tArbeitsplatz\tÜbergeben\tVerworfen\tFelder korrigiert\tAnschläge "
                                           "je Beleg\tBelege je Stunde",
                                           yesterday.toString("dd.MM.yyyy") + "\t2\t0\t0\t5\t0,0\t0,0"}));
    // Records per hour depends on how long the commands took: only the counts are fixed.
    EXPECT_TRUE(lines[2].startsWith(QDate::currentDate().toString("dd.MM.yyyy") + "\t1\t2\t1\t0\t0,0\t"))
        << lines[2].toStdString();
    EXPECT_TRUE(QString::fromLatin1(home.readFile("zvMsgLog.txt")).contains("'Uebergeben=viele' ist kein Zählerstand"));
    EXPECT_EQ(cli({"stats"}).out.count('\n'), 3) << "seven days by default";
    EXPECT_EQ(cli({"stats", "--days", "1"}).out.count('\n'), 2);
    expectRefused({"stats", "--days", "0"}, 2);
    expectRefused({"stats", "--days"}, 2);
}

} // namespace
