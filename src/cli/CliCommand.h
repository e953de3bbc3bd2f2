// SPDX-License-Identifier: Apache-2.0
// The command table of veridon-cli. Each command lives in a file of its own and registers itself
// with a static CliRegistration, so adding a command touches no other file.
#pragma once

#include "app/MessagePresenter.h"

#include <QStringList>
#include <QTextStream>
#include <vector>

namespace Exit {
inline constexpr int Ok = 0;
inline constexpr int Failure = 1; // a failure the program reported
inline constexpr int Usage = 2;   // the command line was wrong
} // namespace Exit

struct CliContext {
    QStringList args; // the command's own arguments, after the command name
    QTextStream& out;
    QTextStream& err;
    ConsolePresenter& presenter; // answers questions as --yes/--no said
    bool answerYes = false;
    bool answerNo = false;
};

struct CliCommand {
    const char* name;
    const char* usage;   // arguments, e.g. "[--demo] [--force]"
    const char* summary; // one line for --help
    int (*run)(CliContext&);
    bool needsDatabase = true; // false: runs before a data.mdb exists
    bool needsGui = false;     // true: paints (reports), so it runs with a Qt Gui application
};

class CliRegistry {
public:
    static void add(const CliCommand& command);
    static const std::vector<CliCommand>& all();
    static const CliCommand* find(const QString& name);
};

struct CliRegistration {
    explicit CliRegistration(const CliCommand& command) { CliRegistry::add(command); }
};

// Takes "--name" from args when present; true when it was there.
bool takeFlag(QStringList& args, const QString& name);
// Takes "--name VALUE" from args; value is left alone when absent. False when the value is missing.
bool takeOption(QStringList& args, const QString& name, QString& value);
// Prints "veridon-cli NAME USAGE" for a wrong command line and returns Exit::Usage.
int usageError(CliContext& context, const CliCommand& command, const QString& problem);
