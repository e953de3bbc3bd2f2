// SPDX-License-Identifier: Apache-2.0
// German texts for Qt's command-line parser: the usage line, its section titles, the help and
// version options and its error messages, so that `--help` and a refused option read like the rest
// of the programs. Qt's own translations are not among the programs' dependencies.
#pragma once

#include <QString>
#include <QStringList>

class QCommandLineParser;

// Installs the texts into the running application (call once, after it is created). Other texts of
// Qt are left as they are.
void installCommandLineTexts();

// The parser's help text with the program's file name in the usage line, where Qt writes the path
// the program was started by.
QString commandLineHelp(const QCommandLineParser& parser);

// Ends a program whose parser has the help and version options where its command line says so:
// refused (the parser's error or the caller's own) on standard error with exit code 1; --help-all,
// --help or --version on standard output with exit code 0. program names the program in both.
// Returns when the program should go on.
void endOnRefusalHelpOrVersion(QCommandLineParser& parser, const QStringList& words, const QString& refused,
                               const char* program);
