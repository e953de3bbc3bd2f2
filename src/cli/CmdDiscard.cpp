// SPDX-License-Identifier: Apache-2.0
// veridon-cli discard: deletes a record and its bare-named image, as "Verwerfen" in the main window
// does. The command itself is the confirmation, so no question is asked.

#include "CliCommand.h"
#include "app/mdlDB.h"
#include "workflow/mdlWorkflow.h"

namespace {

int runDiscard(CliContext& c) {
    const CliCommand& self = *CliRegistry::find(QStringLiteral("discard"));
    bool ok = false;
    const qint32 number = c.args.size() == 1 ? c.args.first().toInt(&ok) : 0;
    if (!ok || number < 0)
        return usageError(c, self, QStringLiteral("genau eine LfdNr erwartet"));
    if (!ClaimRecord(number, GetKorrID())) {
        c.err << ClaimRefusal(number) << '\n';
        return Exit::Failure;
    }
    if (!LoadRecord(number) || !DiscardRecord(number, true))
        return Exit::Failure;
    c.out << "Beleg " << number << " verworfen\n";
    return Exit::Ok;
}

const CliRegistration registration({"discard", "LFDNR", "verwirft einen Beleg und löscht sein Bild", runDiscard});

} // namespace
