// File writing for the export pass. The pass writes several small files per record (the XML file,
// its backup copy, the image copy, a line of exp.txt); syncing each of them to disk on its own would
// cost more than everything else together. So files are written plainly and made durable in one go
// (flushWrittenFiles) before the database commit that removes their records: after a power cut a
// record is either still there to be exported again, or its files are on disk.
#pragma once

#include <QByteArray>
#include <QString>

// Writes bytes to path, replacing a file of that name. Throws VeridonError when it cannot.
void writeExportFile(const QString& path, const QByteArray& bytes);

// Copies source to target, replacing a file of that name. Throws VeridonError when source does not
// exist or the copy cannot be written (an older copy of that name is then gone as well).
void copyExportFile(const QString& source, const QString& target);

// Notes a file written or appended to outside the two functions above.
void noteExportFileWritten(const QString& path);

// Flushes every file noted since the last call to disk (one sync per file system, not per file).
void flushWrittenFiles();
