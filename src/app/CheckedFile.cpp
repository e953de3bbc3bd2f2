// SPDX-License-Identifier: Apache-2.0
// Checked file writing on POSIX calls: QFile buffers and reports a failed flush only through a
// state that is easy to miss, and it offers no sync, so the few calls are made directly here.
#include "CheckedFile.h"

#include "Errors.h"

#include <QFile>
#include <QFileInfo>
#include <algorithm>
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

QString& garbledPathPart() {
    static QString part;
    return part;
}

// What a write to path stores: bytes, or with the test seam on, bytes with the last one changed.
QByteArray storedBytes(const QString& path, const QByteArray& bytes) {
    const QString& part = garbledPathPart();
    if (part.isEmpty() || bytes.isEmpty() || !path.contains(part))
        return bytes;
    QByteArray garbled = bytes;
    garbled[garbled.size() - 1] = char(~garbled.back());
    return garbled;
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
    throw VeridonError(errorNumberOf(error), Msg::ErrFileWrite, {path, causeOf(error)});
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
    int error = writeAll(fd, storedBytes(path, bytes));
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
        error = writeAll(fd, storedBytes(path, bytes));
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
        throw VeridonError(ErrorNumber::FileNotFound, Msg::ErrFileNotFound, {source});
    const QByteArray bytes = in.readAll();
    if (in.error() != QFileDevice::NoError)
        throw VeridonError(ErrorNumber::DeviceIO, Msg::ErrFileRead, {source});
    in.close();
    writeFileChecked(target, bytes, durability, batch);
    if (!fileHolds(target, bytes))
        throw VeridonError(ErrorNumber::DeviceIO, Msg::ErrCopyDiffers, {target, source});
}

void renameChecked(const QString& from, const QString& to, Durability durability, SyncBatch* batch) {
    if (::rename(nativeName(from).constData(), nativeName(to).constData()) != 0)
        failWrite(to, errno);
    finish(to, durability, batch);
}

namespace {

// True when the file open as fd holds bytes from offset on up to its end. Read in pieces into one
// buffer and compared as they come: export passes call this for every copy they keep.
bool holdsFrom(int fd, qint64 offset, const QByteArray& bytes) {
    struct stat info {};
    if (::fstat(fd, &info) != 0 || info.st_size != offset + bytes.size())
        return false;
    char buffer[64 * 1024];
    qint64 done = 0;
    while (done < bytes.size()) {
        const ssize_t n =
            ::pread(fd, buffer, size_t(std::min<qint64>(sizeof buffer, bytes.size() - done)), offset + done);
        if (n < 0 && errno == EINTR)
            continue;
        if (n <= 0 || std::memcmp(buffer, bytes.constData() + done, size_t(n)) != 0)
            return false;
        done += n;
    }
    return true;
}

// Opens path for reading and applies check to the descriptor and the file's size; false when it
// cannot be opened.
template <class Check> bool withOpenFile(const QString& path, Check&& check) {
    const int fd = ::open(nativeName(path).constData(), O_RDONLY | O_CLOEXEC);
    if (fd < 0)
        return false;
    struct stat info {};
    const bool result = ::fstat(fd, &info) == 0 && check(fd, qint64(info.st_size));
    ::close(fd);
    return result;
}

} // namespace

bool fileHolds(const QString& path, const QByteArray& bytes) {
    return withOpenFile(path, [&](int fd, qint64) { return holdsFrom(fd, 0, bytes); });
}

bool fileEndsWith(const QString& path, const QByteArray& bytes) {
    return withOpenFile(
        path, [&](int fd, qint64 size) { return size >= bytes.size() && holdsFrom(fd, size - bytes.size(), bytes); });
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
        throw VeridonError(errorNumberOf(error), Msg::ErrFolderSync, {failed, causeOf(error)});
}

void setWriteBudgetForTesting(qint64 budget) {
    writeBudget().store(budget);
}

void setGarbledWritesForTesting(const QString& pathPart) {
    garbledPathPart() = pathPart;
}
