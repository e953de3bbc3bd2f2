// SPDX-License-Identifier: Apache-2.0
#include "mdlBackup.h"

#include "Settings.h"
#include "app/Clock.h"
#include "app/Home.h"
#include "app/mdlDB.h"
#include "app/mdlMessages.h"

#include <QDir>
#include <QFileInfo>
#include <QVector>

namespace {

QString dayFolderName(const QDate& date) {
    return date.toString(QStringLiteral("yyMMdd"));
}

// A day folder's name as a date: two-digit year (00-29 is 2000-2029, 30-99 is 1930-1999), month,
// day. Invalid for a name that is not such a date.
QDate dateOfFolder(const QString& name) {
    if (name.size() != 6)
        return QDate();
    for (const QChar c : name)
        if (!c.isDigit())
            return QDate();
    const int yy = name.left(2).toInt();
    const int year = yy <= 29 ? 2000 + yy : 1900 + yy;
    return QDate(year, name.mid(2, 2).toInt(), name.right(2).toInt());
}

QString kindFolder(int kind) {
    switch (kind) {
    case BackupKind::ImportData:
        return QStringLiteral("importdata/");
    case BackupKind::ExportData:
        return QStringLiteral("exportdata/");
    case BackupKind::Images:
        return QStringLiteral("images/");
    case BackupKind::Stats:
        return QStringLiteral("stats/");
    default:
        return QString();
    }
}

} // namespace

bool IsBackupEnabled() {
    return setting<Setting::Backup_Enabled>().trimmed() == QLatin1String("1");
}

bool IsBackupImages() {
    return setting<Setting::Backup_Bilder>();
}

QString GetBackupDir(int kind, bool create, const QDate& date) {
    const QDate day = date.isValid() ? date : appClock().today();
    const QString root = withTrailingSlash(setting<Setting::Backup_Pfad>());
    if (root.isEmpty())
        return QString();
    const QString path = root + dayFolderName(day) + QLatin1Char('/') + kindFolder(kind);
    if (create)
        return QDir().mkpath(path) ? path : QString();
    return QFileInfo(path).isDir() ? path : QString();
}

QString GetBackupTimestamp(const QDateTime& moment) {
    const QDateTime at = moment.isValid() ? moment : appClock().now();
    return at.toString(QStringLiteral("HHmmss")) + QLatin1Char('_') + dayFolderName(at.date());
}

void BackupCleanup() {
    RunReported(QStringLiteral("BackupCleanup"), [] {
        const int history = setting<Setting::Backup_HistoryDays>();
        if (history == 0)
            return;
        const QString root = withTrailingSlash(setting<Setting::Backup_Pfad>());
        if (root.isEmpty())
            return;
        const QDate today = appClock().today();
        QVector<QDate> expired;
        const QStringList days = QDir(root).entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name);
        for (const QString& name : days) {
            const QDate date = dateOfFolder(name);
            if (date.isValid() && date.daysTo(today) > history)
                expired.push_back(date);
        }
        for (const QDate& date : std::as_const(expired)) {
            for (const int kind : {BackupKind::Images, BackupKind::ImportData, BackupKind::ExportData}) {
                const QString folder = GetBackupDir(kind, false, date);
                if (folder.isEmpty())
                    continue;
                QDir dir(folder);
                const QStringList files = dir.entryList(QDir::Files | QDir::Hidden | QDir::System);
                for (const QString& file : files)
                    dir.remove(file);
                QDir().rmdir(folder);
            }
        }
    });
}
