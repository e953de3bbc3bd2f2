// veridon-cli next, discard and accept as an operator without a display uses them.

#include "CliRun.h"
#include "DemoRecords.h"
#include "HomeTest.h"
#include "app/Database.h"

#include <QFileInfo>

namespace {

class WorkflowCli : public HomeTest {
protected:
    CliRun cli(QStringList args) { return runCli(QStringList{"--home", home.dir()} + args); }
};

TEST_F(WorkflowCli, next_prints_the_record_taken_and_fails_on_an_empty_pool) {
    CliRun empty = cli({"next"});
    EXPECT_EQ(empty.exitCode, 1);
    EXPECT_EQ(empty.out, "");
    EXPECT_TRUE(empty.err.contains("Kein Beleg")) << empty.err.toStdString();

    const QVector<qint32> records = insertDemoRecords(2);
    execSql("UPDATE zvbWerte SET Workflow_Status=30, Workflow_KorrID=2 WHERE LfdNr=?", {records[0]});
    CliRun next = cli({"next"});
    EXPECT_EQ(next.exitCode, 0) << next.err.toStdString();
    EXPECT_EQ(next.out, QString::number(records[1]) + "\n");
    EXPECT_EQ(workflowOf(records[1]), "30/1");
    EXPECT_EQ(workflowOf(records[0]), "30/2");

    EXPECT_EQ(cli({"next", "7"}).exitCode, 2);
}

TEST_F(WorkflowCli, discard_deletes_record_and_image_but_not_another_workstations_record) {
    const QVector<qint32> records = insertDemoRecords(2);
    const QString image = home.writeFile("images/31901001.tif", "II*");
    CliRun run = cli({"discard", QString::number(records[0])});
    EXPECT_EQ(run.exitCode, 0) << run.err.toStdString();
    EXPECT_EQ(workflowOf(records[0]), "");
    EXPECT_FALSE(QFileInfo::exists(image));

    execSql("UPDATE zvbWerte SET Workflow_Status=30, Workflow_KorrID=2 WHERE LfdNr=?", {records[1]});
    CliRun refused = cli({"discard", QString::number(records[1])});
    EXPECT_EQ(refused.exitCode, 1);
    EXPECT_TRUE(refused.err.contains("Arbeitsplatz 2")) << refused.err.toStdString();
    EXPECT_EQ(workflowOf(records[1]), "30/2");

    CliRun missing = cli({"discard", "999"});
    EXPECT_EQ(missing.exitCode, 1);
    EXPECT_TRUE(missing.err.contains("999 gibt es nicht"));
    EXPECT_EQ(cli({"discard", "x"}).exitCode, 2);
}

} // namespace
