// SPDX-License-Identifier: Apache-2.0
#include "CommandLineTexts.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QFileInfo>
#include <QTranslator>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

struct Text {
    const char* source;
    const char* german;
};

// The source texts as Qt 6 writes them in QCommandLineParser.
constexpr Text texts[] = {
    {"Usage: %1", "Aufruf: %1"},
    {"[options]", "[Optionen]"},
    {"Options:", "Optionen:"},
    {"Arguments:", "Argumente:"},
    {"Displays help on commandline options.", "Zeigt diese Hilfe."},
    {"Displays help including Qt specific options.", "Zeigt die Hilfe mit den Optionen von Qt."},
    {"Displays version information.", "Zeigt die Programmversion."},
    {"Unknown option '%1'.", "Unbekannte Option '%1'."},
    {"Unknown options: %1.", "Unbekannte Optionen: %1."},
    {"Missing value after '%1'.", "Nach '%1' fehlt der Wert."},
    {"Unexpected value after '%1'.", "Unerwarteter Wert nach '%1'."},
};

class CommandLineTranslator : public QTranslator {
public:
    QString translate(const char* context, const char* sourceText, const char* /*disambiguation*/,
                      int /*n*/) const override {
        if (!context || !sourceText || std::strcmp(context, "QCommandLineParser") != 0)
            return QString();
        for (const Text& t : texts)
            if (std::strcmp(t.source, sourceText) == 0)
                return QString::fromUtf8(t.german);
        return QString();
    }
    bool isEmpty() const override { return false; }
};

} // namespace

void installCommandLineTexts() {
    static CommandLineTranslator translator;
    QCoreApplication::installTranslator(&translator);
}

QString commandLineHelp(const QCommandLineParser& parser) {
    QString text = parser.helpText();
    const QString started = QCoreApplication::arguments().value(0);
    const qsizetype at = text.indexOf(started);
    if (!started.isEmpty() && at >= 0 && at < text.indexOf(QLatin1Char('\n')))
        text.replace(at, started.size(), QFileInfo(started).fileName());
    return text;
}

void endOnRefusalHelpOrVersion(QCommandLineParser& parser, const QStringList& words, const QString& refused,
                               const char* program) {
    if (!refused.isEmpty()) {
        std::fprintf(stderr, "%s: %s (--help zeigt die Aufrufe)\n", program, qUtf8Printable(refused));
        std::exit(1);
    }
    if (parser.isSet(QStringLiteral("help-all")))
        parser.process(words); // prints Qt's options too and ends
    if (parser.isSet(QStringLiteral("help"))) {
        std::fputs(qUtf8Printable(commandLineHelp(parser)), stdout);
        std::exit(0);
    }
    if (parser.isSet(QStringLiteral("version"))) {
        std::printf("%s %s\n", program, qUtf8Printable(QCoreApplication::applicationVersion()));
        std::exit(0);
    }
}
