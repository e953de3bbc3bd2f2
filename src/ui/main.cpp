// SPDX-License-Identifier: Apache-2.0
// veridon: the correction workstation with its windows.

#include "StartUp.h"
#include "app/CommandLineTexts.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QStyleFactory>

namespace {

void setProgramNames() {
    QCoreApplication::setApplicationName(QStringLiteral("Veridon"));
    QCoreApplication::setApplicationVersion(QStringLiteral(VERIDON_VERSION));
    installCommandLineTexts();
}

// True when the command line asks for the help or the version: both are answered before a window
// system is needed, so they work without a display (help2man reads them while the build runs).
bool asksForText(int argc, char** argv) {
    for (int i = 1; i < argc; ++i)
        for (const char* word : {"-h", "-?", "--help", "--help-all", "-v", "--version"})
            if (qstrcmp(argv[i], word) == 0)
                return true;
    return false;
}

// Reads the command line; prints the help or the version and ends, or refuses an unknown option or
// argument with a message and exit code 1. Returns the options in the form RunVeridon reads them.
// "/admin" in any case is the workstation's traditional spelling of --admin.
QStringList programArguments(const QStringList& arguments) {
    QCommandLineParser parser;
    parser.setApplicationDescription(QString::fromUtf8(
        "\nVeridon: Erfassung und Korrektur von EHIC-Belegen. Der Home-Ordner enthält data.mdb, tarnvel.ini,\n"
        "default.xml und zvMsgLog.txt; ohne --home gilt $VERIDON_HOME, sonst der Programmordner.\n"
        "Eine neue Arbeitsumgebung legt 'veridon-cli --home ORDNER init --demo' an."));
    parser.addHelpOption();
    parser.addVersionOption();
    const QCommandLineOption home(QStringLiteral("home"), QStringLiteral("Home-Ordner"), QStringLiteral("ORDNER"));
    const QCommandLineOption admin(QStringLiteral("admin"),
                                   QString::fromUtf8("Öffnet die Optionen System und Pfade zum Ändern (auch /admin)."));
    QCommandLineOption screenshot(QStringLiteral("screenshot"), QStringLiteral("Bild des Hauptfensters"),
                                  QStringLiteral("DATEI"));
    QCommandLineOption screenshotScreen(QStringLiteral("screenshot-screen"), QStringLiteral("Bild des Bildschirms"),
                                        QStringLiteral("DATEI"));
    // The pictures for the documentation are taken by a script, not by operators.
    screenshot.setFlags(QCommandLineOption::HiddenFromHelp);
    screenshotScreen.setFlags(QCommandLineOption::HiddenFromHelp);
    parser.addOptions({home, admin, screenshot, screenshotScreen});

    QStringList words = arguments;
    for (QString& word : words)
        if (word.compare(QLatin1String("/admin"), Qt::CaseInsensitive) == 0 ||
            word.compare(QLatin1String("--admin"), Qt::CaseInsensitive) == 0)
            word = QStringLiteral("--admin");
    QString refused;
    if (!parser.parse(words))
        refused = parser.errorText();
    else if (!parser.positionalArguments().isEmpty())
        refused = QStringLiteral("Unerwartetes Argument '%1'.").arg(parser.positionalArguments().constFirst());
    endOnRefusalHelpOrVersion(parser, words, refused, "veridon");

    QStringList options;
    for (const QCommandLineOption& option : {home, screenshot, screenshotScreen})
        if (parser.isSet(option))
            options << QStringLiteral("--") + option.names().constFirst() << parser.value(option);
    if (parser.isSet(admin))
        options << QStringLiteral("--admin");
    return options;
}

} // namespace

int main(int argc, char** argv) {
    if (asksForText(argc, argv)) {
        QCoreApplication app(argc, argv);
        setProgramNames();
        programArguments(QCoreApplication::arguments());
    }
    QApplication app(argc, argv);
    setProgramNames();
    // Lets the desktop match the windows to the installed .desktop file and its icon.
    QGuiApplication::setDesktopFileName(QStringLiteral("de.veridon.Veridon"));
    // Qt's own options (-platform, -style ...) are already taken out of the arguments here.
    const QStringList arguments = programArguments(QApplication::arguments());
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    return RunVeridon(app, arguments);
}
