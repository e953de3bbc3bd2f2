// SPDX-License-Identifier: Apache-2.0
// veridon-cli import killed with SIGKILL at random instants, as a power cut or an operator's
// kill -9 would stop it. After every kill and after the recovery run that follows it: no line is
// imported twice or lost, the result file is still there as itself (under its name, as the
// temporary file or as its backup copy), and the database passes its integrity check.

#include "KillHarness.h"
#include "app/TextFile.h"

#include <QDir>
#include <QDirIterator>
#include <QElapsedTimer>
#include <QFile>
#include <gtest/gtest.h>

namespace {

constexpr int linesPerFile = 300;

// A result file of linesPerFile layout 5 cards; every image name carries the batch number.
QByteArray resultFile(int batch) {
    QStringList lines;
    for (int n = 0; n < linesPerFile; ++n)
        lines << QString("b%1_%2.tif;15.11.2026;5;0;0;;;;;;;EHIC  FR;FR;Dupont;Marie;14/09/1990     290097512;"
                         "75 - CPAM Paris;80250000001234567890     30/09/2027")
                     .arg(batch, 3, 10, QChar('0'))
                     .arg(n, 4, 10, QChar('0'));
    return encodeText(lines.join("\n") + "\n");
}

class ImportCrash : public ::testing::Test {
protected:
    ImportCrash() {
        home.writeFile("tarnvel.ini", encodeText("[Beleg]\nTrenner=;\n"));
        QDir().mkpath(home.path("import"));
    }

    int rowsOf(int batch) const {
        return CountRows("*", "zvbWerte", QString("BMPName LIKE 'b%1_*'").arg(batch, 3, 10, QChar('0')));
    }
    // Whether a file of the home (import folder and backup copies) holds exactly these bytes.
    bool presentAsItself(const QByteArray& bytes) const {
        QDirIterator files(home.dir(), QDir::Files, QDirIterator::Subdirectories);
        while (files.hasNext()) {
            QFile f(files.next());
            if (f.size() == bytes.size() && f.open(QIODevice::ReadOnly) && f.readAll() == bytes)
                return true;
        }
        return false;
    }

    TempHome home;
    const QString importFile = home.path("import/zvscan.txt");
    const QString tempFile = home.path("import/zvscan.tmp");
};

TEST_F(ImportCrash, kill_9_at_random_instants_neither_doubles_nor_loses_a_line) {
    const QStringList args{"--home", home.dir(), "import", importFile};
    // How long an undisturbed import of one file takes here, so the kills fall across all of it.
    home.writeFile("import/zvscan.txt", resultFile(0));
    QElapsedTimer timer;
    timer.start();
    ASSERT_EQ(runCli(args).exitCode, 0);
    KillHarness harness(int(timer.elapsed()));
    // The same file once more, as a run killed right after its commit leaves it: recognised, set aside.
    home.writeFile("import/zvscan.txt", resultFile(0));
    runCli(args);
    ASSERT_EQ(rowsOf(0), linesPerFile);

    int batch = 1;
    for (; harness.kills() < 32 && batch < 120; ++batch) {
        SCOPED_TRACE(batch);
        const QByteArray bytes = resultFile(batch);
        home.writeFile("import/zvscan.txt", bytes);
        if (harness.runAndKill(args)) {
            const int rows = rowsOf(batch);
            EXPECT_TRUE(rows == 0 || rows == linesPerFile) << rows << " rows: a file is committed whole or not at all";
            EXPECT_TRUE(presentAsItself(bytes)) << "the result file is gone";
            EXPECT_EQ(KillHarness::integrityCheck(home.path("data.mdb")), "ok");
            // Recovery: the operator puts a left temporary file back and imports again. A file that
            // was committed already is recognised and set aside; any other comes in once.
            if (QFile::exists(tempFile)) {
                ASSERT_TRUE(QFile::rename(tempFile, importFile));
            }
            if (QFile::exists(importFile))
                runCli(args);
        }
        EXPECT_EQ(rowsOf(batch), linesPerFile) << "every line is there exactly once";
        EXPECT_FALSE(QFile::exists(importFile) || QFile::exists(tempFile));
        EXPECT_TRUE(presentAsItself(bytes));
        EXPECT_EQ(KillHarness::integrityCheck(home.path("data.mdb")), "ok");
    }
    std::printf("import killed %d times\n", harness.kills());
    EXPECT_GE(harness.kills(), 30);
    EXPECT_EQ(CountRows("*", "zvbWerte", ""), batch * linesPerFile) << "no row of any file twice";
}

} // namespace
