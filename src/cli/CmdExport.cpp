// SPDX-License-Identifier: Apache-2.0
// veridon-cli export: the export pass over every accepted record, printing reports on the printer
// or into PDF files.

#include "CliCommand.h"
#include "ReportOptions.h"
#include "app/Settings.h"
#include "app/mdlDB.h"
#include "export/mdlExport.h"

namespace {

// Records the pass takes: ready ones and those an interrupted pass left in 21 or 41.
int countReady() {
    return CountRows(QStringLiteral("*"), GetValuesTable(), QStringLiteral("Workflow_Status IN (20, 40, 21, 41)"));
}

int runExport(CliContext& c) {
    const CliCommand& self = *CliRegistry::find(QStringLiteral("export"));
    ReportOptions options;
    QString problem;
    if (!options.parse(c.args, problem))
        return usageError(c, self, problem);
    if (!c.args.isEmpty())
        return usageError(c, self, QStringLiteral("unerwartetes Argument '%1'").arg(c.args.first()));
    options.install();
    const int errorsBefore = c.presenter.errorCount();
    const int ready = countReady();
    ExportZVBWerte();
    const int exported = ready - countReady();
    c.out << exported << " Datensatz/Datensätze exportiert nach " << setting<Setting::Export_Pfad>() << '\n';
    if (!options.pdfFolder().isEmpty())
        c.out << options.pdfFiles().size() << " Berichtsseite(n) als PDF in " << options.pdfFolder() << '\n';
    return c.presenter.errorCount() > errorsBefore ? Exit::Failure : Exit::Ok;
}

const CliRegistration registration({"export", reportOptionsUsage,
                                    "exportiert alle übergebenen Datensätze als XML und druckt die Berichte", runExport,
                                    true, true, true});

} // namespace
