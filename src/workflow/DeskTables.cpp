// SPDX-License-Identifier: Apache-2.0
// The field order and hot-key tables of the correction desk (see DeskTables.h).

#include "DeskTables.h"

#include "app/Database.h"
#include "app/PoolConnection.h"
#include "app/mdlDB.h"

#include <QSqlQuery>
#include <QVariant>

void StoreFieldOrder(const QList<FieldPlace>& places) {
    const PoolLock oneAtATime(PoolLockKey::FormFields);
    Transaction batch;
    execSql(QStringLiteral("DELETE * FROM ZVBForm_Felder"));
    for (const FieldPlace& place : places)
        execSql(QStringLiteral("INSERT INTO ZVBForm_Felder (FeldNr, ReihenfolgeNr) VALUES (?, ?)"),
                {place.field, place.position});
    batch.commit();
}

QList<FieldPlace> ReadFieldOrder(bool backwards) {
    QSqlQuery rows = execSql(backwards ? QStringLiteral("SELECT * FROM ZVBForm_Felder ORDER BY ReihenfolgeNr DESC;")
                                       : QStringLiteral("SELECT * FROM ZVBForm_Felder ORDER BY ReihenfolgeNr;"));
    QList<FieldPlace> places;
    while (rows.next())
        places.append(
            {rows.value(QStringLiteral("FeldNr")).toString(), rows.value(QStringLiteral("ReihenfolgeNr")).toInt()});
    return places;
}

std::optional<StoredHotKey> ReadHotKey(qint32 keyId) {
    QSqlQuery row =
        execSql(QStringLiteral("SELECT KeyAscii, KeyCode FROM zvbSysKeys WHERE KeyID = ") + QString::number(keyId));
    if (!row.next())
        return std::nullopt;
    return StoredHotKey{row.value(0).toInt(), row.value(1).toInt()};
}

int WaitingRecordCount() {
    return CountRows(QStringLiteral("LfdNr"), GetValuesTable(), QStringLiteral("Workflow_Status=10"));
}
