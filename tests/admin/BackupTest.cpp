// SPDX-License-Identifier: Apache-2.0
// The dated backup tree and the removal of old days.

#include "HomeTest.h"
#include "app/mdlBackup.h"
#include "app/mdlDB.h"

#include <QDir>

namespace {

class Backup : public HomeTest {
protected:
    QString root() const { return home.path("backup/"); }

    // A day folder with one file in each kind folder.
    void makeDay(const QString& day) {
        for (const char* kind : {"importdata", "exportdata", "images", "stats"})
            home.writeFile(QString("backup/%1/%2/datei.txt").arg(day, QLatin1String(kind)), "x");
    }
    bool has(const QString& relative) const { return QFileInfo::exists(root() + relative); }
};

// Folder names: the day, then the kind.
TEST_F(Backup, folder_names_follow_the_day_and_kind_and_cleanup_keeps_the_boundary_day) {
    EXPECT_EQ(GetBackupDir(BackupKind::ImportData, false), QString()) << "not made without create";
    EXPECT_EQ(GetBackupDir(BackupKind::ImportData, true), root() + "261115/importdata/");
    EXPECT_EQ(GetBackupDir(BackupKind::ImportData, false), root() + "261115/importdata/");
    EXPECT_EQ(GetBackupDir(BackupKind::Images, true, QDate(2027, 1, 2)), root() + "270102/images/");
    EXPECT_EQ(GetBackupDir(9, true), root() + "261115/");
    // A backup root without a trailing slash gets one.
    SetSysValue("Backup_Pfad", home.path("andere"));
    EXPECT_EQ(GetBackupDir(BackupKind::Stats, true), home.path("andere/261115/stats/"));
    // A root that is a file, or none at all, gives no folder.
    home.writeFile("datei", "kein Ordner");
    for (const QVariant& root : {QVariant(home.path("datei")), QVariant()}) {
        SetSysValue("Backup_Pfad", root);
        EXPECT_EQ(GetBackupDir(BackupKind::ImportData, true), QString());
    }

    // The clean-up empties days older than the history and keeps the boundary day.
    SetSysValue("Backup_Pfad", root());
    SetSysValue("Backup_HistoryDays", 7);
    makeDay("261107"); // 8 days before 15 November
    makeDay("261108"); // exactly 7 days
    makeDay("261115");
    QDir().mkpath(root() + "fremd/images");
    BackupCleanup();
    for (const char* emptied : {"261107/images", "261107/importdata", "261107/exportdata"})
        EXPECT_FALSE(has(QLatin1String(emptied))) << emptied;
    // Stats are never cleaned, foreign folders are left alone.
    for (const char* kept : {"261107/stats/datei.txt", "261108/images/datei.txt", "261108/exportdata/datei.txt",
                             "261115/importdata/datei.txt", "fremd/images"})
        EXPECT_TRUE(has(QLatin1String(kept))) << kept;
    EXPECT_TRUE(messages.messages().isEmpty());

    // Two-digit years: 99 is 1999, 29 is 2029 and in the future.
    SetSysValue("Backup_HistoryDays", 30);
    makeDay("991231");
    makeDay("291231");
    BackupCleanup();
    EXPECT_FALSE(has("991231/images"));
    EXPECT_TRUE(has("291231/images/datei.txt"));

    // A history of 0 or none keeps everything.
    for (const QVariant& history : {QVariant(0), QVariant()}) {
        makeDay("200101");
        SetSysValue("Backup_HistoryDays", history);
        BackupCleanup();
        EXPECT_TRUE(has("200101/images/datei.txt")) << history.toString().toStdString();
    }
}

} // namespace
