// SPDX-License-Identifier: Apache-2.0
// The import file's way: separator, temporary file, backup copy, a stale temporary file, a file
// taken by another workstation, and what stays when the clean-up or the import itself fails.

#include "import/ImportFile.h"
#include "ImportFixture.h"

#include <QCryptographicHash>
#include <QFile>
#include <QTemporaryDir>

namespace {

const QString layout5Line = "31901003.tif;15.11.2026;5;0;0;;;;;;;EHIC  FR;FR;Dupont;Marie;14/09/1990     290097512;"
                            "75 - CPAM Paris;80250000001234567890     30/09/2027";
const QString layout4Line = "31901001.tif;15.11.2026;4;0;0;EUROPÄISCHE KRANKENVERSICHERUNGSKARTE;AT;Huber;"
                            "Maria      03/07/1961;1236030761      1100 - OEGK;80040001234567890123     31/12/2029";

class ImportFile : public ImportTest {};

// A file another workstation moved away first (or one that cannot be moved: the same refused
// rename) is refused and nothing is written. Every line is imported, the rows committed and the file deleted. Each file
// keeps its copy under its name and time stamp, also two of the same name in one second. A file put back after its
// import (as a crash after the commit leaves it, or an operator who copies it back) is recognised by its content and
// set aside instead of doubling its records. With the backup off no copy is kept.
TEST_F(ImportFile, each_file_keeps_its_backup_copy_and_an_imported_file_is_never_imported_twice) {
    EXPECT_EQ(import(), -1);
    ASSERT_EQ(messages.messages().size(), 1);
    EXPECT_EQ(messages.messages()[0].prompt,
              "Auf die Importdatei '" + importPath() +
                  "' konnte nicht zugegriffen werden, eventuell besteht ein Konflikt mit der ZV-Beleg Auswertung "
                  "oder einem anderen Arbeitsplatz.\r\nVersuchen Sie es später erneut.");
    EXPECT_EQ(messages.messages()[0].buttons, MsgBox::Critical);
    EXPECT_FALSE(exists("import/zvscan.tmp"));
    messages.clear();

    writeResult({layout4Line});
    const QByteArray first = home.readFile("import/zvscan.txt");
    {
        RecordedProgress progress;
        ASSERT_EQ(import(), 1);
        EXPECT_TRUE(progress.statuses.contains("Importiere Datensatz: 1"));
        EXPECT_FALSE(progress.statuses.contains("Bearbeite Datensatz: 1")) << "each line is mapped as it is read";
        EXPECT_GE(progress.finishedCount, 1);
    }
    EXPECT_EQ(rowCount("Neuimport=false AND Workflow_Status=10"), 1);
    EXPECT_FALSE(exists("import/zvscan.txt"));
    EXPECT_FALSE(exists("import/zvscan.tmp"));
    EXPECT_TRUE(messages.messages().isEmpty()) << messages.prompts().join("|").toStdString();
    writeResult({layout5Line});
    const QByteArray second = home.readFile("import/zvscan.txt");
    ASSERT_EQ(import(), 1);
    // 15 November 2026, 10:30:00 on the test clock.
    EXPECT_EQ(home.readFile("backup/261115/importdata/zvscan.txt_103000_261115"), first);
    EXPECT_EQ(home.readFile("backup/261115/importdata/zvscan.txt_103000_261115-2"), second);

    home.writeFile("import/zvscan.txt", first);
    EXPECT_EQ(import(), -1);
    EXPECT_EQ(rowCount(), 2);
    EXPECT_EQ(home.readFile("import/zvscan.tmp.261115-103000"), first);
    ASSERT_EQ(messages.messages().size(), 1);
    EXPECT_TRUE(messages.messages()[0].prompt.contains("bereits am 2026-11-15 10:30:00 importiert"))
        << messages.messages()[0].prompt.toStdString();

    execSql("UPDATE zvbSys SET Backup_Enabled='0'");
    writeResult({layout4Line + ";x"});
    clock.set(QDateTime(QDate(2026, 11, 16), QTime(8, 0, 0)));
    ASSERT_EQ(import(), 1);
    EXPECT_FALSE(exists("backup/261116"));
}

// A run-time error keeps the rows read so far and the temporary file; the next import keeps that file
// aside as a stale one (logged only, no message box; a second one in the same second does not
// overwrite the first) and commits the waiting row with its own.
TEST_F(ImportFile, run_time_error_keeps_the_rows_read_so_far_for_the_next_import) {
    withoutOcrRules();
    writeResult({layout4Line, "31901002.tif;15.11.2026;4;1O;0;EUROPÄISCHE KRANKENVERSICHERUNGSKARTE;NL", layout5Line});
    EXPECT_EQ(import(), -1);
    ASSERT_EQ(messages.messages().size(), 1);
    EXPECT_TRUE(messages.messages()[0].prompt.startsWith("Laufzeitfehler in Funktion 'ImportZVBWerte()'!"));
    EXPECT_TRUE(messages.messages()[0].prompt.contains("Zeile 2")) << messages.messages()[0].prompt.toStdString();
    EXPECT_TRUE(messages.messages()[0].prompt.contains("BMOffsetX"));
    EXPECT_EQ(rowCount("Neuimport=true"), 1) << "the first line's row waits, uncleaned";
    const QByteArray broken = home.readFile("import/zvscan.tmp");
    ASSERT_FALSE(broken.isEmpty());
    messages.clear();

    writeResult({layout5Line});
    EXPECT_EQ(import(), 1);
    EXPECT_EQ(rowCount("Neuimport=false AND Workflow_Status=10"), 2);
    EXPECT_EQ(text(1, "NACHNAME"), "Huber");
    EXPECT_EQ(home.readFile("import/zvscan.tmp.261115-103000"), broken);
    EXPECT_FALSE(exists("import/zvscan.tmp"));
    const QString expected = "Eine temp. Datei  '" + tempPath() + "' ist bereits vorhanden.\r\nDer Import der Datei '" +
                             importPath() + "' wird abgebrochen.;16;15.11.2026 10:30:00\r\n";
    EXPECT_TRUE(log().contains(expected)) << log().toStdString();
    EXPECT_TRUE(log().contains("aufbewahrt als '" + tempPath() + ".261115-103000'"));
    EXPECT_TRUE(messages.messages().isEmpty()) << "logged only, no message box";

    home.writeFile("import/zvscan.tmp", "alt");
    writeResult({layout4Line});
    ASSERT_EQ(import(), 1);
    EXPECT_EQ(home.readFile("import/zvscan.tmp.261115-103000-2"), "alt");
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
