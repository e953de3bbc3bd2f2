// SPDX-License-Identifier: Apache-2.0
// veridon-cli export killed with SIGKILL at random instants while it hands over a few thousand
// records. A receiver takes every XML file away as soon as it appears, as the receiving side does,
// so a record handed over twice shows as a second file of the same name. After every kill: each
// record is handed over once or still waiting, no image is gone without its XML and its backup copy,
// exp.txt holds at most one line per record, the database is sound. After the recovery run that
// follows: every record handed over exactly once, one exp.txt line each, nothing stuck in 41.
// VERIDON_EXPORT_KILLS and VERIDON_EXPORT_RECORDS make the run larger.

#include "KillHarness.h"

#include <QDir>
#include <QElapsedTimer>
#include <QHash>
#include <gtest/gtest.h>

namespace {

class ExportCrash : public ::testing::Test {
protected:
    ExportCrash() {
        QDir().mkpath(home.path("empfang"));
        SetSysValue("Report_Other_Country", 0);
        SetSysValue("Report_Ambrix_Country", 0);
    }

    void addRecords(int count) { names << addAcceptedRecords(home, "k", int(names.size()), count, 1500); }

    // The receiver: takes every finished XML file out of the export folder. A file must be whole.
    void receive() {
        for (const QString& file : QDir(home.path("export")).entryList({"*.xml"}, QDir::Files)) {
            const QString base = file.chopped(4);
            EXPECT_TRUE(wellFormedXml(home.readFile("export/" + file))) << file.toStdString() << " handed over cut";
            if (++received[base] > 1)
                ++duplicates;
            QFile::remove(home.path("empfang/" + file));
            QFile::rename(home.path("export/" + file), home.path("empfang/" + file));
        }
    }

    QString backupDay() const {
        const QStringList days = QDir(home.path("backup")).entryList(QDir::Dirs | QDir::NoDotAndDotDot);
        return days.isEmpty() ? QString() : home.path("backup/" + days.first() + "/");
    }

    // Complete exp.txt lines per image name (a line a kill cut short is not counted).
    QHash<QString, int> expLines() const {
        QHash<QString, int> lines;
        QFile file(backupDay() + "exportdata/exp.txt");
        if (file.open(QIODevice::ReadOnly))
            for (const QByteArray& line : file.readAll().split('\n'))
                if (line.endsWith('\r'))
                    ++lines[QString::fromLatin1(line.left(line.indexOf(',')))];
        return lines;
    }

    // Checks every record; with finished, each must have left. Returns the records still waiting.
    int check(bool finished) {
        QHash<QString, int> states;
        QSqlQuery q = execSql("SELECT BMPName, Workflow_Status FROM zvbWerte");
        while (q.next())
            states.insert(q.value(0).toString(), q.value(1).toInt());
        q.finish();
        const QHash<QString, int> lines = expLines();
        const QString day = backupDay();
        int waiting = 0;
        inHandOver = 0;
        for (const QString& name : std::as_const(names)) {
            const QString base = name.chopped(4);
            const bool imageThere = QFileInfo::exists(home.path("images/" + name));
            const bool imageKept = QFileInfo::exists(day + "images/" + name);
            EXPECT_LE(lines.value(name), 1) << name.toStdString() << ": exp.txt line twice";
            if (states.contains(name)) {
                ++waiting;
                if (states[name] == 41)
                    ++inHandOver;
                EXPECT_TRUE(states[name] == 40 || states[name] == 41) << name.toStdString();
                if (!imageThere) {
                    EXPECT_TRUE(imageKept &&
                                (received.value(base) == 1 ||
                                 !QDir(home.path("export")).entryList({"." + base + ".xml.*"}, QDir::Hidden).isEmpty()))
                        << name.toStdString() << ": image removed before its XML and its copy";
                }
            } else {
                if (received.value(base) == 0)
                    ++lost;
                EXPECT_EQ(received.value(base), 1) << name.toStdString() << ": record gone, XML not handed over";
                EXPECT_TRUE(imageKept && !imageThere) << name.toStdString();
                EXPECT_TRUE(wellFormedXml(readAll(day + "exportdata/" + base + ".xml")))
                    << name.toStdString() << ": no XML backup copy";
                EXPECT_EQ(lines.value(name), 1) << name.toStdString() << ": no exp.txt line";
            }
        }
        EXPECT_EQ(KillHarness::integrityCheck(home.path("data.mdb")), "ok");
        if (finished) {
            stuck += waiting;
            EXPECT_EQ(waiting, 0) << "records left waiting after the recovery run";
            EXPECT_TRUE(QDir(home.path("export")).entryList(QDir::Files | QDir::Hidden).isEmpty());
        }
        return waiting;
    }

    static QByteArray readAll(const QString& path) {
        QFile f(path);
        return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
    }

    TempHome home;
    QStringList names;
    QHash<QString, int> received;
    int duplicates = 0;
    int lost = 0;
    int stuck = 0;
    int inHandOver = 0; // records the last check found in 41
};

TEST_F(ExportCrash, kill_9_at_random_instants_neither_doubles_nor_loses_a_record) {
    const int wantedKills = KillHarness::fromEnvironment("VERIDON_EXPORT_KILLS", 50);
    const int perRound = KillHarness::fromEnvironment("VERIDON_EXPORT_RECORDS", 1000);
    const QStringList exportArgs{"--home", home.dir(), "export"};

    // An undisturbed run first, to learn how long one takes here.
    addRecords(perRound);
    QElapsedTimer timer;
    timer.start();
    const CliRun first = runCli(exportArgs);
    ASSERT_EQ(first.exitCode, 0) << first.err.toStdString();
    KillHarness harness(int(timer.elapsed()));
    receive();
    check(true);

    int rounds = 0;
    int killsInHandOver = 0; // kills that caught records between the state change and their removal
    while (harness.kills() < wantedKills && rounds < wantedKills) {
        ++rounds;
        addRecords(perRound);
        // Up to four kills into the same records: each run takes up what the last one left.
        for (int attempt = 0; attempt < 4 && harness.kills() < wantedKills; ++attempt) {
            if (!harness.runAndKill(exportArgs))
                break;
            receive();
            const int waiting = check(false);
            if (inHandOver > 0)
                ++killsInHandOver;
            if (waiting == 0)
                break;
        }
        const CliRun recovery = runCli(exportArgs);
        EXPECT_EQ(recovery.exitCode, 0) << recovery.err.toStdString();
        receive();
        check(true);
        if (HasFailure())
            break;
    }
    std::printf("export killed %d times (%d of them with records in 41) in %d rounds over %lld records: %d duplicates, "
                "%d lost, %d stuck\n",
                harness.kills(), killsInHandOver, rounds, static_cast<long long>(names.size()), duplicates, lost,
                stuck);
    EXPECT_GE(harness.kills(), wantedKills);
    EXPECT_EQ(duplicates, 0);
    EXPECT_EQ(lost, 0);
    EXPECT_EQ(stuck, 0);
}

} // namespace
