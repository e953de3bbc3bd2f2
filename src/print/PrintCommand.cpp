// SPDX-License-Identifier: Apache-2.0
// The print command of the main window, without the window: check, store, print.
#include "mdlPrint.h"

#include "app/Database.h"
#include "app/mdlDB.h"
#include "app/mdlMessages.h"
#include "check/mdlCheck.h"
#include "check/mdlCheckHelper.h"
#include "model/FormModel.h"

bool PrintCommand(qint32 lfdNr) {
    bool printed = false;
    RunReported(QStringLiteral("PrintCommand"), [&] {
        QString errorText;
        if (Check(QStringLiteral("all"), errorText) == CheckResult::Error) {
            ShowMessage(Msg::PrintDataUnchecked, MsgBox::Exclamation);
            return;
        }
        WerteArray().Save(lfdNr);
        QSqlQuery q = execSql(QStringLiteral("SELECT * FROM ") + GetValuesTable() + QStringLiteral(" WHERE LfdNr=") +
                              QString::number(lfdNr));
        if (!q.next())
            return;
        const QSqlRecord record = q.record();
        q.finish();
        PrintRecord(record);
        printed = true;
    });
    return printed;
}
