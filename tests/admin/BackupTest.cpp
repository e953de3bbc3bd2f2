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

TEST_F(Backup, switches_follow_the_settings) {
    EXPECT_TRUE(IsBackupEnabled());
    SetSysValue("Backup_Enabled", QVariant());
    EXPECT_FALSE(IsBackupEnabled());
    SetSysValue("Backup_Bilder", QVariant());
    EXPECT_FALSE(IsBackupImages());
    SetSysValue("Backup_Bilder", true);
    EXPECT_TRUE(IsBackupImages());
}

TEST_F(Backup, folder_names_follow_the_day_and_kind) {
    EXPECT_EQ(GetBackupDir(BackupKind::ImportData, false), QString()) << "not made without create";
    EXPECT_EQ(GetBackupDir(BackupKind::ImportData, true), root() + "261115/importdata/");
    EXPECT_TRUE(QFileInfo(root() + "261115/importdata").isDir());
    EXPECT_EQ(GetBackupDir(BackupKind::ImportData, false), root() + "261115/importdata/");
    EXPECT_EQ(GetBackupDir(BackupKind::Images, true, QDate(2027, 1, 2)), root() + "270102/images/");
    EXPECT_EQ(GetBackupDir(9, true), root() + "261115/");
    // A backup root without a trailing slash gets one.
    SetSysValue("Backup_Pfad", home.path("andere"));
    EXPECT_EQ(GetBackupDir(BackupKind::Stats, true), home.path("andere/261115/stats/"));
}

TEST_F(Backup, unusable_root_gives_no_folder) {
    home.writeFile("datei", "kein Ordner");
    SetSysValue("Backup_Pfad", home.path("datei"));
    EXPECT_EQ(GetBackupDir(BackupKind::ImportData, true), QString());
    SetSysValue("Backup_Pfad", QVariant());
    EXPECT_EQ(GetBackupDir(BackupKind::ImportData, true), QString());
}

TEST_F(Backup, time_stamp_is_time_then_day) {
    EXPECT_EQ(GetBackupTimestamp(QDateTime(QDate(2026, 11, 15), QTime(14, 30, 5))), "143005_261115");
}

TEST_F(Backup, cleanup_empties_days_older_than_the_history_and_keeps_the_boundary) {
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
}

TEST_F(Backup, cleanup_across_the_century_rule_of_two_digit_years) {
    SetSysValue("Backup_HistoryDays", 30);
    makeDay("991231"); // 1999
    makeDay("291231"); // 2029: in the future, kept
    BackupCleanup();
    EXPECT_FALSE(has("991231/images"));
    EXPECT_TRUE(has("291231/images/datei.txt"));
}

TEST_F(Backup, history_zero_or_null_keeps_everything) {
    makeDay("200101");
    SetSysValue("Backup_HistoryDays", 0);
    BackupCleanup();
    EXPECT_TRUE(has("200101/images/datei.txt"));
    SetSysValue("Backup_HistoryDays", QVariant());
    BackupCleanup();
    EXPECT_TRUE(has("200101/importdata/datei.txt"));
}

} // namespace
