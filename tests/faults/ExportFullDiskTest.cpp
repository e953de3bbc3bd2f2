// SPDX-License-Identifier: Apache-2.0
// veridon-cli export onto a disk that fills up: a small tmpfs as the export folder (mounting needs
// root; elsewhere the test is skipped with a message). The command must say so and exit 1; the
// records it could not hand over keep their state and images, and no empty or cut XML file is left
// under a real name; what it did hand over is whole.

#include "KillHarness.h"

#include <QDir>
#include <cstring>
#include <gtest/gtest.h>
#include <sys/mount.h>
#include <unistd.h>

namespace {

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
