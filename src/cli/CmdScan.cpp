// SPDX-License-Identifier: Apache-2.0
// veridon-cli scan: the scan button without windows. Scans every page of the device into the scan
// folder, runs the evaluation program, empties a local pool, imports the result and prints the
// records taken in (LfdNr, image, surname). Faults of the scanner are printed as the window shows
// them, and the pages saved before are evaluated all the same.

#include "CliCommand.h"
#include "app/Database.h"
#include "scan/ScanSequence.h"

#include <QSqlQuery>

namespace {

int runScan(CliContext& c) {
    const CliCommand& self = *CliRegistry::find(QStringLiteral("scan"));
    ScanRequest request;
    QString resolution;
    if (!takeOption(c.args, QStringLiteral("--device"), request.device) ||
        !takeOption(c.args, QStringLiteral("--source"), request.source) ||
        !takeOption(c.args, QStringLiteral("--resolution"), resolution))
        return usageError(c, self, QStringLiteral("Option ohne Wert"));
    if (!c.args.isEmpty())
        return usageError(c, self, QStringLiteral("unbekanntes Argument '%1'").arg(c.args.first()));
    if (!request.source.isEmpty() && request.source != QLatin1String("adf") &&
        request.source != QLatin1String("flatbed"))
        return usageError(c, self, QStringLiteral("--source ist adf oder flatbed"));
    bool ok = true;
    if (!resolution.isEmpty()) {
        request.resolution = resolution.toInt(&ok);
        if (!ok || request.resolution <= 0)
            return usageError(c, self, QStringLiteral("--resolution erwartet dpi"));
    }

    const int errorsBefore = c.presenter.errorCount();
    std::unique_ptr<Scanner> scanner = makeScanner();
    ScanObserver quiet;
    const ScanRun run = RunScanSequence(*scanner, request, quiet);
    if (run.pages > 0)
        c.err << "Gescannte Seiten: " << run.pages << '\n';
    if (run.imported) {
        QSqlQuery q =
            execSql(QStringLiteral("SELECT LfdNr, BMPName, NACHNAME FROM zvbWerte WHERE LfdNr > ? ORDER BY LfdNr"),
                    {run.lastRecordBefore});
        while (q.next())
            c.out << q.value(0).toString() << '\t' << q.value(1).toString() << '\t' << q.value(2).toString() << '\n';
    } else if (!run.pagesInFolder) {
        c.err << "Keine Seiten im Scanordner: nichts ausgewertet.\n";
    }
    const bool scannerFault = !run.deviceFound || (run.end != ScanEnd::Done && run.end != ScanEnd::Cancelled);
    return scannerFault || (run.imported && run.importedRows < 0) || c.presenter.errorCount() != errorsBefore
               ? Exit::Failure
               : Exit::Ok;
}

const CliRegistration registration({"scan", "[--device NAME] [--source adf|flatbed] [--resolution DPI]",
                                    "scannt alle Seiten, wertet sie aus und importiert sie; druckt die neuen Belege",
                                    runScan});

} // namespace
