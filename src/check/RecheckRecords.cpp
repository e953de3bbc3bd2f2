// SPDX-License-Identifier: Apache-2.0
#include "RecheckRecords.h"

#include "mdlCheck.h"

#include "app/Database.h"
#include "app/mdlDB.h"
#include "model/FormModel.h"

int recheckRecords(qint32 lfdNr, const std::function<void(const RecheckedRecord&)>& onRecord) {
    const QString select = QStringLiteral("SELECT * FROM %1").arg(GetValuesTable());
    Transaction transaction;
    QSqlQuery rows = lfdNr < 0 ? execSql(select + QStringLiteral(" ORDER BY LfdNr"))
                               : execSql(select + QStringLiteral(" WHERE LfdNr=?"), {lfdNr});
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
