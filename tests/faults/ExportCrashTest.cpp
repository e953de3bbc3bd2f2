// SPDX-License-Identifier: Apache-2.0
// veridon-cli export under faults. Killed with SIGKILL at random instants while it hands over rounds of
// records: a receiver takes every XML file away as soon as it appears, as the receiving side does, so
// a record handed over twice shows as a second file of the same name. After every kill: each record
// is handed over once or still waiting, no image is gone without its XML and its backup copy,
// exp.txt holds at most one line per record, the database is sound. After the recovery run that
// follows: every record handed over exactly once, one exp.txt line each, nothing stuck in 41, no
// file left behind.
// Onto a disk that fills up (a small tmpfs as the export folder; mounting needs root, elsewhere the
// test is skipped with a message): the command must say so and exit 1; the records it could not
// hand over keep their state and images, and no empty or cut XML file is left under a real name;
// what it did hand over is whole.

#include "KillHarness.h"

#include <QDir>
#include <QElapsedTimer>
#include <QHash>
#include <cstring>
#include <gtest/gtest.h>
#include <sys/mount.h>
#include <unistd.h>

namespace {

class ExportCrash : public ::testing::Test {
protected:
    ExportCrash() {
        QDir().mkpath(home.path("empfang"));
        SetSysValue("Report_Other_Country", 0);
        SetSysValue("Report_Ambrix_Country", 0);
    }

    // The receiver: takes every finished XML file out of the export folder. A file must be whole and
    // come once.
    void receive() {
        for (const QString& file : QDir(home.path("export")).entryList({"*.xml"}, QDir::Files)) {
            EXPECT_TRUE(wellFormedXml(home.readFile("export/" + file))) << file.toStdString() << " handed over cut";
            EXPECT_EQ(++received[file.chopped(4)], 1) << file.toStdString() << " handed over twice";
            QFile::remove(home.path("empfang/" + file));
            QFile::rename(home.path("export/" + file), home.path("empfang/" + file));
        }
    }

    // Checks the current round's records after a kill or, with finished, after the recovery run.
    void check(bool finished) {
        QHash<QString, int> states;
        QSqlQuery q = execSql("SELECT BMPName, Workflow_Status FROM zvbWerte");
        while (q.next())
            states.insert(q.value(0).toString(), q.value(1).toInt());
        q.finish();
        const QString day =
            "backup/" + QDir(home.path("backup")).entryList(QDir::Dirs | QDir::NoDotAndDotDot).value(0) + "/";
        // Complete exp.txt lines of every round per image name (a line a kill cut short is not counted).
        QHash<QString, int> lines;
        for (const QByteArray& line : home.readFile(day + "exportdata/exp.txt").split('\n'))
            if (line.endsWith('\r')) {
                EXPECT_EQ(++lines[QString::fromLatin1(line.left(line.indexOf(',')))], 1) << "exp.txt line twice";
            }
        for (const QString& name : std::as_const(names)) {
            const QString base = name.chopped(4);
            const bool imageThere = QFileInfo::exists(home.path("images/" + name));
            const bool imageKept = QFileInfo::exists(home.path(day + "images/" + name));
            if (states.contains(name)) {
                EXPECT_FALSE(finished) << name.toStdString() << ": left waiting after the recovery run";
                EXPECT_TRUE(states[name] == 40 || states[name] == 41) << name.toStdString();
                const bool xmlSafe =
                    received.value(base) == 1 ||
                    !QDir(home.path("export")).entryList({"." + base + ".xml.*"}, QDir::Hidden).isEmpty();
                EXPECT_TRUE(imageThere || (imageKept && xmlSafe))
                    << name.toStdString() << ": image removed before its XML and its copy";
            } else {
                EXPECT_EQ(received.value(base), 1) << name.toStdString() << ": record gone, XML not handed over";
                EXPECT_TRUE(imageKept && !imageThere) << name.toStdString();
                EXPECT_TRUE(wellFormedXml(home.readFile(day + "exportdata/" + base + ".xml")))
                    << name.toStdString() << ": no XML backup copy";
                EXPECT_EQ(lines.value(name), 1) << name.toStdString() << ": no exp.txt line";
            }
        }
        EXPECT_EQ(KillHarness::integrityCheck(home.path("data.mdb")), "ok");
        if (finished) {
            EXPECT_EQ(QDir(home.path("export")).entryList(QDir::Files | QDir::Hidden), QStringList());
        }
    }

    TempHome home;
    QStringList names; // the current round's image names
    QHash<QString, int> received;
};

TEST_F(ExportCrash, kill_9_at_random_instants_neither_doubles_nor_loses_a_record) {
    constexpr int wantedKills = 30;
    constexpr int perRound = 400;
    const QStringList exportArgs{"--home", home.dir(), "export"};
    int serial = 0;
    const auto addRound = [&] {
        names = addAcceptedRecords(home, "k", serial, perRound, 1500);
        serial += perRound;
    };

    // An undisturbed run first, to learn how long one takes here.
    addRound();
    QElapsedTimer timer;
    timer.start();
    const CliRun first = runCli(exportArgs);
    ASSERT_EQ(first.exitCode, 0) << first.err.toStdString();
    KillHarness harness(int(timer.elapsed()));
    receive();
    check(true);

    for (int round = 0; harness.kills() < wantedKills && round < wantedKills && !HasFailure(); ++round) {
        addRound();
        // Up to four kills into the same records: each run takes up what the last one left.
        for (int attempt = 0; attempt < 4 && harness.kills() < wantedKills; ++attempt) {
            if (!harness.runAndKill(exportArgs))
                break;
            receive();
            check(false);
            if (CountRows("*", "zvbWerte", QString()) == 0)
                break;
        }
        const CliRun recovery = runCli(exportArgs);
        EXPECT_EQ(recovery.exitCode, 0) << recovery.err.toStdString();
        receive();
        check(true);
    }
    std::printf("export killed %d times over %d records\n", harness.kills(), serial);
    EXPECT_GE(harness.kills(), wantedKills);
}

class ExportFullDisk : public ::testing::Test {
protected:
    void SetUp() override {
        if (::geteuid() != 0)
            GTEST_SKIP() << "a full disk is simulated with a tmpfs, which only root can mount";
        QDir().mkpath(home.path("voll"));
        // 1 MiB holds 256 small files: the first group of records fits, the rest does not.
        if (::mount("tmpfs", QFile::encodeName(home.path("voll")).constData(), "tmpfs", 0, "size=1m") != 0)
            GTEST_SKIP() << "cannot mount a tmpfs here: " << std::strerror(errno);
        mounted = true;
    }
    void TearDown() override {
        if (mounted)
            ::umount2(QFile::encodeName(home.path("voll")).constData(), MNT_DETACH);
    }

    TempHome home;
    bool mounted = false;
};

TEST_F(ExportFullDisk, export_stops_with_a_message_and_keeps_what_it_could_not_hand_over) {
    SetSysValue("Export_Pfad", home.path("voll"));
    SetSysValue("Report_Other_Country", 0);
    SetSysValue("Report_Ambrix_Country", 0);
    constexpr int count = 600;
    addAcceptedRecords(home, "v", 0, count, 5);

    const CliRun run = runCli({"--home", home.dir(), "export"});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_TRUE(run.err.contains("Auf dem Datenträger ist kein Platz mehr.")) << run.err.toStdString();
    const int waiting = CountRows("*", "zvbWerte", "Workflow_Status=40");
    EXPECT_GT(waiting, 0);
    EXPECT_LT(waiting, count) << "the records that fitted are handed over";
    EXPECT_EQ(CountRows("*", "zvbWerte", ""), waiting) << "none half-way";
    const QStringList files = QDir(home.path("voll")).entryList(QDir::Files | QDir::Hidden);
    EXPECT_EQ(files.size(), count - waiting) << "one file per record handed over, no leftovers";
    for (const QString& file : files) {
        EXPECT_TRUE(wellFormedXml(home.readFile("voll/" + file))) << file.toStdString();
        EXPECT_EQ(CountRows("*", "zvbWerte", "BMPName=" + sqlQuote(file.chopped(4) + ".tif")), 0);
    }
    QSqlQuery rows = execSql("SELECT BMPName FROM zvbWerte");
    while (rows.next())
        EXPECT_TRUE(QFileInfo::exists(home.path("images/" + rows.value(0).toString())));
}

} // namespace
