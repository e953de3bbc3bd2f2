// SPDX-License-Identifier: Apache-2.0
// veridon-cli stats: the operator statistics of the last days, one line per day and workstation, as
// the hand-overs and discards of the windows and of this tool have counted them.

#include "CliCommand.h"
#include "admin/OperatorStats.h"

namespace {

QString decimal(double value) {
    return QString::number(value, 'f', 1).replace(QLatin1Char('.'), QLatin1Char(','));
}

int runStats(CliContext& c) {
    const CliCommand& self = *CliRegistry::find(QStringLiteral("stats"));
    QString daysText = QStringLiteral("7");
    if (!takeOption(c.args, QStringLiteral("--days"), daysText))
        return usageError(c, self, QStringLiteral("--days braucht eine Anzahl von Tagen"));
    bool ok = false;
    const int days = daysText.toInt(&ok);
    if (!ok || days < 1 || days > 3660 || !c.args.isEmpty())
        return usageError(c, self, QStringLiteral("--days erwartet 1 bis 3660 Tage"));
    const QVector<OperatorDay> found = readOperatorDays(days);
    if (found.isEmpty()) {
        c.out << "Keine Statistik in den letzten " << days << " Tagen.\n";
        return Exit::Ok;
    }
    c.out << "Datum\tArbeitsplatz\tÜbergeben\tVerworfen\tFelder korrigiert\tAnschläge je Beleg\tBelege je Stunde\n";
    for (const OperatorDay& d : found)
        c.out << d.day.toString(QStringLiteral("dd.MM.yyyy")) << '\t' << d.workstation << '\t' << d.handedOver << '\t'
              << d.discarded << '\t' << d.fieldsCorrected << '\t' << decimal(d.keystrokesPerRecord()) << '\t'
              << decimal(d.recordsPerHour()) << '\n';
    return Exit::Ok;
}

const CliRegistration registration({"stats", "[--days N]",
                                    "Bedienerstatistik je Tag und Arbeitsplatz: übergeben, verworfen, korrigierte "
                                    "Felder, Anschläge je Beleg, Belege je Stunde (Standard: 7 Tage)",
                                    runStats});

} // namespace
