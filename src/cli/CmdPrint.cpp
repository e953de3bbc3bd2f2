// SPDX-License-Identifier: Apache-2.0
// veridon-cli print: prints the report of one stored record as the main window's print command
// does: refused while a field fails its checks, the record's workflow state unchanged.

#include "CliCommand.h"
#include "ReportOptions.h"
#include "app/Database.h"
#include "app/mdlDB.h"
#include "app/mdlMessages.h"
#include "model/FormModel.h"
#include "print/mdlPrint.h"

namespace {

const CliCommand& command() {
    return *CliRegistry::find(QStringLiteral("print"));
}

int runPrint(CliContext& c) {
    ReportOptions options;
    QString problem;
    if (!options.parse(c.args, problem))
        return usageError(c, command(), problem);
    bool ok = false;
    const qint32 lfdNr = c.args.size() == 1 ? c.args.first().toInt(&ok) : 0;
    if (!ok || lfdNr < 0)
        return usageError(c, command(), QStringLiteral("genau eine LfdNr erwartet"));

    FelderArray().Fill();
    {
        QSqlQuery q =
            execSql(QStringLiteral("SELECT * FROM ") + GetValuesTable() + QStringLiteral(" WHERE LfdNr=?"), {lfdNr});
        if (!q.next()) {
            const QString text = QStringLiteral("Der Datensatz mit der LfdNr %1 ist nicht vorhanden.").arg(lfdNr);
            WriteLog(QStringLiteral("print"), text);
            c.err << text << '\n';
            return Exit::Failure;
        }
        WerteArray().Fill(q);
    }
    options.install();
    const int errorsBefore = c.presenter.errorCount();
    const bool printed = PrintCommand(lfdNr);
    WerteArray().Clear();
    if (!options.pdfFolder().isEmpty())
        c.out << options.pdfFiles().size() << " Berichtsseite(n) als PDF in " << options.pdfFolder() << '\n';
    return printed && c.presenter.errorCount() == errorsBefore ? Exit::Ok : Exit::Failure;
}

const CliRegistration registration({"print", "LFDNR [--pdf ORDNER] [--report ambulant|stationaer|kein]",
                                    "druckt den Bericht eines gespeicherten Datensatzes (nur wenn er fehlerfrei ist)",
                                    runPrint, true, true});

} // namespace
