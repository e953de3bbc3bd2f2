// SPDX-License-Identifier: Apache-2.0
// veridon-cli housekeeping: the start-up steps that need no window (field definitions, colours,
// daily clean-up, automatic import of system tables), for workstations started by scripts.

#include "CliCommand.h"
#include "app/Settings.h"
#include "app/mdlDB.h"
#include "workflow/mdlStart.h"

namespace {

int runHousekeeping(CliContext& c) {
    if (!c.args.isEmpty())
        return usageError(c, *CliRegistry::find(QStringLiteral("housekeeping")),
                          QStringLiteral("unerwartetes Argument '%1'").arg(c.args.first()));
    const int errorsBefore = c.presenter.errorCount();
    RunStartupSteps();
    c.out << "Start-Schritte ausgeführt; zuletzt geöffnet: "
          << setting<Setting::APP_LastOpened>().toString(QStringLiteral("dd.MM.yyyy HH:mm:ss")) << '\n';
    return c.presenter.errorCount() > errorsBefore ? Exit::Failure : Exit::Ok;
}

const CliRegistration registration({"housekeeping", "",
                                    "Start-Schritte ohne Fenster: Farben, tägliches Aufräumen, Import der "
                                    "Systemtabellen",
                                    runHousekeeping});

} // namespace
