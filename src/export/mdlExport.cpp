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
#include "model/FormModel.h"

#include <QCoreApplication>
#include <QFile>
#include <QVector>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace {

// Records per group: enough to share the syncs, few enough that the operator sees progress.
constexpr int batchSize = 200;

// The rows a pass of this workstation may take: handed over and waiting (20, 40), or claimed by
// this workstation (21, 41) in a pass that did not finish. The claim names the workstation: on a
// shared pool a row another one claimed is that one's to finish, also after its claim committed,
// or both would write it. Claims without a holder come from passes before claims named one.
QString interruptedRows() {
    return QStringLiteral("(Workflow_Status IN (21, 41) AND (Workflow_KorrID IS NULL OR Workflow_KorrID IN (0, %1)))")
        .arg(GetKorrID());
}

QString waitingStates() {
    return QStringLiteral("(Workflow_Status IN (20, 40) OR ") + interruptedRows() + QLatin1Char(')');
}

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
                          waitingStates() + QStringLiteral(" ORDER BY LfdNr"));
    while (q.next())
        numbers << q.value(0).toInt();
    return numbers;
}

// Tells the operator, in one message, of the records the pass refused for a date it cannot read.
void reportRefusals(const QStringList& refusals) {
    if (refusals.isEmpty())
        return;
    constexpr qsizetype shown = 10;
    QStringList lines = refusals.mid(0, shown);
    if (refusals.size() > shown)
        lines << QStringLiteral("... und %1 weitere (siehe Protokoll)").arg(refusals.size() - shown);
    ShowMessage(Msg::ExportDateUnreadable, MsgBox::Critical,
                {QString::number(refusals.size()), lines.join(QStringLiteral("\r\n"))});
}

} // namespace

bool ExportZVBWerte() {
    // Checks fail closed: without the whole set of field definitions nothing is known to have been
    // checked, so nothing leaves - not even a record that is ready.
    if (!FelderArray().IsComplete())
        FelderArray().Fill();
    if (!FelderArray().IsComplete()) {
        ShowMessage(Msg::ExportNoDefinitions, MsgBox::Critical);
        return true;
    }
    QStringList refusals;
    RunReported(QStringLiteral("ExportZVBWerte"), [&refusals] {
        const PassLock lock;
        const QVector<qint32> numbers = waitingNumbers();
        if (numbers.isEmpty())
            return;
        const ExportSettings settings = ReadExportSettings(true);
        Progress& progress = appProgress();
        // The status text in the operator's language, read once for the pass.
        const QString label =
            GetText(QStringLiteral("Txt_ExportProgress"), QStringLiteral("Export von korrigierten Daten: %1"));
        progress.progress(0, numbers.size());
        progress.status(QString(label).replace(QLatin1String("%1"), QLatin1String("0")));

        // Each row is read again when its turn comes: a record that another program took meanwhile
        // is no longer waiting and is left alone. On a shared pool the rows read stay claimed by
        // this workstation until their state change is committed, so two workstations exporting at
        // once never both write one.
        const QString select = QStringLiteral("SELECT * FROM ") + GetValuesTable() +
                               QStringLiteral(" WHERE LfdNr=? AND ") + waitingStates();
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
                const bool written = batch.writeAhead();
                refusals << batch.refusals();
                if (!written)
                    break;
                claim.commit();
            }
            if (batch.handOver(true) < 0)
                break;
            for (qsizetype done = first + 1; done <= next; ++done) {
                progress.progress(done, numbers.size());
                progress.status(QString(label).replace(QLatin1String("%1"), QString::number(done)));
            }
        }
        progress.status(QString());
        progress.finished();
        if (QCoreApplication::instance())
            QCoreApplication::processEvents();
    });
    reportRefusals(refusals);
    return true;
}

void FinishInterruptedExports() {
    RunReported(QStringLiteral("FinishInterruptedExports"), [] {
        const PassLock lock;
        if (CountRows(QStringLiteral("*"), GetValuesTable(), interruptedRows()) == 0)
            return;
        const ExportSettings settings = ReadExportSettings(false);
        ExportBatch batch(settings);
        QSqlQuery q = execSql(QStringLiteral("SELECT * FROM ") + GetValuesTable() + QStringLiteral(" WHERE ") +
                              interruptedRows() + QStringLiteral(" ORDER BY LfdNr"));
        while (q.next())
            batch.addIfHandedOver(q.record());
        q.finish();
        if (batch.writeAhead())
            batch.handOver(false);
    });
}
