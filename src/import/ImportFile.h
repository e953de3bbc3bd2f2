// SPDX-License-Identifier: Apache-2.0
// The import file's way through the file system: the temporary name it is moved to while it is
// imported, the move itself (atomic, never over an existing file) and the name under which a stale
// temporary file of an earlier run is kept.
#pragma once

#include <QDateTime>
#include <QString>

// The folder part of path: everything before its last "/" ("" when there is none).
QString directoryOf(const QString& path);

// The file name of path without its extension: the part after the last "/", cut before its last
// "."; a name without "." is kept whole.
QString fileNameWithoutExtension(const QString& path);

// The temporary file the import works on: in the import file's folder, named after the import
// file without its extension plus ".tmp" (".../import/zvscan.txt" -> ".../import/zvscan.tmp").
QString importTempName(const QString& path);

// Where a stale temporary file is kept: "<temp>.<yymmdd-hhnnss>" of now, with "-2", "-3", ...
// appended while such a file exists already.
QString staleTempAsideName(const QString& temp, const QDateTime& now);

// Renames source to target in one step and flushes the folder to disk. Never replaces: fails when
// target exists. Returns false when the file could not be moved (missing, in a read-only folder,
// locked against changes); errno tells why.
bool moveFileNoReplace(const QString& source, const QString& target);

// A name for a copy of source in folder that no file has yet: "<folder><stem>", then "<stem>-2",
// "<stem>-3", ... (folder ends with "/"). Two imports of the same file name in one second keep both
// copies.
QString unusedFileName(const QString& folder, const QString& stem);

// Copies source to target through a temporary file that is written, flushed, synced and renamed,
// so target either holds the whole source or does not exist. Returns false (and leaves no target)
// when a step failed; problem then says which and why.
bool copyFileChecked(const QString& source, const QString& target, QString& problem);

// The identity of an import file: its size and the SHA-256 of its content (hex). False when the
// file cannot be read.
bool fileIdentity(const QString& path, qint64& size, QString& sha256);
