// SPDX-License-Identifier: Apache-2.0
// veridon-cli autoimport: the automatic import of system tables, as at start.

#include "CliCommand.h"
#include "model/FormModel.h"
#include "workflow/mdlAutoImport.h"

namespace {

int runAutoimport(CliContext& c) {
    if (!c.args.isEmpty())
        return usageError(c, *CliRegistry::find(QStringLiteral("autoimport")),
                          QStringLiteral("unerwartetes Argument '%1'").arg(c.args.first()));
    const int errorsBefore = c.presenter.errorCount();
    // The stored records are checked again after an import; the checks need the field definitions.
    FelderArray().Fill();
    const qint16 tables = ZVBAutoImport();
    c.out << tables << " Systemtabelle(n) neu eingelesen\n";
    return c.presenter.errorCount() > errorsBefore ? Exit::Failure : Exit::Ok;
}

const CliRegistration registration({"autoimport", "",
                                    "liest neuere Stammdatendateien (zvbAutoImport) in ihre Tabellen ein",
                                    runAutoimport});

} // namespace
