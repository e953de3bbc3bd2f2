// SPDX-License-Identifier: Apache-2.0
#include "mdlWorkflow.h"

#include "admin/OperatorStats.h"
#include "app/CheckedFile.h"
#include "app/Database.h"
#include "app/PoolConnection.h"
#include "app/mdlBackup.h"
#include "app/mdlDB.h"
#include "app/mdlMessages.h"
#include "check/mdlCheck.h"
#include "export/mdlExport.h"
#include "model/FormModel.h"
#include "model/ImageFiles.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QVector>

namespace {

QString number(qint32 n) {
    return QString::number(n);
}

// Gives korrId's records in correction back to the pool; throws on a database failure.
int releaseRecordsOf(qint16 korrId) {
    QSqlQuery q = execSql(QStringLiteral("UPDATE ") + GetValuesTable() +
                          QStringLiteral(" SET Workflow_Status=10, Workflow_KorrID=0 WHERE Workflow_Status=30 AND "
                                         "Workflow_KorrID=") +
                          QString::number(korrId));
    return q.numRowsAffected();
}

// Copies the image about to be deleted into the day's image backup under its "_d." name, so a
// discarded form can still be looked at later. Only when images are backed up at all.
void keepDiscardedImage(const QString& imageFile, const QString& bmpName) {
    if (!IsBackupEnabled() || !IsBackupImages())
        return;
    const QString folder = GetBackupDir(BackupKind::Images, true);
    if (folder.isEmpty())
        return;
    // Checked, synced and read back: the image is deleted right after, so the copy must be good.
    copyFileChecked(imageFile, folder + DiscardedImageName(bmpName));
}

// Deletes the record's image when its name is a bare file name. A file that cannot be deleted is
// reported and the caller goes on with the record.
void deleteRecordImage(const QString& bmpName) {
    const QString imageFile = RecordImageFile(bmpName);
    if (imageFile.isEmpty() || !QFileInfo::exists(imageFile))
        return;
    keepDiscardedImage(imageFile, bmpName);
    QFile file(imageFile);
    if (!file.remove())
        ShowMessage(Msg::ImageDeleteErr, MsgBox::Exclamation,
                    {int(ErrorNumber::PathNotFound), QStringLiteral("%1: %2").arg(imageFile, file.errorString())});
}

} // namespace

int ReleaseOwnRecords(qint16 korrId) {
    int released = -1;
    RunReported(QStringLiteral("ReleaseOwnRecords"), [&] { released = releaseRecordsOf(korrId); });
    return released;
}

int ReleaseOwnRecords() {
    qint16 korrId = 0;
    if (!RunReported(QStringLiteral("ReleaseOwnRecords"), [&] { korrId = GetKorrID(); }))
        return -1;
    return ReleaseOwnRecords(korrId);
}

qint32 ClaimNextRecord(qint16 korrId) {
    releaseRecordsOf(korrId);
    // The candidates are read first and the reading statement ends before the first write, so the
    // claim never upgrades a read snapshot that another workstation has outdated. They come in table
    // order; the index on the workflow columns would otherwise decide the order.
    QVector<qint32> candidates;
    {
        QSqlQuery q = execSql(QStringLiteral("SELECT LfdNr FROM ") + GetValuesTable() +
                              QStringLiteral(" WHERE Workflow_Status=10 ORDER BY LfdNr"));
        while (q.next())
            candidates << q.value(0).toInt();
    }
    for (const qint32 candidate : std::as_const(candidates)) {
        QSqlQuery claim =
            execSql(QStringLiteral("UPDATE ") + GetValuesTable() +
                    QStringLiteral(" SET Workflow_Status=30, Workflow_KorrID=") + QString::number(korrId) +
                    QStringLiteral(" WHERE LfdNr=") + number(candidate) + QStringLiteral(" AND Workflow_Status=10"));
        if (claim.numRowsAffected() == 1)
            return candidate;
    }
    return -1;
}

bool ClaimRecord(qint32 n, qint16 korrId) {
    const QString k = QString::number(korrId);
    QSqlQuery claim =
        execSql(QStringLiteral("UPDATE ") + GetValuesTable() +
                QStringLiteral(" SET Workflow_Status=30, Workflow_KorrID=") + k + QStringLiteral(" WHERE LfdNr=") +
                number(n) + QStringLiteral(" AND (Workflow_Status=10 OR (Workflow_Status=30 AND Workflow_KorrID=") + k +
                QStringLiteral("))"));
    return claim.numRowsAffected() == 1;
}

QString ClaimRefusal(qint32 n) {
    qint16 status = 0;
    qint16 holder = 0;
    if (!RecordState(n, status, holder))
        return QStringLiteral("Beleg %1 gibt es nicht.").arg(n);
    if (status == WorkflowStatus::InCorrection)
        return QStringLiteral("Beleg %1 wird am Arbeitsplatz %2 bearbeitet.").arg(n).arg(holder);
    return QStringLiteral("Beleg %1 ist bereits übergeben (Status %2).").arg(n).arg(status);
}

qint32 TakeNextRecord() {
    qint32 taken = -1;
    RunReported(QStringLiteral("TakeNextRecord"), [&] { taken = ClaimNextRecord(GetKorrID()); });
    if (taken < 0 || !LoadRecord(taken)) {
        WerteArray().Clear();
        return -1;
    }
    return taken;
}

bool LoadRecord(qint32 n) {
    bool found = false;
    RunReported(QStringLiteral("LoadRecord"), [&] {
        QSqlQuery q =
            execSql(QStringLiteral("SELECT * FROM ") + GetValuesTable() + QStringLiteral(" WHERE LfdNr=") + number(n));
        found = q.next() && WerteArray().Fill(q);
    });
    if (!found)
        WerteArray().Clear();
    else
        beginRecordWork();
    return found;
}

bool RecordState(qint32 n, qint16& status, qint16& korrId) {
    QSqlQuery q = execSql(QStringLiteral("SELECT Workflow_Status, Workflow_KorrID FROM ") + GetValuesTable() +
                          QStringLiteral(" WHERE LfdNr=") + number(n));
    if (!q.next())
        return false;
    status = qint16(q.value(0).toInt());
    korrId = qint16(q.value(1).toInt());
    return true;
}

bool SaveWithStatus(qint32 n, qint16 status) {
    if (n < 0)
        return false;
    return RunReported(QStringLiteral("SaveWithStatus"), [&] {
        // A write-back that fails (the pool's server gone) stops here with the values still in hand.
        WerteArray().WriteBackOrThrow(n);
        WerteArray().Clear();
        execSql(QStringLiteral("UPDATE ") + GetValuesTable() + QStringLiteral(" SET Workflow_Status=") +
                QString::number(status) + QStringLiteral(", Workflow_KorrID=0 WHERE lfdnr=") + number(n));
    });
}

bool DiscardRecord(qint32 n, bool silent) {
    if (n < 0)
        return false;
    if (!silent && ShowMessage(Msg::AskDelete, MsgBox::YesNo + MsgBox::Question) != MsgBox::Yes)
        return false;
    const RecordWork work = recordWork();
    bool deleted = false;
    RunReported(QStringLiteral("actionVerwerfen"), [&] {
        const QString bmpName = WerteArray().indexOf(QStringLiteral("BMPName")) >= 0
                                    ? WerteArray().GetValue(QStringLiteral("BMPName"))
                                    : QString();
        deleteRecordImage(bmpName);
        WerteArray().EmptyArray(n);
        WerteArray().Clear();
        execSql(QStringLiteral("DELETE * FROM ") + GetValuesTable() + QStringLiteral(" WHERE LfdNr=") + number(n));
        deleted = true;
        WriteLog(QStringLiteral("frmMain.actionVerwerfen()"),
                 QStringLiteral("Beleg #") + number(n) + QStringLiteral(" - ") +
                     (bmpName.isEmpty() ? QStringLiteral("(ohne Bild)") : bmpName) + QStringLiteral(" gelöscht!"));
    });
    if (deleted)
        keepRecordWork(work, false);
    return deleted;
}

bool HandOverDecision(qint16 level, QString& errorText, const std::function<void(const QString&)>& showErrorList) {
    if (level == 0)
        return true;
    if (level == 3) {
        if (showErrorList)
            showErrorList(errorText);
        if (ShowMessage(Msg::AskWarnings, MsgBox::YesNo + MsgBox::Question) == MsgBox::Yes) {
            WerteArray().SetValue(QStringLiteral("Korrigiert"), QStringLiteral("1"));
            errorText.clear();
            return true;
        }
    }
    WerteArray().SetValue(QStringLiteral("Korrigiert"), QStringLiteral("0"));
    return false;
}

bool DecideHandOver(QString& errorText, const std::function<void(const QString&)>& showErrorList) {
    const qint16 level = Check(QStringLiteral("all"), errorText);
    return HandOverDecision(level, errorText, showErrorList);
}

bool CompleteHandOver(qint32 n) {
    const RecordWork work = recordWork(); // before the values in hand are saved and emptied
    if (!SaveWithStatus(n, WorkflowStatus::HandedOver))
        return false;
    keepRecordWork(work, true);
    ExportZVBWerte();
    return true;
}

bool ConfirmLeave(qint32 n) {
    if (n < 0)
        return true;
    return ShowMessage(Msg::AskAppExit, MsgBox::YesNo + MsgBox::Question + MsgBox::DefaultButton2) == MsgBox::Yes;
}

int EmptyPoolForScan() {
    if (homeUsesPool())
        return 0;
    return execSql(QStringLiteral("DELETE * FROM ") + GetValuesTable() + QLatin1Char(';')).numRowsAffected();
}

int DeleteFolderImages() {
    int deleted = 0;
    RunReported(QStringLiteral("DeleteFolderImages"), [&] {
        const QString folder = GetBildpfad();
        if (folder.isEmpty())
            return;
        QDir dir(folder);
        const QStringList files = dir.entryList({QStringLiteral("*.tif")}, QDir::Files);
        for (const QString& name : files)
            if (dir.remove(name))
                ++deleted;
    });
    return deleted;
}
