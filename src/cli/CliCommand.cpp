// SPDX-License-Identifier: Apache-2.0
#include "CliCommand.h"

#include <algorithm>

namespace {
std::vector<CliCommand>& table() {
    static std::vector<CliCommand> commands;
    return commands;
}
} // namespace

void CliRegistry::add(const CliCommand& command) {
    auto& commands = table();
    const auto at =
        std::lower_bound(commands.begin(), commands.end(), command,
                         [](const CliCommand& a, const CliCommand& b) { return qstrcmp(a.name, b.name) < 0; });
    commands.insert(at, command);
}

const std::vector<CliCommand>& CliRegistry::all() {
    return table();
}

const CliCommand* CliRegistry::find(const QString& name) {
    for (const CliCommand& c : table())
        if (name == QLatin1String(c.name))
            return &c;
    return nullptr;
}

bool takeFlag(QStringList& args, const QString& name) {
    return args.removeAll(name) > 0;
}

bool takeOption(QStringList& args, const QString& name, QString& value) {
    const qsizetype at = args.indexOf(name);
    if (at < 0)
        return true;
    if (at + 1 >= args.size())
        return false;
    value = args.at(at + 1);
    args.remove(at, 2);
    return true;
}

int usageError(CliContext& context, const CliCommand& command, const QString& problem) {
    context.err << "veridon-cli " << command.name << ": " << problem << "\n"
                << "Aufruf: veridon-cli " << command.name << ' ' << command.usage << "\n";
    context.err.flush();
    return Exit::Usage;
}
