// SPDX-License-Identifier: Apache-2.0
#include "RecheckRecords.h"

#include "mdlCheck.h"

#include "app/Database.h"
#include "app/mdlDB.h"
#include "model/FormModel.h"

int recheckRecords(qint32 lfdNr, const std::function<void(const RecheckedRecord&)>& onRecord) {
    const QString select = QStringLiteral("SELECT * FROM %1").arg(GetValuesTable());
    // Each record is written back whole: it is read only once no other workstation is changing it.
    const QString locked = forUpdateClause(select);
    Transaction transaction;
    QSqlQuery rows = lfdNr < 0 ? execSql(select + QStringLiteral(" ORDER BY LfdNr") + locked)
                               : execSql(select + QStringLiteral(" WHERE LfdNr=?") + locked, {lfdNr});
    int checked = 0;
    ZVBWerteArray& werte = WerteArray();
    while (rows.next()) {
        RecheckedRecord record;
        werte.Fill(rows);
        record.lfdNr = werte.GetValue(QStringLiteral("LfdNr")).toInt();
        record.result = Check(QStringLiteral("all"), record.errorText);
        werte.EmptyArray(record.lfdNr);
        record.fehlerhaft = werte.GetValue(QStringLiteral("Fehlerhaft"));
        ++checked;
        if (onRecord)
            onRecord(record);
    }
    rows.finish();
    werte.Clear();
    transaction.commit();
    return checked;
}
