// SPDX-License-Identifier: Apache-2.0
// Checked file writing on POSIX calls: QFile buffers and reports a failed flush only through a
// state that is easy to miss, and it offers no sync, so the few calls are made directly here.
#include "CheckedFile.h"

#include "Errors.h"

#include <QFile>
#include <QFileInfo>
#include <atomic>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

std::atomic<qint64>& writeBudget() {
    static std::atomic<qint64> budget = [] {
        bool ok = false;
        const qint64 fromEnvironment = qEnvironmentVariable("VERIDON_WRITE_BUDGET").toLongLong(&ok);
        return ok ? fromEnvironment : qint64(-1);
    }();
    return budget;
}

// How much of a write of size bytes the test budget lets through; errno is ENOSPC when none.
qint64 allowedBytes(qint64 size) {
    std::atomic<qint64>& budget = writeBudget();
    qint64 left = budget.load();
    while (left >= 0) {
        const qint64 take = std::min(left, size);
        if (budget.compare_exchange_weak(left, left - take))
            return take;
    }
    return size;
}

// The cause of a failed call in the operator's words.
QString causeOf(int error) {
    switch (error) {
    case ENOSPC:
    case EDQUOT:
        return QStringLiteral("Auf dem Datenträger ist kein Platz mehr.");
    case EIO:
        return QStringLiteral("Ein-/Ausgabefehler des Datenträgers.");
    case EACCES:
    case EPERM:
        return QStringLiteral("Zugriff verweigert.");
    case EROFS:
        return QStringLiteral("Der Datenträger ist schreibgeschützt.");
    case ENOENT:
    case ENOTDIR:
        return QStringLiteral("Der Ordner existiert nicht.");
    default:
        return QStringLiteral("Systemfehler %1 (%2).").arg(error).arg(QString::fromLocal8Bit(std::strerror(error)));
    }
}

int errorNumberOf(int error) {
    if (error == ENOSPC || error == EDQUOT)
        return ErrorNumber::DiskFull;
    if (error == EIO)
        return ErrorNumber::DeviceIO;
    return ErrorNumber::PathNotFound;
}

[[noreturn]] void failWrite(const QString& path, int error) {
    throw VeridonError(errorNumberOf(error),
                       QStringLiteral("Die Datei '%1' kann nicht geschrieben werden: %2").arg(path, causeOf(error)));
}

QByteArray nativeName(const QString& path) {
    return QFile::encodeName(path);
}

// Writes all of bytes to fd. Returns 0 or the errno of the failure.
int writeAll(int fd, const QByteArray& bytes) {
    const char* data = bytes.constData();
    qint64 left = bytes.size();
    while (left > 0) {
        const qint64 allowed = allowedBytes(left);
        if (allowed == 0)
            return ENOSPC;
        const ssize_t n = ::write(fd, data, size_t(allowed));
        if (n < 0) {
            if (errno == EINTR)
                continue;
            return errno;
        }
        data += n;
        left -= n;
    }
    return 0;
}

int syncFolder(const QString& folder) {
    const int fd = ::open(nativeName(folder).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (fd < 0)
        return errno;
    const int result = ::fsync(fd) == 0 ? 0 : errno;
    ::close(fd);
    return result;
}

QString folderOf(const QString& path) {
    return QFileInfo(path).absolutePath();
}

// Writes bytes into a new or truncated file at path; on failure removes it and throws, naming
// shownPath (the file the operator knows of).
void writeInto(const QString& path, const QByteArray& bytes, bool sync, const QString& shownPath) {
    const QByteArray name = nativeName(path);
    const int fd = ::open(name.constData(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
    if (fd < 0)
        failWrite(shownPath, errno);
    int error = writeAll(fd, bytes);
    if (error == 0 && sync && ::fsync(fd) != 0)
        error = errno;
    if (::close(fd) != 0 && error == 0)
        error = errno;
    if (error != 0) {
        ::unlink(name.constData());
        failWrite(shownPath, error);
    }
}

void finish(const QString& path, Durability durability, SyncBatch* batch) {
    if (durability == Durability::Synced) {
        if (const int error = syncFolder(folderOf(path)))
            failWrite(path, error);
    } else if (batch) {
        batch->note(path);
    }
}

} // namespace

void writeNewFileChecked(const QString& path, const QByteArray& bytes, Durability durability, SyncBatch* batch) {
    writeInto(path, bytes, durability == Durability::Synced, path);
    finish(path, durability, batch);
}

void writeFileChecked(const QString& path, const QByteArray& bytes, Durability durability, SyncBatch* batch) {
    const QFileInfo info(path);
    const QString part = info.absolutePath() + QStringLiteral("/.") + info.fileName() + QStringLiteral(".part");
    writeInto(part, bytes, durability == Durability::Synced, path);
    if (::rename(nativeName(part).constData(), nativeName(path).constData()) != 0) {
        const int error = errno;
        ::unlink(nativeName(part).constData());
        failWrite(path, error);
    }
    finish(path, durability, batch);
}

void appendFileChecked(const QString& path, const QByteArray& bytes, Durability durability, SyncBatch* batch) {
    const int fd = ::open(nativeName(path).constData(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0644);
    if (fd < 0)
        failWrite(path, errno);
    struct stat before {};
    int error = ::fstat(fd, &before) == 0 ? 0 : errno;
    if (error == 0)
        error = writeAll(fd, bytes);
    if (error == 0 && durability == Durability::Synced && ::fsync(fd) != 0)
        error = errno;
    if (error != 0 && before.st_size >= 0) {
        // Cut off a partial append so the file never ends in half a line.
        if (::ftruncate(fd, before.st_size) == 0 && durability == Durability::Synced)
            ::fsync(fd);
    }
    if (::close(fd) != 0 && error == 0)
        error = errno;
    if (error != 0)
        failWrite(path, error);
    finish(path, durability, batch);
}

void copyFileChecked(const QString& source, const QString& target, Durability durability, SyncBatch* batch) {
    QFile in(source);
    if (!in.open(QIODevice::ReadOnly))
        throw VeridonError(ErrorNumber::FileNotFound,
                           QStringLiteral("Die Datei '%1' wurde nicht gefunden.").arg(source));
    const QByteArray bytes = in.readAll();
    if (in.error() != QFileDevice::NoError)
        throw VeridonError(ErrorNumber::DeviceIO,
                           QStringLiteral("Die Datei '%1' kann nicht gelesen werden.").arg(source));
    in.close();
    writeFileChecked(target, bytes, durability, batch);
    if (!fileHolds(target, bytes))
        throw VeridonError(ErrorNumber::DeviceIO,
                           QStringLiteral("Die Kopie '%1' stimmt nicht mit '%2' überein.").arg(target, source));
}

void renameChecked(const QString& from, const QString& to, Durability durability, SyncBatch* batch) {
    if (::rename(nativeName(from).constData(), nativeName(to).constData()) != 0)
        failWrite(to, errno);
    finish(to, durability, batch);
}

bool fileHolds(const QString& path, const QByteArray& bytes) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly) || file.size() != bytes.size())
        return false;
    return file.readAll() == bytes;
}

SyncBatch::~SyncBatch() {
    for (const int fd : std::as_const(folders_))
        if (fd >= 0)
            ::close(fd);
}

void SyncBatch::note(const QString& path) {
    const QString folder = folderOf(path);
    if (folders_.contains(folder))
        return;
    folders_.insert(folder, ::open(nativeName(folder).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
}

void SyncBatch::sync() {
    // One syncfs per file system writes out every file of the batch and the folder entries with it.
    QHash<QString, int> folders;
    folders.swap(folders_);
    QSet<dev_t> synced;
    int error = 0;
    QString failed;
    for (auto it = folders.cbegin(); it != folders.cend(); ++it) {
        const int fd = it.value();
        struct stat info {};
        if (fd < 0 || ::fstat(fd, &info) != 0) {
            if (error == 0) {
                error = fd < 0 ? ENOENT : errno;
                failed = it.key();
            }
        } else if (!synced.contains(info.st_dev)) {
            // syncfs reports write-back errors seen since fd was opened, that is since note().
            if (::syncfs(fd) != 0 && error == 0) {
                error = errno;
                failed = it.key();
            }
            synced.insert(info.st_dev);
        }
        if (fd >= 0)
            ::close(fd);
    }
    if (error != 0)
        throw VeridonError(
            errorNumberOf(error),
            QStringLiteral("Der Ordner '%1' kann nicht gesichert werden: %2").arg(failed, causeOf(error)));
}

void setWriteBudgetForTesting(qint64 budget) {
    writeBudget().store(budget);
}
