// SPDX-License-Identifier: Apache-2.0
#include "ImportFile.h"

#include "Sha256.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <unistd.h>

namespace {

// Writes the folder's entry table through to disk, so a moved import file is not found under its
// old name again after a power cut.
void syncFolder(const QString& folder) {
    const QByteArray name = QFile::encodeName(folder.isEmpty() ? QStringLiteral(".") : folder);
    const int fd = ::open(name.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (fd < 0)
        return;
    ::fsync(fd);
    ::close(fd);
}

} // namespace

QString directoryOf(const QString& path) {
    const qsizetype slash = path.lastIndexOf(QLatin1Char('/'));
    return slash < 0 ? QString() : path.left(slash);
}

QString fileNameWithoutExtension(const QString& path) {
    const QString name = path.mid(path.lastIndexOf(QLatin1Char('/')) + 1);
    const qsizetype dot = name.lastIndexOf(QLatin1Char('.'));
    return dot < 0 ? name : name.left(dot);
}

QString importTempName(const QString& path) {
    const QString folder = directoryOf(path);
    const QString prefix = path.contains(QLatin1Char('/')) ? folder + QLatin1Char('/') : QString();
    return prefix + fileNameWithoutExtension(path) + QStringLiteral(".tmp");
}

QString staleTempAsideName(const QString& temp, const QDateTime& now) {
    const QString base = temp + QLatin1Char('.') + now.toString(QStringLiteral("yyMMdd-HHmmss"));
    QString candidate = base;
    for (int n = 2; QFileInfo::exists(candidate) || QFileInfo(candidate).isSymLink(); ++n)
        candidate = base + QLatin1Char('-') + QString::number(n);
    return candidate;
}

bool moveFileNoReplace(const QString& source, const QString& target) {
    const QByteArray from = QFile::encodeName(source);
    const QByteArray to = QFile::encodeName(target);
    if (::renameat2(AT_FDCWD, from.constData(), AT_FDCWD, to.constData(), RENAME_NOREPLACE) != 0) {
        // Some file systems (network shares) do not know the no-replace flag: test first, then
        // rename; the window between both is the same as the original platform's.
        if (errno != EINVAL && errno != ENOSYS)
            return false;
        if (QFileInfo::exists(target)) {
            errno = EEXIST;
            return false;
        }
        if (::rename(from.constData(), to.constData()) != 0)
            return false;
    }
    syncFolder(directoryOf(target));
    return true;
}

QString unusedFileName(const QString& folder, const QString& stem) {
    QString candidate = folder + stem;
    for (int n = 2; QFileInfo::exists(candidate) || QFileInfo(candidate).isSymLink(); ++n)
        candidate = folder + stem + QLatin1Char('-') + QString::number(n);
    return candidate;
}

bool copyFileChecked(const QString& source, const QString& target, QString& problem) {
    QFile in(source);
    if (!in.open(QIODevice::ReadOnly)) {
        problem = in.errorString();
        return false;
    }
    QSaveFile out(target);
    if (!out.open(QIODevice::WriteOnly)) {
        problem = out.errorString();
        return false;
    }
    qint64 copied = 0;
    while (!in.atEnd()) {
        const QByteArray block = in.read(1 << 20);
        if (block.isEmpty() && in.error() != QFileDevice::NoError) {
            problem = in.errorString();
            out.cancelWriting();
            return false;
        }
        if (out.write(block) != block.size()) {
            problem = out.errorString();
            out.cancelWriting();
            return false;
        }
        copied += block.size();
    }
    if (copied != in.size()) {
        problem = QStringLiteral("unvollständig gelesen");
        out.cancelWriting();
        return false;
    }
    // commit() flushes, syncs and renames; a full disk shows here at the latest.
    if (!out.commit()) {
        problem = out.errorString();
        return false;
    }
    syncFolder(directoryOf(target));
    return true;
}

bool fileIdentity(const QString& path, qint64& size, QString& sha256) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    QByteArray digest;
    if (!sha256Of(file, digest))
        return false;
    size = file.size();
    sha256 = QString::fromLatin1(digest.toHex());
    return true;
}
