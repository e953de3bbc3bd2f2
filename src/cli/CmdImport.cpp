// SPDX-License-Identifier: Apache-2.0
// veridon-cli import: takes an evaluation result file into zvbWerte, as the scan does after the
// evaluation run, and tells how many records came in.

#include "CliCommand.h"
#include "import/mdlImport.h"

#include <QFileInfo>

namespace {

int runImport(CliContext& c) {
    if (c.args.size() != 1)
        return usageError(c, *CliRegistry::find(QStringLiteral("import")), QStringLiteral("genau eine Datei erwartet"));
    const QFileInfo file(c.args.first());
    // The scan imports only a file that is there; a missing one is a mistyped name, not a conflict
    // with another workstation.
    if (!file.isFile()) {
        c.err << "veridon-cli import: Datei '" << c.args.first() << "' nicht gefunden\n";
        return Exit::Failure;
    }
    const int imported = ImportZVBWerte(file.absoluteFilePath());
    if (imported < 0) {
        c.err << "veridon-cli import: Import abgebrochen, siehe Meldung und zvMsgLog.txt\n";
        return Exit::Failure;
    }
    c.out << imported << (imported == 1 ? " Datensatz" : " Datensätze") << " importiert\n";
    return Exit::Ok;
}

const CliRegistration registration({"import", "DATEI",
                                    "importiert eine Ergebnisdatei der Auswertung nach zvbWerte (Status 10)",
                                    runImport});

} // namespace
