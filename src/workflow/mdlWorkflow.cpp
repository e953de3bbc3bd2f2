// SPDX-License-Identifier: Apache-2.0
#include "mdlWorkflow.h"

#include "admin/OperatorStats.h"
#include "app/CheckedFile.h"
#include "app/Database.h"
#include "app/mdlBackup.h"
#include "app/mdlDB.h"
#include "app/mdlMessages.h"
#include "check/mdlCheck.h"
#include "export/mdlExport.h"
#include "model/FormModel.h"
#include "model/ImageFiles.h"
#include "model/OcrAlternatives.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSet>
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

// Makes sure korrId still holds record n in correction, inside the caller's transaction. The
// update changes nothing, but it matches only while korrId holds the row, and from then on the row
// stays locked (pool server) or data.mdb stays write-locked until the transaction ends: no other
// workstation can take the record between this check and the writes that follow. A workstation
// whose record was released (leaving, start-up, a lost connection) and taken by another one since
// gets RecordTakenError and changes nothing.
void holdOwnRecord(qint32 n, qint16 korrId) {
    QSqlQuery hold = execSql(QStringLiteral("UPDATE ") + GetValuesTable() +
                             QStringLiteral(" SET Workflow_KorrID=Workflow_KorrID WHERE LfdNr=") + number(n) +
                             QStringLiteral(" AND Workflow_Status=30 AND Workflow_KorrID=") + QString::number(korrId));
    if (hold.numRowsAffected() == 1)
        return;
    qint16 status = 0;
    qint16 holder = 0;
    QString now;
    if (!RecordState(n, status, holder))
        now = GetText(Msg::RecordTakenDeleted);
    else if (status == WorkflowStatus::InCorrection)
        now = GetText(Msg::RecordTakenElsewhere, {holder});
    else if (status == WorkflowStatus::Waiting)
        now = GetText(Msg::RecordTakenWaiting);
    else
        now = GetText(Msg::RecordTakenHandedOver, {status});
    throw VeridonError(RecordTakenError, Msg::ErrRecordTaken, {n, now});
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
        // The values and the new state are committed together (one sync instead of two at each
        // hand-over, and never the values without the state), and only while this workstation
        // still holds the record. A write-back that fails (the pool's server gone) stops here with
        // the values still in hand.
        const qint16 korrId = GetKorrID();
        Transaction save;
        holdOwnRecord(n, korrId);
        WerteArray().WriteBackOrThrow(n);
        execSql(QStringLiteral("UPDATE ") + GetValuesTable() + QStringLiteral(" SET Workflow_Status=") +
                QString::number(status) + QStringLiteral(", Workflow_KorrID=0 WHERE lfdnr=") + number(n));
        save.commit();
        WerteArray().Clear();
    });
}

bool StillHoldsRecord(qint32 n) {
    try {
        qint16 status = 0;
        qint16 holder = 0;
        return RecordState(n, status, holder) && status == WorkflowStatus::InCorrection && holder == GetKorrID();
    } catch (const VeridonError&) {
        return true;
    }
}

bool DiscardRecord(qint32 n, bool silent) {
    if (n < 0)
        return false;
    // Deleting cannot be undone: the question defaults to No, so a hasty Enter keeps the record.
    if (!silent &&
        ShowMessage(Msg::AskDelete, MsgBox::YesNo + MsgBox::Question + MsgBox::DefaultButton2) != MsgBox::Yes)
        return false;
    const RecordWork work = recordWork();
    bool deleted = false;
    RunReported(QStringLiteral("actionVerwerfen"), [&] {
        const QString bmpName = WerteArray().indexOf(QStringLiteral("BMPName")) >= 0
                                    ? WerteArray().GetValue(QStringLiteral("BMPName"))
                                    : QString();
        const qint16 korrId = GetKorrID();
        {
            Transaction discard;
            holdOwnRecord(n, korrId);
            WerteArray().WriteBackOrThrow(n);
            execSql(QStringLiteral("DELETE * FROM ") + GetValuesTable() + QStringLiteral(" WHERE LfdNr=") + number(n));
            DeleteAlternatives(n);
            discard.commit();
        }
        WerteArray().Clear();
        deleted = true;
        // The image goes only once its record is gone for good: a crash in between leaves an image
        // no record references, which leaving the program clears.
        deleteRecordImage(bmpName);
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

bool SaveHandOver(qint32 n) {
    const RecordWork work = recordWork(); // before the values in hand are saved and emptied
    if (!SaveWithStatus(n, WorkflowStatus::HandedOver))
        return false;
    keepRecordWork(work, true);
    return true;
}

bool CompleteHandOver(qint32 n) {
    if (!SaveHandOver(n))
        return false;
    ExportZVBWerte();
    return true;
}

bool ConfirmLeave(qint32 n) {
    if (n < 0)
        return true;
    return ShowMessage(Msg::AskAppExit, MsgBox::YesNo + MsgBox::Question + MsgBox::DefaultButton2) == MsgBox::Yes;
}

int DeleteUnreferencedImages() {
    int deleted = 0;
    RunReported(QStringLiteral("DeleteUnreferencedImages"), [&] {
        const QString folder = GetBildpfad();
        if (folder.isEmpty())
            return;
        // Every image a record of the pool still names, whatever its state or holder: a waiting
        // record, one another workstation corrects, one handed over and not yet exported. Names are
        // compared without regard to case, as the database compares them, so a doubt keeps the file.
        // When the pool cannot be read this throws before anything is deleted.
        QSet<QString> referenced;
        {
            QSqlQuery q = execSql(QStringLiteral("SELECT BMPName FROM ") + GetValuesTable() +
                                  QStringLiteral(" WHERE BMPName IS NOT NULL"));
            while (q.next())
                referenced.insert(q.value(0).toString().toLower());
        }
        QDir dir(folder);
        const QStringList files = dir.entryList({QStringLiteral("*.tif")}, QDir::Files);
        for (const QString& name : files)
            if (!referenced.contains(name.toLower()) && dir.remove(name))
                ++deleted;
    });
    return deleted;
}
