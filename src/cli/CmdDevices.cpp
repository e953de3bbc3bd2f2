// SPDX-License-Identifier: Apache-2.0
// veridon-cli devices: the scanners SANE finds, one per line: the name that `scan --device` and the
// scanner selection take, then what the device says it is.

#include "CliCommand.h"
#include "scan/ScanSettings.h"
#include "scan/Scanner.h"

namespace {

int runDevices(CliContext& c) {
    if (!c.args.isEmpty())
        return usageError(c, *CliRegistry::find(QStringLiteral("devices")), QStringLiteral("keine Argumente erwartet"));
    const QList<ScanDevice> devices = makeScanner()->devices();
    if (devices.isEmpty()) {
        c.err << "Kein Scanner gefunden.\n";
        return Exit::Failure;
    }
    const QString chosen = scanDeviceToUse(devices);
    for (const ScanDevice& d : devices)
        c.out << (d.name == chosen ? "* " : "  ") << d.name << "  " << d.label << '\n';
    return Exit::Ok;
}

const CliRegistration registration({"devices", "", "listet die Scanner; * markiert den Scanner dieses Arbeitsplatzes",
                                    runDevices});

} // namespace
