// SPDX-License-Identifier: Apache-2.0
// veridon-cli info: what the home holds, table by table.

#include "CliCommand.h"
#include "app/Home.h"
#include "app/PoolConnection.h"
#include "app/PoolRouting.h"
#include "app/mdlDB.h"
#include "app/mdlMessages.h"
#include "model/Schema.h"

namespace {

int runInfo(CliContext& c) {
    c.out << "Home:      " << homeDir() << '\n'
          << "Datenbank: " << GetDBPath() << '\n'
          << "Sprache:   " << GetLanguage() << '\n'
          << "Trenner:   " << GetIniValue(QStringLiteral("Beleg"), QStringLiteral("Trenner")) << '\n'
          << "Arbeitsplatz: " << GetKorrID() << '\n';
    const QString pool = homePoolUri();
    if (!pool.isEmpty())
        c.out << "Belegpool: " << pool << '\n';
    c.out << '\n';
    // Where each table lives: on a pool workstation the pool and the master data are on the server.
    for (const QString& table : schemaTables()) {
        const bool onServer = !pool.isEmpty() && storeOfTable(table) == TableStore::Pool;
        c.out << table.leftJustified(28)
              << QString::number(CountRows(QStringLiteral("*"), table, QString())).leftJustified(8)
              << (onServer ? "Server" : "data.mdb") << '\n';
    }
    return Exit::Ok;
}

const CliRegistration registration({"info", "", "zeigt Home, Sprache und die Tabellen mit ihrer Zeilenzahl", runInfo});

} // namespace
