// SPDX-License-Identifier: Apache-2.0
// The export pass: reads the records to hand over one by one and hands them to the write-ahead
// protocol in groups, so that syncs and commits are shared. Two passes (two programs on one home)
// never work at the same time: a lock file in the home orders them.
#include "mdlExport.h"

#include "ExportBatch.h"
#include "app/Database.h"
#include "app/Home.h"
#include "app/Progress.h"
#include "app/mdlDB.h"
#include "app/mdlMessages.h"

#include <QCoreApplication>
#include <QFile>
#include <QVector>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace {

// Records per group: enough to share the syncs, few enough that the operator sees progress.
constexpr int batchSize = 200;

const char* const waitingStates = "Workflow_Status IN (20, 40, 21, 41)";

// Holds the home's export lock while it lives; a second pass waits for the first. Released by the
// system when the program dies, so a crash never leaves it taken.
class PassLock {
public:
    PassLock() {
        fd_ = ::open(QFile::encodeName(homePath(QStringLiteral(".export.lock"))).constData(),
                     O_RDWR | O_CREAT | O_CLOEXEC, 0644);
        if (fd_ >= 0)
            while (::flock(fd_, LOCK_EX) != 0 && errno == EINTR) {
            }
    }
    ~PassLock() {
        if (fd_ >= 0)
            ::close(fd_);
    }
    PassLock(const PassLock&) = delete;
    PassLock& operator=(const PassLock&) = delete;

private:
    int fd_ = -1;
};

QVector<qint32> waitingNumbers() {
    QVector<qint32> numbers;
    QSqlQuery q = execSql(QStringLiteral("SELECT LfdNr FROM ") + GetValuesTable() + QStringLiteral(" WHERE ") +
                          QLatin1String(waitingStates) + QStringLiteral(" ORDER BY LfdNr"));
    while (q.next())
        numbers << q.value(0).toInt();
    return numbers;
}

} // namespace

bool ExportZVBWerte() {
    RunReported(QStringLiteral("ExportZVBWerte"), [] {
        const PassLock lock;
        const QVector<qint32> numbers = waitingNumbers();
        if (numbers.isEmpty())
            return;
        const ExportSettings settings = ReadExportSettings(true);
        Progress& progress = appProgress();
        const QString label = QStringLiteral("Export von korrigierten Daten: ");
        progress.progress(0, numbers.size());
        progress.status(label + QLatin1Char('0'));

        // Each row is read again when its turn comes: a record that another program took meanwhile
        // is no longer waiting and is left alone. On a shared pool the rows read stay claimed by
        // this workstation until their state change is committed, so two workstations exporting at
        // once never both write one.
        const QString select = QStringLiteral("SELECT * FROM ") + GetValuesTable() +
                               QStringLiteral(" WHERE LfdNr=? AND ") + QLatin1String(waitingStates);
        QSqlQuery fetch = prepareSql(select + skipLockedClause(select));
        qsizetype next = 0;
        while (next < numbers.size()) {
            ExportBatch batch(settings);
            const qsizetype first = next;
            {
                Transaction claim;
                for (; next < numbers.size() && batch.size() < batchSize; ++next) {
                    if (QCoreApplication::instance())
                        QCoreApplication::processEvents();
                    fetch.bindValue(0, numbers[next]);
                    execPrepared(fetch);
                    if (fetch.next())
                        batch.add(fetch.record());
                    fetch.finish();
                }
                if (!batch.writeAhead())
                    break;
                claim.commit();
            }
            if (batch.handOver(true) < 0)
                break;
            for (qsizetype done = first + 1; done <= next; ++done) {
                progress.progress(done, numbers.size());
                progress.status(label + QString::number(done));
            }
        }
        progress.status(QString());
        progress.finished();
        if (QCoreApplication::instance())
            QCoreApplication::processEvents();
    });
    return true;
}

void FinishInterruptedExports() {
    RunReported(QStringLiteral("FinishInterruptedExports"), [] {
        const PassLock lock;
        if (CountRows(QStringLiteral("*"), GetValuesTable(), QStringLiteral("Workflow_Status IN (21, 41)")) == 0)
            return;
        const ExportSettings settings = ReadExportSettings(false);
        ExportBatch batch(settings);
        QSqlQuery q = execSql(QStringLiteral("SELECT * FROM ") + GetValuesTable() +
                              QStringLiteral(" WHERE Workflow_Status IN (21, 41) ORDER BY LfdNr"));
        while (q.next())
            batch.addIfHandedOver(q.record());
        q.finish();
        if (batch.writeAhead())
            batch.handOver(false);
    });
}
