// The dated backup tree and the removal of old days.

#include "HomeTest.h"
#include "admin/mdlBackup.h"
#include "app/mdlDB.h"

#include <QDir>

namespace {

class Backup : public HomeTest {
protected:
    QString root() const { return home.path(QStringLiteral("backup/")); }

    // A day folder with one file in each kind folder.
    void makeDay(const QString& day) {
        for (const char* kind : {"importdata", "exportdata", "images", "stats"})
            home.writeFile(QStringLiteral("backup/%1/%2/datei.txt").arg(day, QLatin1String(kind)), "x");
    }
    bool has(const QString& relative) const { return QFileInfo::exists(root() + relative); }
};

TEST_F(Backup, switches_follow_the_settings) {
    EXPECT_TRUE(IsBackupEnabled());
    SetSysValue(QStringLiteral("Backup_Enabled"), QStringLiteral("0"));
    EXPECT_FALSE(IsBackupEnabled());
    SetSysValue(QStringLiteral("Backup_Enabled"), QVariant());
    EXPECT_FALSE(IsBackupEnabled());
    SetSysValue(QStringLiteral("Backup_Bilder"), QVariant());
    EXPECT_FALSE(IsBackupImages());
    SetSysValue(QStringLiteral("Backup_Bilder"), true);
    EXPECT_TRUE(IsBackupImages());
}

TEST_F(Backup, folder_names_follow_the_day_and_kind) {
    EXPECT_EQ(GetBackupDir(BackupKind::ImportData, false), QString()) << "not made without create";
    EXPECT_EQ(GetBackupDir(BackupKind::ImportData, true), root() + QStringLiteral("261115/importdata/"));
    EXPECT_TRUE(QFileInfo(root() + QStringLiteral("261115/importdata")).isDir());
    EXPECT_EQ(GetBackupDir(BackupKind::ImportData, false), root() + QStringLiteral("261115/importdata/"));
    EXPECT_EQ(GetBackupDir(BackupKind::Images, true, QDate(2027, 1, 2)), root() + QStringLiteral("270102/images/"));
    EXPECT_EQ(GetBackupDir(9, true), root() + QStringLiteral("261115/"));
    // A backup root without a trailing slash gets one.
    SetSysValue(QStringLiteral("Backup_Pfad"), home.path(QStringLiteral("andere")));
    EXPECT_EQ(GetBackupDir(BackupKind::Stats, true), home.path(QStringLiteral("andere/261115/stats/")));
}

TEST_F(Backup, unusable_root_gives_no_folder) {
    home.writeFile(QStringLiteral("datei"), "kein Ordner");
    SetSysValue(QStringLiteral("Backup_Pfad"), home.path(QStringLiteral("datei")));
    EXPECT_EQ(GetBackupDir(BackupKind::ImportData, true), QString());
    SetSysValue(QStringLiteral("Backup_Pfad"), QVariant());
    EXPECT_EQ(GetBackupDir(BackupKind::ImportData, true), QString());
}

TEST_F(Backup, time_stamp_is_time_then_day) {
    EXPECT_EQ(GetBackupTimestamp(QDateTime(QDate(2026, 11, 15), QTime(14, 30, 5))), QStringLiteral("143005_261115"));
    EXPECT_EQ(GetBackupTimestamp(), QStringLiteral("103000_261115"));
}

TEST_F(Backup, cleanup_empties_days_older_than_the_history_and_keeps_the_boundary) {
    SetSysValue(QStringLiteral("Backup_HistoryDays"), 7);
    makeDay(QStringLiteral("261107")); // 8 days before 15 November
    makeDay(QStringLiteral("261108")); // exactly 7 days
    makeDay(QStringLiteral("261115"));
    QDir().mkpath(root() + QStringLiteral("fremd/images"));
    BackupCleanup();
    for (const char* emptied : {"261107/images", "261107/importdata", "261107/exportdata"})
        EXPECT_FALSE(has(QLatin1String(emptied))) << emptied;
    EXPECT_TRUE(has(QStringLiteral("261107/stats/datei.txt"))) << "stats is never cleaned";
    EXPECT_TRUE(has(QStringLiteral("261108/images/datei.txt")));
    EXPECT_TRUE(has(QStringLiteral("261108/exportdata/datei.txt")));
    EXPECT_TRUE(has(QStringLiteral("261115/importdata/datei.txt")));
    EXPECT_TRUE(has(QStringLiteral("fremd/images"))) << "foreign folders are left alone";
    EXPECT_TRUE(messages.messages().isEmpty());
}

TEST_F(Backup, cleanup_across_the_century_rule_of_two_digit_years) {
    SetSysValue(QStringLiteral("Backup_HistoryDays"), 30);
    makeDay(QStringLiteral("991231")); // 1999
    makeDay(QStringLiteral("291231")); // 2029: in the future, kept
    BackupCleanup();
    EXPECT_FALSE(has(QStringLiteral("991231/images")));
    EXPECT_TRUE(has(QStringLiteral("291231/images/datei.txt")));
}

TEST_F(Backup, history_zero_or_null_keeps_everything) {
    makeDay(QStringLiteral("200101"));
    SetSysValue(QStringLiteral("Backup_HistoryDays"), 0);
    BackupCleanup();
    EXPECT_TRUE(has(QStringLiteral("200101/images/datei.txt")));
    SetSysValue(QStringLiteral("Backup_HistoryDays"), QVariant());
    BackupCleanup();
    EXPECT_TRUE(has(QStringLiteral("200101/importdata/datei.txt")));
}

} // namespace
