// SPDX-License-Identifier: Apache-2.0
// veridon-cli check: re-checks stored records as the import does after master data changed, and
// prints each record's result and status string.

#include "CliCommand.h"
#include "app/mdlMessages.h"
#include "check/RecheckRecords.h"
#include "model/FormModel.h"

namespace {

const CliCommand& command() {
    return *CliRegistry::find(QStringLiteral("check"));
}

int runCheck(CliContext& c) {
    const bool showErrors = takeFlag(c.args, QStringLiteral("--errors"));
    if (c.args.size() > 1)
        return usageError(c, command(), QStringLiteral("höchstens ein Datensatz erwartet"));
    qint32 lfdNr = -1;
    const QString which = c.args.isEmpty() ? QStringLiteral("all") : c.args.first();
    if (which != QLatin1String("all")) {
        bool ok = false;
        lfdNr = which.toInt(&ok);
        if (!ok || lfdNr < 0)
            return usageError(c, command(), QStringLiteral("'%1' ist weder \"all\" noch eine LfdNr").arg(which));
    }
    FelderArray().Fill();
    const int checked = recheckRecords(lfdNr, [&](const RecheckedRecord& r) {
        c.out << r.lfdNr << '\t' << r.result << '\t' << r.fehlerhaft << '\n';
        if (showErrors)
            for (const QString& line : r.errorText.split(QStringLiteral("\r\n"), Qt::SkipEmptyParts))
                c.out << "    " << line << '\n';
    });
    if (lfdNr >= 0 && checked == 0) {
        const QString problem = QStringLiteral("Der Datensatz mit der LfdNr %1 ist nicht vorhanden.").arg(lfdNr);
        WriteLog(QStringLiteral("check"), problem);
        c.out.flush();
        c.err << problem << '\n';
        return Exit::Failure;
    }
    return Exit::Ok;
}

const CliRegistration registration({"check", "[all|LFDNR] [--errors]",
                                    "prüft gespeicherte Datensätze neu: LfdNr, Ergebnis (0, 2, 3) und Fehlerhaft;"
                                    " --errors zeigt die Fehlertexte",
                                    runCheck});

} // namespace
