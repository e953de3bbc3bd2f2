// SPDX-License-Identifier: Apache-2.0
// Result lines and the checked append. POSIX calls are used for the append because a flush to
// disk (fsync) and cutting back a failed append (ftruncate) are what make it safe.
#include "ResultBatch.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>

namespace evaluation {

namespace {

QString systemError() {
    return QString::fromLocal8Bit(std::strerror(errno));
}

// Writes all of data to fd; false on any short or failed write.
bool writeAll(int fd, const QByteArray& data) {
    qsizetype done = 0;
    while (done < data.size()) {
        const ssize_t n = ::write(fd, data.constData() + done, size_t(data.size() - done));
        if (n < 0 && errno == EINTR)
            continue;
        if (n <= 0)
            return false;
        done += n;
    }
    return true;
}

} // namespace

QString resultLine(const QString& bmpName, const QDate& scanDate, const PageReading& reading,
                   const QString& separator) {
    const QDate date = reading.receiptDate.isValid() ? reading.receiptDate : scanDate;
    QStringList parts{bmpName, date.toString(QStringLiteral("dd.MM.yyyy")),
                      reading.typ ? QString::number(reading.typ) : QString(), QString::number(reading.offsetX),
                      QString::number(reading.offsetY)};
    for (int i = 0; i < 6; ++i)
        parts << (reading.typ == 4 ? reading.lines.value(i) : QString());
    for (int i = 0; i < 7; ++i)
        parts << (reading.typ == 5 ? reading.lines.value(i) : QString());
    return parts.join(separator);
}

QString alternativesPath(const QString& resultPath) {
    const QFileInfo info(resultPath);
    const QString name = info.fileName();
    const qsizetype dot = name.lastIndexOf(QLatin1Char('.'));
    return info.dir().filePath((dot < 0 ? name : name.left(dot)) + QStringLiteral(".alt"));
}

QStringList alternativesLines(const QString& bmpName, const PageReading& reading) {
    QStringList out;
    const QString prefix = reading.typ == 4 ? QStringLiteral("T4_L") : QStringLiteral("T5_L");
    for (size_t line = 0; line < reading.alternatives.size(); ++line)
        for (size_t mark = 0; mark < reading.alternatives[line].size(); ++mark)
            if (!reading.alternatives[line][mark].isEmpty())
                out << QStringList{bmpName, prefix + QString::number(line + 1), QString::number(mark + 1),
                                   reading.alternatives[line][mark].join(QString())}
                           .join(QLatin1Char('\t'));
    return out;
}

void cutBack(const QString& path, qint64 size) {
    // Best effort: this runs after a failure that is already being reported.
    if (size < 0)
        QFile::remove(path);
    else
        QFile::resize(path, size);
}

bool appendLines(const QString& path, const QStringList& lines, QString* error, bool withoutMark) {
    QByteArray batch;
    for (const QString& line : lines)
        batch += line.toUtf8() + "\r\n";
    const QByteArray temp = QFile::encodeName(path + QStringLiteral(".zvscan-neu"));
    const QByteArray target = QFile::encodeName(path);

    const int tempFd = ::open(temp.constData(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
    if (tempFd < 0) {
        *error = QStringLiteral("Zwischendatei '%1' nicht anlegbar: %2").arg(QFile::decodeName(temp), systemError());
        return false;
    }
    const bool tempOk = writeAll(tempFd, batch) && ::fsync(tempFd) == 0;
    const QString tempError = systemError();
    ::close(tempFd);
    if (!tempOk) {
        ::unlink(temp.constData());
        *error = QStringLiteral("Zwischendatei '%1' nicht schreibbar: %2").arg(QFile::decodeName(temp), tempError);
        return false;
    }

    const int fd = ::open(target.constData(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0644);
    if (fd < 0) {
        *error = QStringLiteral("Importdatei '%1' nicht zu öffnen: %2").arg(path, systemError());
        ::unlink(temp.constData());
        return false;
    }
    const off_t oldEnd = ::lseek(fd, 0, SEEK_END);
    if (oldEnd == 0 && !withoutMark)
        batch.prepend("\xEF\xBB\xBF");
    const bool ok = oldEnd >= 0 && writeAll(fd, batch) && ::fsync(fd) == 0;
    if (!ok) {
        *error = QStringLiteral("Importdatei '%1' nicht schreibbar: %2").arg(path, systemError());
        if (oldEnd >= 0 && ::ftruncate(fd, oldEnd) == 0)
            ::fsync(fd);
    }
    ::close(fd);
    ::unlink(temp.constData());
    return ok;
}

} // namespace evaluation
