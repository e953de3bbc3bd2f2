// veridon-cli info: what the home holds, table by table.

#include "CliCommand.h"
#include "app/Home.h"
#include "app/mdlDB.h"
#include "app/mdlMessages.h"
#include "model/Schema.h"

namespace {

int runInfo(CliContext& c) {
    c.out << "Home:      " << homeDir() << '\n'
          << "Datenbank: " << GetDBPath() << '\n'
          << "Sprache:   " << GetLanguage() << '\n'
          << "Trenner:   " << GetIniValue(QStringLiteral("Beleg"), QStringLiteral("Trenner")) << '\n'
          << "Arbeitsplatz: " << GetKorrID() << "\n\n";
    for (const QString& table : schemaTables())
        c.out << table.leftJustified(28) << CountRows(QStringLiteral("*"), table, QString()) << '\n';
    return Exit::Ok;
}

const CliRegistration registration({"info", "", "zeigt Home, Sprache und die Tabellen mit ihrer Zeilenzahl", runInfo});

} // namespace
