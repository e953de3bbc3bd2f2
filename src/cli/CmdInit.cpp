// veridon-cli init: creates a complete home.

#include "CliCommand.h"
#include "app/Errors.h"
#include "app/Home.h"
#include "app/Workspace.h"

namespace {

int runInit(CliContext& c) {
    const bool demo = takeFlag(c.args, QStringLiteral("--demo"));
    const bool force = takeFlag(c.args, QStringLiteral("--force"));
    if (!c.args.isEmpty())
        return usageError(c, *CliRegistry::find(QStringLiteral("init")), QStringLiteral("unerwartetes Argument"));
    try {
        initHome(homeDir(), demo, force);
    } catch (const VeridonError& e) {
        if (e.number() != HomeExistsError)
            throw;
        c.err << e.description() << '\n';
        return Exit::Usage;
    }
    c.out << "Home angelegt: " << homeDir() << (demo ? " (mit Demo-Daten)" : "") << '\n';
    return Exit::Ok;
}

const CliRegistration registration({"init", "[--demo] [--force]",
                                    "legt data.mdb, tarnvel.ini, default.xml und die Arbeitsordner an", runInit,
                                    false});

} // namespace
