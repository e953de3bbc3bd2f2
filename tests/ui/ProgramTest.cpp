// SPDX-License-Identifier: Apache-2.0
// The veridon program as a whole, started as the operator starts it: one copy per home.

#include "../workflow/DemoRecords.h"
#include "CliRun.h"
#include "HomeTest.h"
#include "ui/SingleInstance.h"

#include <QProcess>
#include <QTest>

namespace {

class Program : public HomeTest {
protected:
    static void start(QProcess& process, const QString& homeDir) {
        process.setProcessChannelMode(QProcess::MergedChannels);
        process.start(QStringLiteral(VERIDON_PROGRAM), {"--home", homeDir});
        ASSERT_TRUE(process.waitForStarted());
    }
};

// A second start on the same home ends at once and the first runs on. While the windows hold a home, the command line's
// workflow commands refuse: the record on screen is never taken from under the operator. Reading commands still run,
// and once the program has ended (even killed) the commands work again. Another home is another workstation: its
// program starts beside.
TEST_F(Program, one_copy_per_home_and_the_command_lines_workflow_commands_wait_for_it) {
    const QVector<qint32> records = insertDemoRecords(2);
    QProcess program;
    start(program, home.dir());
    ASSERT_TRUE(SingleInstance(home.dir()).activateRunning(20000)) << program.readAll().toStdString();
    QProcess second;
    start(second, home.dir());
    EXPECT_TRUE(second.waitForFinished(10000));
    EXPECT_EQ(second.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(second.exitCode(), 0);
    EXPECT_EQ(program.state(), QProcess::Running);

    // The window listens before it takes its first record.
    ASSERT_TRUE(QTest::qWaitFor([&] { return workflowOf(records[0]) == "30/1"; }, 20000));
    ASSERT_EQ(runCli({"--home", home.dir(), "sql", "SELECT Workflow_Status FROM zvbWerte"}).exitCode, 0);
    for (const QStringList& command : {QStringList{"next"}, {"discard", QString::number(records[0])}, {"export"}}) {
        const CliRun refused = runCli(QStringList{"--home", home.dir(), "--yes"} + command);
        EXPECT_EQ(refused.exitCode, 1) << command.join(' ').toStdString();
        EXPECT_TRUE(refused.err.contains("belegt")) << refused.err.toStdString();
    }
    EXPECT_EQ(workflowOf(records[0]), "30/1");
    EXPECT_EQ(workflowOf(records[1]), "10/0");

    program.kill(); // even a program that dies leaves no lock behind
    program.waitForFinished(5000);
    EXPECT_EQ(runCli({"--home", home.dir(), "next"}).exitCode, 0);

    TempHome other; // another workstation
    QProcess beside;
    start(beside, other.dir());
    EXPECT_TRUE(SingleInstance(other.dir()).activateRunning(20000));
    EXPECT_EQ(beside.state(), QProcess::Running);
    beside.kill();
    beside.waitForFinished(5000);
}

} // namespace
