// SPDX-License-Identifier: Apache-2.0
#include "HomeLock.h"

#include "Home.h"

#include <QFile>

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

HomeLock::HomeLock(const QString& home) : path_(withTrailingSlash(home) + fileName()) {}

HomeLock::~HomeLock() {
    if (fd_ >= 0)
        ::close(fd_); // closing the descriptor releases the lock
}

HomeLock::Result HomeLock::take(bool exclusive) {
    if (fd_ < 0) {
        fd_ = ::open(QFile::encodeName(path_).constData(), O_RDWR | O_CREAT | O_CLOEXEC, 0644);
        if (fd_ < 0)
            return Result::Unavailable;
    }
    int rc = 0;
    do
        rc = ::flock(fd_, (exclusive ? LOCK_EX : LOCK_SH) | LOCK_NB);
    while (rc != 0 && errno == EINTR);
    if (rc != 0) {
        const bool busy = errno == EWOULDBLOCK;
        ::close(fd_);
        fd_ = -1;
        return busy ? Result::Held : Result::Unavailable;
    }
    return Result::Taken;
}

HomeLock::Result HomeLock::tryExclusive() {
    const Result result = take(true);
    if (result == Result::Taken) {
        const QByteArray pid = QByteArray::number(qint64(::getpid())) + '\n';
        if (::ftruncate(fd_, 0) == 0)
            (void)!::pwrite(fd_, pid.constData(), size_t(pid.size()), 0);
    }
    return result;
}

HomeLock::Result HomeLock::tryShared() {
    return take(false);
}

qint64 HomeLock::holderPid() const {
    QFile file(path_);
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    return file.readLine(32).trimmed().toLongLong();
}
