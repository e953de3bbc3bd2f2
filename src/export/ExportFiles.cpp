#include "ExportFiles.h"

#include "app/Errors.h"

#include <QFile>
#include <QFileInfo>
#include <QSet>
#include <fcntl.h>
#include <unistd.h>

namespace {

// Folders that received files since the last flush.
QSet<QString>& pendingFolders() {
    thread_local QSet<QString> folders;
    return folders;
}

VeridonError cannotWrite(const QString& path) {
    return VeridonError(ErrorNumber::PathNotFound,
                        QStringLiteral("Die Datei '%1' kann nicht geschrieben werden.").arg(path));
}

} // namespace

void noteExportFileWritten(const QString& path) {
    pendingFolders().insert(QFileInfo(path).absolutePath());
}

void writeExportFile(const QString& path, const QByteArray& bytes) {
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate) || file.write(bytes) != bytes.size())
        throw cannotWrite(path);
    noteExportFileWritten(path);
}

void copyExportFile(const QString& source, const QString& target) {
    QFile in(source);
    if (!in.open(QIODevice::ReadOnly))
        throw VeridonError(ErrorNumber::FileNotFound,
                           QStringLiteral("Die Datei '%1' wurde nicht gefunden.").arg(source));
    const QByteArray bytes = in.readAll();
    QFile out(target);
    if (!out.open(QIODevice::WriteOnly | QIODevice::Truncate) || out.write(bytes) != bytes.size())
        throw VeridonError(ErrorNumber::PathNotFound,
                           QStringLiteral("Die Datei '%1' kann nicht nach '%2' kopiert werden.").arg(source, target));
    noteExportFileWritten(target);
}

void flushWrittenFiles() {
    QSet<QString>& folders = pendingFolders();
    for (const QString& folder : std::as_const(folders)) {
        const int fd = ::open(QFile::encodeName(folder).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
        if (fd < 0)
            continue;
        // One sync of the folder's file system writes out every file of the batch, and the
        // directory entries with them.
        ::syncfs(fd);
        ::close(fd);
    }
    folders.clear();
}
