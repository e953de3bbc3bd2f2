// veridon-cli: the workstation's procedures from the command line, for scripts, the demo and
// operators without a display.

#include "CliCommand.h"
#include "app/Errors.h"
#include "app/Home.h"
#include "app/HomeLock.h"
#include "app/mdlMessages.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <cstdio>
#include <memory>

namespace {

void printHelp(QTextStream& out) {
    out << "Aufruf: veridon-cli [--home ORDNER] [--yes|--no] BEFEHL [ARGUMENTE]\n\n"
           "Veridon: Erfassung von EHIC-Belegen. Der Home-Ordner enthält data.mdb, tarnvel.ini,\n"
           "default.xml und zvMsgLog.txt; ohne --home gilt $VERIDON_HOME, sonst der Programmordner.\n\n"
           "Optionen:\n"
           "  --home ORDNER   Home-Ordner\n"
           "  --yes, --no     Antwort auf Rückfragen (ohne Angabe: Nein)\n"
           "  --help          diese Hilfe\n"
           "  --version       Programmversion\n\n"
           "Befehle:\n";
    for (const CliCommand& c : CliRegistry::all()) {
        const QString head = QStringLiteral("  %1 %2").arg(QLatin1String(c.name), QLatin1String(c.usage));
        out << head.leftJustified(44) << ' ' << c.summary << '\n';
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

    QStringList args = QCoreApplication::arguments().mid(1);
    QString home;
    bool yes = false;
    bool no = false;
    while (!args.isEmpty() && args.first().startsWith(QLatin1String("--"))) {
        const QString option = args.takeFirst();
        if (option == QLatin1String("--help")) {
            printHelp(out);
            return Exit::Ok;
        } else if (option == QLatin1String("--version")) {
            out << "veridon-cli " << VERIDON_VERSION << '\n';
            return Exit::Ok;
        } else if (option == QLatin1String("--home") && !args.isEmpty()) {
            home = args.takeFirst();
        } else if (option == QLatin1String("--yes")) {
            yes = true;
        } else if (option == QLatin1String("--no")) {
            no = true;
        } else {
            err << "veridon-cli: unbekannte Option '" << option << "' (--help zeigt die Aufrufe)\n";
            return Exit::Usage;
        }
    }
    if (args.isEmpty()) {
        printHelp(err);
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
        err << "Fehler #" << e.number() << ": " << e.description() << '\n';
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
