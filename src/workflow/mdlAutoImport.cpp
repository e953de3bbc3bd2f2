// SPDX-License-Identifier: Apache-2.0
// The pass over the registry of master-data files. Each file's import runs as one batch (the rows
// of a large table go in quickly, and a crash leaves the old rows), committed before the count
// judgement is shown, so no message box ever waits while the database is locked for writing.
#include "mdlAutoImport.h"

#include "CommittedBatch.h"
#include "app/Database.h"
#include "app/Home.h"
#include "app/PoolConnection.h"
#include "app/Progress.h"
#include "app/mdlDB.h"
#include "app/mdlMessages.h"
#include "check/RecheckRecords.h"
#include "model/FormModel.h"

#include <QFileInfo>

namespace {

struct RegistryEntry {
    qint64 rowId = 0;
    QString fileName;
    QVariant version;
    QString table;
    QString preparation;
    int kind = 0;
    QVariant separator;
    QVariant textDelimiter;
    bool header = false;
    qint32 layoutId = 0;
    QString converter;
};

QVector<RegistryEntry> readRegistry() {
    QVector<RegistryEntry> entries;
    QSqlQuery q = execSql(QStringLiteral("SELECT rowid, Dateiname, VersionsDatum, zieltabelle, Vorbearbeitung, "
                                         "Funktionstyp, delim, textdelim, Header, id, Konverter "
                                         "FROM zvbAutoImport ORDER BY rowid"));
    while (q.next()) {
        RegistryEntry e;
        e.rowId = q.value(0).toLongLong();
        e.fileName = q.value(1).toString();
        e.version = q.value(2);
        e.table = q.value(3).toString();
        e.preparation = q.value(4).toString();
        e.kind = ToInteger(q.value(5));
        e.separator = q.value(6);
        e.textDelimiter = q.value(7);
        e.header = ToFlag(q.value(8), false);
        e.layoutId = ToLong(q.value(9));
        e.converter = q.value(10).toString();
        entries.push_back(e);
    }
    return entries;
}

// The file's modification time to the second, as VersionsDatum keeps it: a file whose time has
// only a fraction of a second beyond the stored one is the file imported before.
QDateTime fileTimeOf(const QFileInfo& info) {
    const QDateTime t = info.lastModified();
    return t.addMSecs(-t.time().msec());
}

void runStatement(const QString& statement) {
    Progress& progress = appProgress();
    progress.status(QStringLiteral("Bereite die alte Tabelle vor..."));
    execSql(statement);
    progress.status(QString());
}

// Points out a table that was empty, became empty or changed by more than ten per cent. The
// comparison is made in whole numbers: 100 to 110 rows is exactly ten per cent and says nothing.
void judgeCounts(const QString& table, int oldCount, int newCount) {
    if (oldCount == 0)
        ShowMessage(Msg::Autoimport_NoData, MsgBox::Exclamation, {table});
    else if (newCount == 0)
        ShowMessage(Msg::Autoimport_NoDataAnymore, MsgBox::Exclamation, {table});
    else if (10LL * qAbs(qint64(newCount) - oldCount) > oldCount)
        ShowMessage(Msg::Autoimport_RecordCountDifference, MsgBox::Information, {table, oldCount, newCount});
}

} // namespace

qint16 ZVBAutoImport() {
    qint16 imported = 0;
    RunReported(QStringLiteral("ZVBAutoImport"), [&] {
        // On a shared pool one workstation imports; one starting meanwhile waits, then finds the
        // files already imported.
        const PoolLock oneAtATime(PoolLockKey::AutoImport);
        const QVector<RegistryEntry> entries = readRegistry();
        Progress& progress = appProgress();
        bool definitionsChanged = false;
        for (const RegistryEntry& e : entries) {
            QString relative = e.fileName;
            relative.replace(QLatin1Char('\\'), QLatin1Char('/'));
            const QFileInfo info(homePath(relative));
            if (relative.isEmpty() || !info.isFile())
                continue;
            const QDateTime fileTime = fileTimeOf(info);
            const QDateTime stored = ToDateTime(e.version);
            if (stored.isValid() && fileTime <= stored)
                continue;

            progress.status(QStringLiteral("Importiere neue Tabelle '") + e.table + QStringLiteral("'..."));
            requireColumn(e.table);
            const int oldCount = CountRows(QStringLiteral("*"), e.table, QString());
            runCommittingBatch([&] {
                if (!e.preparation.isEmpty())
                    runStatement(e.preparation);
                if (e.kind == 2)
                    auto_FesteBreite(info.filePath(), e.table, e.layoutId, e.header);
                else
                    auto_standard(info.filePath(), e.table, Nz(e.separator, QStringLiteral(";")).toString(),
                                  Nz(e.textDelimiter, QString()).toString(), e.header);
                ++imported;
                execSql(QStringLiteral("UPDATE zvbAutoImport SET VersionsDatum=? WHERE rowid=?"),
                        {fileTime.toString(QStringLiteral("yyyy-MM-dd HH:mm:ss")), e.rowId});
                if (!e.converter.isEmpty())
                    runStatement(e.converter);
            });
            const int newCount = CountRows(QStringLiteral("*"), e.table, QString());
            progress.status(QString());
            judgeCounts(e.table, oldCount, newCount);
            if (e.table.compare(QLatin1String("ZVBFelder"), Qt::CaseInsensitive) == 0)
                definitionsChanged = true;
        }
        if (imported > 0) {
            // The stored records were checked against the old master data; check them again. The
            // checks need the field definitions, read afresh when they were among the new tables.
            if (definitionsChanged || FelderArray().count() == 0)
                FelderArray().Fill();
            recheckRecords(-1);
        }
    });
    appProgress().status(QString());
    return imported;
}
