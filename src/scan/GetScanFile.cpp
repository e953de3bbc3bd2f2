// SPDX-License-Identifier: Apache-2.0
#include "GetScanFile.h"

#include "app/Clock.h"
#include "app/Errors.h"
#include "app/Home.h"
#include "app/Settings.h"
#include "app/mdlDB.h"
#include "app/mdlMessages.h"

#include <QFileInfo>

namespace {

QString hex(qint32 n) {
    return QString::number(n, 16).toUpper();
}

} // namespace

QString GetScanFile() {
    const QString folder = withTrailingSlash(setting<Setting::Scan_Pfad>());
    qint16 day = setting<Setting::Scan_TagDesJahres>();
    const QString workstation = setting<Setting::Scan_RechnerId>();

    // Only the day number is compared: the same day of the next year goes on with the old counter.
    const qint16 today = qint16(appClock().today().dayOfYear());
    if (today != day) {
        SetSysValues(settingName(Setting::Scan_NrDesTages), 1, settingName(Setting::Scan_TagDesJahres), today);
        day = today;
    }

    qint32 n = setting<Setting::Scan_NrDesTages>();
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

    setSetting<Setting::Scan_NrDesTages>(qint16(n));
    return name;
}
