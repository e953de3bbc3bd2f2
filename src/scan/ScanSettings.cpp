// SPDX-License-Identifier: Apache-2.0
#include "ScanSettings.h"

#include "app/Database.h"
#include "app/Settings.h"
#include "app/mdlDB.h"

#include <QSqlQuery>

QString chosenScanDevice() {
    return setting<Setting::Scan_Geraet>();
}

void chooseScanDevice(const QString& device) {
    setSetting<Setting::Scan_Geraet>(device);
}

QString scanDeviceToUse(const QList<ScanDevice>& present) {
    const QString chosen = chosenScanDevice();
    for (const ScanDevice& d : present)
        if (d.name == chosen)
            return chosen;
    return present.isEmpty() ? QString() : present.first().name;
}

QList<QPair<QString, QString>> storedScanOptions(const QString& device) {
    QList<QPair<QString, QString>> options;
    QSqlQuery q =
        execSql(QStringLiteral("SELECT Name, Wert FROM zvbScanOptionen WHERE Geraet=? ORDER BY rowid"), {device});
    while (q.next())
        options.append({q.value(0).toString(), q.value(1).toString()});
    return options;
}

void storeScanOptions(const QString& device, const QList<QPair<QString, QString>>& options) {
    execSql(QStringLiteral("DELETE FROM zvbScanOptionen WHERE Geraet=?"), {device});
    for (const auto& [name, value] : options)
        execSql(QStringLiteral("INSERT INTO zvbScanOptionen (Geraet, Name, Wert) VALUES (?, ?, ?)"),
                {device, name, value});
}

QStringList applyScanDefaults(Scanner& scanner, const QString& device) {
    QStringList refused;
    QList<QPair<QString, QString>> wanted;
    for (const ScanOption& o : scanner.options()) {
        const auto pick = [&](auto matches) {
            for (const QString& c : o.choices)
                if (matches(c))
                    return wanted.append({o.name, c});
        };
        if (o.name == QLatin1String("source"))
            pick([](const QString& c) {
                return c.contains(QLatin1String("Feeder"), Qt::CaseInsensitive) || c.contains(QLatin1String("ADF"));
            });
        else if (o.name == QLatin1String("mode"))
            // Bitonal is "Lineart" on most devices; others give it as grey at depth 1.
            pick([&](const QString& c) {
                return c.compare(QLatin1String("Lineart"), Qt::CaseInsensitive) == 0 ||
                       (!o.choices.contains(QLatin1String("Lineart"), Qt::CaseInsensitive) &&
                        c.compare(QLatin1String("Gray"), Qt::CaseInsensitive) == 0);
            });
        else if (o.name == QLatin1String("depth"))
            pick([](const QString& c) { return c == QLatin1String("1"); });
        else if (o.name == QLatin1String("resolution") &&
                 (o.choices.contains(QLatin1String("200")) || (o.minimum <= 200 && o.maximum >= 200)))
            wanted.append({o.name, QStringLiteral("200")});
        else if (o.name == QLatin1String("page-size"))
            pick([](const QString& c) { return c == QLatin1String("A4"); });
    }
    wanted += storedScanOptions(device);
    for (const auto& [name, value] : wanted) {
        QString error;
        if (!scanner.setOption(name, value, error))
            refused.append(error);
    }
    return refused;
}
