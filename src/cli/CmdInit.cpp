// SPDX-License-Identifier: Apache-2.0
// veridon-cli init: creates a complete home, on its own or as a workstation of a shared pool.

#include "CliCommand.h"
#include "app/Errors.h"
#include "app/Home.h"
#include "app/PoolConnection.h"
#include "app/mdlMessages.h"
#include "workflow/Workspace.h"

namespace {

int runInit(CliContext& c) {
    const CliCommand& self = *CliRegistry::find(QStringLiteral("init"));
    const bool demo = takeFlag(c.args, QStringLiteral("--demo"));
    const bool force = takeFlag(c.args, QStringLiteral("--force"));
    QString server;
    QString workstationText;
    if (!takeOption(c.args, QStringLiteral("--server"), server) ||
        !takeOption(c.args, QStringLiteral("--workstation"), workstationText))
        return usageError(c, self, QStringLiteral("Wert fehlt"));
    if (!c.args.isEmpty())
        return usageError(c, self, QStringLiteral("unerwartetes Argument"));
    bool numberOk = true;
    const int workstation = workstationText.isEmpty() ? 1 : workstationText.toInt(&numberOk);
    if (!numberOk || workstation < 1 || workstation > 32767)
        return usageError(c, self, QStringLiteral("--workstation braucht eine Zahl von 1 bis 32767"));
    if (!workstationText.isEmpty() && server.isEmpty())
        return usageError(c, self, QStringLiteral("--workstation gilt nur mit --server"));
    if (!server.isEmpty() && !isPoolUri(server))
        return usageError(c, self, QStringLiteral("--server erwartet postgresql://benutzer@rechner:port/datenbank"));
    try {
        if (server.isEmpty()) {
            initHome(homeDir(), demo, force);
        } else {
            const PoolJoin join = initPoolHome(homeDir(), server, qint16(workstation), demo, force);
            c.out << (join.createdPool ? "Belegpool auf dem Server angelegt: " : "Mit dem Belegpool verbunden: ")
                  << server << " (Arbeitsplatz " << workstation << ")\n";
        }
    } catch (const VeridonError& e) {
        if (e.number() != HomeExistsError)
            throw;
        c.err << RuntimeErrorDetail(e) << '\n';
        return Exit::Usage;
    }
    c.out << "Home angelegt: " << homeDir() << (demo ? " (mit Demo-Daten)" : "") << '\n';
    return Exit::Ok;
}

const CliRegistration registration({"init", "[--demo] [--force] [--server URI [--workstation N]]",
                                    "legt data.mdb, tarnvel.ini, default.xml und die Arbeitsordner an; mit --server "
                                    "als Arbeitsplatz eines gemeinsamen Belegpools",
                                    runInit, false});

} // namespace
