// SPDX-License-Identifier: Apache-2.0
// The import file's way: separator, temporary file, backup copy, a stale temporary file, a file
// that cannot be moved, and what stays when the clean-up or the import itself fails.

#include "import/ImportFile.h"
#include "ImportFixture.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <fcntl.h>
#include <linux/fs.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

const QString layout5Line = "31901003.tif;15.11.2026;5;0;0;;;;;;;EHIC  FR;FR;Dupont;Marie;14/09/1990     290097512;"
                            "75 - CPAM Paris;80250000001234567890     30/09/2027";
const QString layout4Line = "31901001.tif;15.11.2026;4;0;0;EUROPÄISCHE KRANKENVERSICHERUNGSKARTE;AT;Huber;"
                            "Maria      03/07/1961;1236030761      1100 - OEGK;80040001234567890123     31/12/2029";

class ImportFile : public ImportTest {};

TEST_F(ImportFile, imports_every_line_commits_the_rows_and_deletes_the_file) {
    writeResult({layout4Line, layout5Line});
    RecordedProgress progress;
    EXPECT_EQ(import(), 2);
    EXPECT_EQ(rowCount(), 2);
    EXPECT_EQ(rowCount("Neuimport=false AND Workflow_Status=10"), 2);
    EXPECT_FALSE(exists("import/zvscan.txt"));
    EXPECT_FALSE(exists("import/zvscan.tmp"));
    EXPECT_TRUE(messages.messages().isEmpty()) << messages.prompts().join("|").toStdString();
    EXPECT_TRUE(progress.statuses.contains("Importiere Datensatz: 2"));
    EXPECT_FALSE(progress.statuses.contains("Bearbeite Datensatz: 1")) << "each line is mapped as it is read";
    EXPECT_GE(progress.finishedCount, 1);
}

TEST_F(ImportFile, backup_copy_keeps_the_file_under_its_name_and_time_stamp) {
    writeResult({layout4Line});
    const QByteArray original = home.readFile("import/zvscan.txt");
    ASSERT_EQ(import(), 1);
    // 15 November 2026, 10:30:00 on the test clock.
    EXPECT_EQ(home.readFile("backup/261115/importdata/zvscan.txt_103000_261115"), original);

    execSql("UPDATE zvbSys SET Backup_Enabled='0'");
    writeResult({layout5Line});
    clock.set(QDateTime(QDate(2026, 11, 16), QTime(8, 0, 0)));
    ASSERT_EQ(import(), 1);
    EXPECT_FALSE(exists("backup/261116"));
}

// Two result files of the same name in one second, then the first one put back (as a crash after
// the commit leaves it, or an operator who copies it back): both copies are kept, and the file
// already imported is recognised by its content and set aside instead of doubling its records.
TEST_F(ImportFile, an_imported_file_is_never_imported_twice_and_each_one_keeps_its_copy) {
    writeResult({layout4Line});
    const QByteArray first = home.readFile("import/zvscan.txt");
    ASSERT_EQ(import(), 1);
    writeResult({layout5Line});
    const QByteArray second = home.readFile("import/zvscan.txt");
    ASSERT_EQ(import(), 1);
    EXPECT_EQ(home.readFile("backup/261115/importdata/zvscan.txt_103000_261115"), first);
    EXPECT_EQ(home.readFile("backup/261115/importdata/zvscan.txt_103000_261115-2"), second);

    home.writeFile("import/zvscan.txt", first);
    EXPECT_EQ(import(), -1);
    EXPECT_EQ(rowCount(), 2);
    EXPECT_EQ(home.readFile("import/zvscan.tmp.261115-103000"), first);
    ASSERT_EQ(messages.messages().size(), 1);
    EXPECT_TRUE(messages.messages()[0].prompt.contains("bereits am 2026-11-15 10:30:00 importiert"))
        << messages.messages()[0].prompt.toStdString();
}

TEST_F(ImportFile, separator_defaults_to_comma_with_a_log_line) {
    setSeparator("");
    withoutOcrRules();
    writeResult({"31901001.tif,15.11.2026,4,2,-1,EUROPÄISCHE KRANKENVERSICHERUNGSKARTE;AT"});
    ASSERT_EQ(import(), 1);
    EXPECT_EQ(text(1, "SCANDAT"), "15.11.2026");
    EXPECT_EQ(cell(1, "BMOffsetY").toInt(), -1);
    EXPECT_TRUE(log().contains("ImportZVBWerte();TARNVEL.INI ohne Eintrag [Beleg] [Trenner], Default-Wert genutzt!;"
                               "15.11.2026 10:30:00\r\n"));
}

TEST_F(ImportFile, separator_of_several_characters_is_searched_as_a_whole) {
    setSeparator("|#|");
    withoutOcrRules();
    writeResult({"31901002.tif|#|15.11.2026|#|4|#|0|#|0|#|EUROPÄISCHE | KARTE|#|NL|#|de Vries # 2"});
    ASSERT_EQ(import(), 1);
    expectTexts(1, {"BMPName=31901002.tif", "T4_L1=EUROPÄISCHE | KARTE", "T4_L2=NL", "T4_L3=de Vries # 2"});
    EXPECT_FALSE(log().contains("TARNVEL.INI"));
}

TEST_F(ImportFile, stale_temporary_file_is_kept_aside_logged_and_the_new_file_imported) {
    home.writeFile("import/zvscan.tmp", encodeText("31900999.tif;14.11.2026;4\n"));
    writeResult({layout4Line});
    ASSERT_EQ(import(), 1);
    EXPECT_EQ(rowCount(), 1);
    EXPECT_EQ(text(1, "BMPName"), "31901001.tif");
    EXPECT_EQ(home.readFile("import/zvscan.tmp.261115-103000"), encodeText("31900999.tif;14.11.2026;4\n"));
    EXPECT_FALSE(exists("import/zvscan.tmp"));
    const QString expected = "Eine temp. Datei  '" + tempPath() + "' ist bereits vorhanden.\r\nDer Import der Datei '" +
                             importPath() + "' wird abgebrochen.;16;15.11.2026 10:30:00\r\n";
    EXPECT_TRUE(log().contains(expected)) << log().toStdString();
    EXPECT_TRUE(log().contains("aufbewahrt als '" + tempPath() + ".261115-103000'"));
    EXPECT_TRUE(messages.messages().isEmpty()) << "logged only, no message box";

    // A second stale file in the same second does not overwrite the first one kept aside.
    home.writeFile("import/zvscan.tmp", "alt");
    writeResult({layout5Line});
    ASSERT_EQ(import(), 1);
    EXPECT_EQ(home.readFile("import/zvscan.tmp.261115-103000-2"), "alt");
}

// Makes a file impossible to move: its folder read-only, and, for root (whom a read-only folder
// does not stop), the file marked immutable as a locked file would be.
class Unmovable {
public:
    explicit Unmovable(const QString& file) : file_(file), folder_(QFileInfo(file).absolutePath()) {
        ::chmod(QFile::encodeName(folder_).constData(), 0555);
        effective_ = ::geteuid() != 0 || (immutable_ = setImmutable(true));
    }
    ~Unmovable() {
        if (immutable_)
            setImmutable(false);
        ::chmod(QFile::encodeName(folder_).constData(), 0755);
    }
    bool effective() const { return effective_; }

private:
    // Sets or clears the file's immutable flag; false when the file system refuses.
    bool setImmutable(bool on) const {
        const int fd = ::open(QFile::encodeName(file_).constData(), O_RDONLY);
        int flags = 0;
        bool done = false;
        if (fd >= 0 && ::ioctl(fd, FS_IOC_GETFLAGS, &flags) == 0) {
            flags = on ? flags | FS_IMMUTABLE_FL : flags & ~FS_IMMUTABLE_FL;
            done = ::ioctl(fd, FS_IOC_SETFLAGS, &flags) == 0;
        }
        if (fd >= 0)
            ::close(fd);
        return done;
    }

    QString file_, folder_;
    bool effective_ = false;
    bool immutable_ = false;
};

TEST_F(ImportFile, file_that_cannot_be_moved_is_refused_and_nothing_written) {
    writeResult({layout4Line});
    const QByteArray original = home.readFile("import/zvscan.txt");
    {
        Unmovable lock(importPath());
        if (!lock.effective())
            GTEST_SKIP() << "this file system cannot lock a file against root";
        EXPECT_EQ(import(), -1);
    }
    ASSERT_EQ(messages.messages().size(), 1);
    EXPECT_EQ(messages.messages()[0].prompt,
              "Auf die Importdatei '" + importPath() +
                  "' konnte nicht zugegriffen werden, eventuell besteht ein Konflikt mit der ZV-Beleg Auswertung "
                  "oder einem anderen Arbeitsplatz.\r\nVersuchen Sie es später erneut.");
    EXPECT_EQ(messages.messages()[0].buttons, MsgBox::Critical);
    EXPECT_EQ(rowCount(), 0);
    EXPECT_EQ(home.readFile("import/zvscan.txt"), original);
    EXPECT_FALSE(exists("import/zvscan.tmp"));
    EXPECT_FALSE(exists("backup/261115/importdata"));
}

TEST_F(ImportFile, file_taken_by_another_workstation_is_refused) {
    // The scan saw the file, but another workstation moved it away first.
    EXPECT_EQ(import(), -1);
    EXPECT_TRUE(messages.saw("Auf die Importdatei '" + importPath() + "' konnte nicht zugegriffen werden"));
    EXPECT_EQ(rowCount(), 0);
    EXPECT_FALSE(exists("import/zvscan.tmp"));
}

TEST_F(ImportFile, failing_clean_up_deletes_only_the_new_rows_and_keeps_the_file) {
    execSql("INSERT INTO zvbWerte (BMPName, NACHNAME, Workflow_Status, Workflow_KorrID, Neuimport)"
            " VALUES ('31900001.tif', 'Gruber', 30, 1, false)");
    execSql("DROP TABLE sysStates"); // the clean-up cannot check a single state code
    writeResult({layout4Line, layout5Line});
    EXPECT_EQ(import(), -1);
    ASSERT_EQ(messages.messages().size(), 1);
    EXPECT_TRUE(messages.messages()[0].prompt.startsWith("Laufzeitfehler in Funktion 'ImportNachbearbeitung()'!"));
    EXPECT_TRUE(messages.messages()[0].prompt.contains("sysStates")) << messages.messages()[0].prompt.toStdString();
    EXPECT_EQ(rowCount(), 1);
    EXPECT_EQ(text(1, "NACHNAME"), "Gruber");
    EXPECT_EQ(cell(1, "Workflow_Status").toInt(), 30);
    EXPECT_EQ(home.readFile("import/zvscan.tmp"), encodeText(layout4Line + "\n" + layout5Line + "\n"));
    EXPECT_TRUE(exists("backup/261115/importdata/zvscan.txt_103000_261115"));
}

TEST_F(ImportFile, run_time_error_keeps_the_rows_read_so_far_for_the_next_import) {
    withoutOcrRules();
    writeResult({layout4Line, "31901002.tif;15.11.2026;4;1O;0;EUROPÄISCHE KRANKENVERSICHERUNGSKARTE;NL", layout5Line});
    EXPECT_EQ(import(), -1);
    ASSERT_EQ(messages.messages().size(), 1);
    EXPECT_TRUE(messages.messages()[0].prompt.startsWith("Laufzeitfehler in Funktion 'ImportZVBWerte()'!"));
    EXPECT_TRUE(messages.messages()[0].prompt.contains("Zeile 2")) << messages.messages()[0].prompt.toStdString();
    EXPECT_TRUE(messages.messages()[0].prompt.contains("BMOffsetX"));
    EXPECT_EQ(rowCount("Neuimport=true"), 1) << "the first line's row waits, uncleaned";
    EXPECT_TRUE(exists("import/zvscan.tmp"));

    // The next import keeps the broken file aside and commits the waiting row with its own.
    writeResult({layout5Line});
    EXPECT_EQ(import(), 1);
    EXPECT_EQ(rowCount("Neuimport=false AND Workflow_Status=10"), 2);
    EXPECT_EQ(text(1, "NACHNAME"), "Huber");
    EXPECT_TRUE(exists("import/zvscan.tmp.261115-103000"));
}

// A wrong digest would let an imported file in again or keep a new one out: the identity must be
// the standard SHA-256 at every length the padding treats apart and across the reading chunks.
TEST(ImportFileIdentity, is_the_size_and_the_standard_sha256_of_the_content) {
    QTemporaryDir folder;
    for (const qint64 size : {0, 1, 55, 56, 63, 64, 65, 119, 120, 128, (1 << 20) + 77}) {
        QByteArray content(size, Qt::Uninitialized);
        for (qint64 i = 0; i < size; ++i)
            content[i] = char((i * 2654435761U) >> 13);
        const QString path = folder.filePath(QString::number(size));
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write(content) == size);
        file.close();
        qint64 readSize = -1;
        QString sha256;
        ASSERT_TRUE(fileIdentity(path, readSize, sha256));
        EXPECT_EQ(readSize, size);
        EXPECT_EQ(sha256, QString::fromLatin1(QCryptographicHash::hash(content, QCryptographicHash::Sha256).toHex()))
            << size;
    }
}

} // namespace
