// SPDX-License-Identifier: Apache-2.0
// The dated backup tree: <Backup_Pfad>/<yymmdd>/<kind>/ for imported result files, exported files
// and images that leave the working area, and the removal of old days at start-up.
#pragma once

#include <QDate>
#include <QDateTime>
#include <QString>

// Kinds of backup folders under one day.
namespace BackupKind {
inline constexpr int ImportData = 1; // "importdata/"
inline constexpr int ExportData = 2; // "exportdata/"
inline constexpr int Images = 3;     // "images/"
inline constexpr int Stats = 4;      // "stats/": reserved, never cleaned
} // namespace BackupKind

// Backup_Enabled is "1".
bool IsBackupEnabled();
// Backup_Bilder as a flag (false when null).
bool IsBackupImages();

// The folder of kind for date (today when invalid), ending in "/"; kinds outside 1..4 give the day
// folder. With create, missing folders are made. Empty when the folder does not exist (or could
// not be made).
QString GetBackupDir(int kind, bool create, const QDate& date = QDate());

// "hhnnss_yymmdd" of moment (now when invalid), e.g. "143005_261115".
QString GetBackupTimestamp(const QDateTime& moment = QDateTime());

// Empties the image, import and export folders of every day older than Backup_HistoryDays
// (0 keeps everything). Day folders and their stats folder stay. Folders whose names are not
// dates are skipped. Failures are reported as "BackupCleanup()".
void BackupCleanup();
