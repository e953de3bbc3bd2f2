// SPDX-License-Identifier: Apache-2.0
// veridon-cli next: takes the next waiting record for this workstation, as the main window does
// when it shows the next form, and prints its running number.

#include "CliCommand.h"
#include "workflow/mdlWorkflow.h"

namespace {

int runNext(CliContext& c) {
    if (!c.args.isEmpty())
        return usageError(c, *CliRegistry::find(QStringLiteral("next")), QStringLiteral("keine Argumente erwartet"));
    const int errorsBefore = c.presenter.errorCount();
    const qint32 number = TakeNextRecord();
    if (number < 0) {
        if (c.presenter.errorCount() == errorsBefore)
            c.err << "Kein Beleg wartet auf Korrektur.\n";
        return Exit::Failure;
    }
    c.out << number << '\n';
    return Exit::Ok;
}

const CliRegistration registration({"next", "",
                                    "übernimmt den nächsten wartenden Beleg für diesen Arbeitsplatz und druckt "
                                    "seine LfdNr (Exit 1: kein Beleg)",
                                    runNext});

} // namespace
