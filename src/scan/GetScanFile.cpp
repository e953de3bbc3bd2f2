// SPDX-License-Identifier: Apache-2.0
#include "GetScanFile.h"

#include "app/Clock.h"
#include "app/Errors.h"
#include "app/Home.h"
#include "app/mdlDB.h"
#include "app/mdlMessages.h"

#include <QFileInfo>

namespace {

QString hex(qint32 n) {
    return QString::number(n, 16).toUpper();
}

} // namespace

QString GetScanFile() {
    const QString folder = withTrailingSlash(GetSysText(QStringLiteral("Scan_Pfad")));
    qint16 day = ToInteger(GetSysValue(QStringLiteral("Scan_TagDesJahres")));
    const QString workstation = GetSysText(QStringLiteral("Scan_RechnerId"));

    // Only the day number is compared: the same day of the next year goes on with the old counter.
    const qint16 today = qint16(appClock().today().dayOfYear());
    if (today != day) {
        SetSysValues(QStringLiteral("Scan_NrDesTages"), 1, QStringLiteral("Scan_TagDesJahres"), today);
        day = today;
    }

    qint32 n = ToInteger(GetSysValue(QStringLiteral("Scan_NrDesTages")));
    QString name;
    do {
        if (hex(n).size() <= 4)
            name = folder + QStringLiteral("%1").arg(day, 3, 10, QLatin1Char('0')) + workstation +
                   hex(n).rightJustified(4, QLatin1Char('0')) + QStringLiteral(".tif");
        // The counter is a 16-bit number in the settings row; past its end there is no next name.
        if (n >= 32767)
            throw VeridonError(ErrorNumber::Overflow, Msg::ErrOverflow);
        ++n;
    } while (QFileInfo::exists(name) && hex(n).size() <= 4);

    // With a 16-bit counter the overflow above comes first; the check stays should the counter
    // ever be widened.
    if (hex(n).size() > 4)
        WriteLog(QStringLiteral("GetScanFile()"), QStringLiteral("To many files per Day!"));

    SetSysValue(QStringLiteral("Scan_NrDesTages"), n);
    return name;
}
