// SPDX-License-Identifier: Apache-2.0
// The veridon program as a whole, started as the operator starts it: one copy per home.

#include "HomeTest.h"
#include "ui/SingleInstance.h"

#include <QElapsedTimer>
#include <QLocalSocket>
#include <QProcess>
#include <QThread>

namespace {

class Program : public HomeTest {
protected:
    void start(QProcess& process, const QString& homeDir) {
        process.setProcessChannelMode(QProcess::MergedChannels);
        process.start(QStringLiteral(VERIDON_PROGRAM), {"--home", homeDir});
        ASSERT_TRUE(process.waitForStarted());
    }
    // True once a copy listens for later starts on homeDir.
    static bool listening(const QString& homeDir, int timeoutMs) {
        QElapsedTimer timer;
        timer.start();
        while (timer.elapsed() < timeoutMs) {
            QLocalSocket probe;
            probe.connectToServer(SingleInstance::serverName(homeDir));
            if (probe.waitForConnected(200))
                return true;
            QThread::msleep(100);
        }
        return false;
    }
};

TEST_F(Program, a_second_start_on_the_same_home_ends_at_once_and_the_first_runs_on) {
    QProcess first;
    start(first, home.dir());
    ASSERT_TRUE(listening(home.dir(), 20000)) << first.readAll().toStdString();

    QProcess second;
    start(second, home.dir());
    EXPECT_TRUE(second.waitForFinished(10000));
    EXPECT_EQ(second.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(second.exitCode(), 0);
    EXPECT_EQ(first.state(), QProcess::Running);

    // Another home is another workstation: it starts beside the first.
    TempHome other;
    QProcess third;
    start(third, other.dir());
    EXPECT_TRUE(listening(other.dir(), 20000));
    EXPECT_EQ(third.state(), QProcess::Running);

    for (QProcess* p : {&first, &third}) {
        p->terminate();
        if (!p->waitForFinished(5000)) {
            p->kill();
            p->waitForFinished(5000);
        }
    }
}

} // namespace
