// SPDX-License-Identifier: Apache-2.0
// veridon-cli: the workstation's procedures from the command line, for scripts, the demo and
// operators without a display.

#include "CliCommand.h"
#include "app/CommandLineTexts.h"
#include "app/Errors.h"
#include "app/Home.h"
#include "app/HomeLock.h"
#include "app/mdlMessages.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QGuiApplication>
#include <cstdio>
#include <memory>

namespace {

// The usage, the options (from the parser), the commands and the exit codes.
void printHelp(QTextStream& out, const QCommandLineParser& parser) {
    out << commandLineHelp(parser) << QString::fromUtf8("\nBefehle:\n");
    for (const CliCommand& c : CliRegistry::all()) {
        // A call too long for the column puts its summary on the next line, aligned.
        const QString head = QStringLiteral("  %1 %2").arg(QLatin1String(c.name), QLatin1String(c.usage));
        out << (head.size() > 44 ? head + QLatin1Char('\n') + QString(45, QLatin1Char(' ')) : head.leftJustified(45))
            << c.summary << '\n';
    }
    out << "\nExit-Code: 0 Erfolg, 1 gemeldeter Fehler, 2 falscher Aufruf.\n";
}

// The command named on the command line (the first word after the options), or nullptr.
const CliCommand* commandOf(int argc, char** argv) {
    for (int i = 1; i < argc; ++i) {
        const QString word = QString::fromLocal8Bit(argv[i]);
        if (word == QLatin1String("--home"))
            ++i;
        else if (!word.startsWith(QLatin1String("--")))
            return CliRegistry::find(word);
    }
    return nullptr;
}

// Commands that paint reports need fonts and therefore a Qt Gui application; the command line never
// shows a window, so it does without a display.
std::unique_ptr<QCoreApplication> makeApplication(int& argc, char** argv) {
    const CliCommand* command = commandOf(argc, argv);
    if (command && command->needsGui) {
        if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
            qputenv("QT_QPA_PLATFORM", "offscreen");
        return std::make_unique<QGuiApplication>(argc, argv);
    }
    return std::make_unique<QCoreApplication>(argc, argv);
}

} // namespace

int main(int argc, char** argv) {
    const std::unique_ptr<QCoreApplication> app = makeApplication(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("veridon-cli"));
    QCoreApplication::setApplicationVersion(QStringLiteral(VERIDON_VERSION));
    QTextStream out(stdout);
    QTextStream err(stderr);

    installCommandLineTexts();
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QString::fromUtf8("\nVeridon: Erfassung von EHIC-Belegen. Der Home-Ordner enthält data.mdb, tarnvel.ini,\n"
                          "default.xml und zvMsgLog.txt; ohne --home gilt $VERIDON_HOME, sonst der Programmordner."));
    // Everything after the command's name belongs to the command, options included.
    parser.setOptionsAfterPositionalArgumentsMode(QCommandLineParser::ParseAsPositionalArguments);
    const QCommandLineOption help = parser.addHelpOption();
    const QCommandLineOption version = parser.addVersionOption();
    const QCommandLineOption homeOption(QStringLiteral("home"), QStringLiteral("Home-Ordner"),
                                        QStringLiteral("ORDNER"));
    const QCommandLineOption yesOption(QStringLiteral("yes"), QString::fromUtf8("Antwort Ja auf Rückfragen"));
    const QCommandLineOption noOption(QStringLiteral("no"),
                                      QString::fromUtf8("Antwort Nein auf Rückfragen (ohne Angabe: Nein)"));
    parser.addOptions({homeOption, yesOption, noOption});
    parser.addPositionalArgument(QStringLiteral("befehl"),
                                 QString::fromUtf8("einer der Befehle unten, mit seinen Argumenten"),
                                 QStringLiteral("BEFEHL [ARGUMENTE]"));
    if (!parser.parse(QCoreApplication::arguments())) {
        err << "veridon-cli: " << parser.errorText() << " (--help zeigt die Aufrufe)\n";
        return Exit::Usage;
    }
    if (parser.isSet(QStringLiteral("help-all")))
        parser.process(QCoreApplication::arguments()); // prints Qt's options too and ends
    if (parser.isSet(help)) {
        printHelp(out, parser);
        return Exit::Ok;
    }
    if (parser.isSet(version)) {
        out << "veridon-cli " << VERIDON_VERSION << '\n';
        return Exit::Ok;
    }
    QStringList args = parser.positionalArguments();
    const QString home = parser.value(homeOption);
    const bool yes = parser.isSet(yesOption);
    const bool no = parser.isSet(noOption);
    if (args.isEmpty()) {
        printHelp(err, parser);
        return Exit::Usage;
    }
    if (yes && no) {
        err << "veridon-cli: --yes und --no schließen sich aus\n";
        return Exit::Usage;
    }
    const QString name = args.takeFirst();
    const CliCommand* command = CliRegistry::find(name);
    if (!command) {
        err << "veridon-cli: unbekannter Befehl '" << name << "' (--help zeigt die Befehle)\n";
        return Exit::Usage;
    }

    resolveHome(home);
    // A workflow command would take records from under the operator's hands: while the windows
    // hold this home it refuses. The shared lock is kept until the command ends, so the windows do
    // not start in the middle of it either.
    HomeLock homeLock(homeDir());
    if (command->workflow && homeLock.tryShared() == HomeLock::Result::Held) {
        const qint64 pid = homeLock.holderPid();
        err << "veridon-cli: Die Arbeitsumgebung " << homeDir() << " ist vom Programm veridon belegt"
            << (pid > 0 ? QStringLiteral(" (Prozess %1)").arg(pid) : QString()) << ". '" << name
            << "' wurde nicht ausgeführt: Belege werden dort bearbeitet, solange das Programm läuft.\n";
        return Exit::Failure;
    }
    ConsolePresenter presenter(yes);
    setMessagePresenter(&presenter);
    CliContext context{args, out, err, presenter, yes, no};
    int code = Exit::Ok;
    try {
        code = command->run(context);
    } catch (const VeridonError& e) {
        out.flush();
        err << "Fehler #" << e.number() << ": " << RuntimeErrorDetail(e) << '\n';
        code = Exit::Failure;
    }
    // A run-time error that a procedure reported and got past (a record that could not be stored,
    // a copy that failed) still means the command did not do all it was asked: scripts must see it.
    if (code == Exit::Ok && presenter.errorCount() > 0)
        code = Exit::Failure;
    out.flush();
    err.flush();
    setMessagePresenter(nullptr);
    return code;
}
