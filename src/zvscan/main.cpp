// SPDX-License-Identifier: Apache-2.0
// zvscan: the evaluation program. Reads the card on every scanned page (*.tif) of the scan folder
// (Scan_Pfad) in name order, appends one result line per page to the import file (Import_Datei) and
// moves each evaluated page into the image folder (APP_Bildpfad), so that no page is read twice and
// the viewer finds it. Beside the import file (its name with ".alt") it appends, for every character
// written as unreadable, the characters the engine saw there, best first, so that the operator can
// take one with a key instead of typing it.
//   zvscan [--home ORDNER] [/BENUTZER]   (--help, --version)
// Settings of tarnvel.ini: [Beleg] Trenner (the result file's separator) and [Auswertung]
// MinKonfidenz, the confidence (0..100) below which a character is written as unreadable.
// Exit code 0 on success, 1 after a failure, which is written to the message log.
#include "CardReader.h"
#include "ResultBatch.h"
#include "app/CommandLineTexts.h"
#include "app/Home.h"
#include "app/Settings.h"
#include "app/mdlDB.h"
#include "app/mdlMessages.h"
#include "model/ImageFiles.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <thread>
#include <unistd.h>
#include <vector>

namespace {

// Tesseract's LSTM confidences crowd near the top: clean print reads at 96 to 99.7 (the Polish ł
// lowest), a character half covered by a smudge at about 95. Each part is read twice (a third time
// where the two differ) and a character the reads agree on stands, so the threshold only judges
// parts whose reads differ in length. Measured with bench_evaluation on 200 spoilt forms at 200 dpi
// (seed 1): 90 gives 97.6 % of fields right with 1.4 silent errors per 1,000 characters, 95.5 gives
// 97.1 % and 1.0, 97 gives 96.9 % and 1.0: the lowest value with the fewest silent errors.
constexpr double defaultMinConfidence = 95.5;

const QString logSource = QStringLiteral("zvscan");

int fail(const QString& message) {
    WriteLog(logSource, message);
    std::fprintf(stderr, "zvscan: %s\n", qUtf8Printable(message));
    return 1;
}

// OpenMP reads its limits when the library loads, before main: without the limit in the
// environment the program starts itself again with it. One thread per engine is faster on few
// cores than Tesseract's own threads.
void limitOpenMp(char** argv) {
    if (qEnvironmentVariableIsSet("OMP_THREAD_LIMIT"))
        return;
    ::setenv("OMP_THREAD_LIMIT", "1", 1);
    ::execv("/proc/self/exe", argv);
}

// Reads the command line: prints the help or the version and ends, or refuses an unknown option or
// argument with exit code 1. Returns the home folder given (empty: the default). A word starting
// with '/' is the operator the scan sequence names (/BENUTZER) and is accepted without effect.
QString homeFromCommandLine(const QStringList& arguments) {
    installCommandLineTexts();
    QCommandLineParser parser;
    parser.setApplicationDescription(QString::fromUtf8(
        "\nzvscan: Auswertung gescannter EHIC-Belege. Liest jede Seite (*.tif) des Scanordners (Scan_Pfad)\n"
        "in Namensfolge, hängt je Seite eine Ergebniszeile an die Importdatei (Import_Datei) an und\n"
        "verschiebt die Seite in den Bildordner (APP_Bildpfad). Fehler stehen im Meldungsprotokoll.\n"
        "Ohne --home gilt $VERIDON_HOME, sonst der Programmordner."));
    parser.addHelpOption();
    parser.addVersionOption();
    const QCommandLineOption home(QStringLiteral("home"), QStringLiteral("Home-Ordner"), QStringLiteral("ORDNER"));
    parser.addOption(home);
    parser.addPositionalArgument(QStringLiteral("/BENUTZER"), QStringLiteral("Bediener (ohne Wirkung)"),
                                 QStringLiteral("[/BENUTZER]"));
    QString refused;
    if (!parser.parse(arguments))
        refused = parser.errorText();
    else
        for (const QString& word : parser.positionalArguments())
            if (!word.startsWith(QLatin1Char('/'))) {
                refused = QStringLiteral("Unerwartetes Argument '%1'.").arg(word);
                break;
            }
    endOnRefusalHelpOrVersion(parser, arguments, refused, "zvscan");
    return parser.value(home);
}

} // namespace

int main(int argc, char** argv) {
    limitOpenMp(argv);
    QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("zvscan"));
    QCoreApplication::setApplicationVersion(QStringLiteral(VERIDON_VERSION));
    QString home = homeFromCommandLine(app.arguments());
    resolveHome(home);

    QString scanDir, importFile, imageDir, separator;
    double minConfidence = defaultMinConfidence;
    try {
        scanDir = setting<Setting::Scan_Pfad>();
        importFile = setting<Setting::Import_Datei>();
        imageDir = GetBildpfad();
        separator = GetIniValue(QStringLiteral("Beleg"), QStringLiteral("Trenner"));
        bool ok = false;
        const double configured =
            GetIniValue(QStringLiteral("Auswertung"), QStringLiteral("MinKonfidenz")).toDouble(&ok);
        if (ok && configured >= 0 && configured <= 100)
            minConfidence = configured;
    } catch (...) {
        return fail(QStringLiteral("Die Einstellungen in '%1' sind nicht lesbar.").arg(GetDBPath()));
    }
    if (separator.isEmpty())
        separator = QStringLiteral(",");
    if (scanDir.isEmpty() || importFile.isEmpty() || imageDir.isEmpty())
        return fail(QStringLiteral("Scanordner, Importdatei oder Bildordner ist nicht eingestellt."));
    if (!QFileInfo(imageDir).isDir())
        return fail(QStringLiteral("Der Bildordner '%1' fehlt.").arg(imageDir));

    const QDir scans(scanDir);
    QFileInfoList pages =
        scans.entryInfoList({QStringLiteral("*.tif"), QStringLiteral("*.TIF")}, QDir::Files, QDir::Name);
    // A page whose name the image folder already holds could not be moved after its line was
    // written; it would stay here and be read again by the next run, its record arriving twice.
    // Such a page is not read at all and stays where it is until someone sorts it out.
    int moveFailures = 0;
    const auto refuse = [&](const QFileInfo& page) {
        WriteLog(logSource, QStringLiteral("Seite '%1' nicht in den Bildordner verschiebbar.").arg(page.filePath()));
        ++moveFailures;
    };
    pages.removeIf([&](const QFileInfo& page) {
        const bool taken = QFileInfo::exists(QDir(imageDir).filePath(page.fileName()));
        if (taken)
            refuse(page);
        return taken;
    });
    const auto movedAll = [&] {
        if (moveFailures == 0)
            return 0;
        return fail(QStringLiteral("%1 Seite(n) konnten nicht in den Bildordner '%2' verschoben werden.")
                        .arg(moveFailures)
                        .arg(imageDir));
    };
    if (pages.isEmpty())
        return movedAll();

    // Pages in parallel, one engine per thread; each page's line lands in its own slot so the
    // file keeps the name order.
    QStringList lines(pages.size());
    std::vector<QStringList> alternatives(size_t(pages.size()));
    QStringList pageErrors(pages.size());
    std::atomic<qsizetype> next{0};
    std::atomic<bool> engineMissing{false};
    QString engineError;
    const unsigned threads = std::max(1u, std::min(unsigned(pages.size()), std::thread::hardware_concurrency()));
    std::vector<std::thread> workers;
    for (unsigned t = 0; t < threads; ++t) {
        workers.emplace_back([&, t] {
            evaluation::CardReader reader(minConfidence, separator);
            if (!reader.ready()) {
                engineMissing = true;
                if (t == 0)
                    engineError = reader.error();
                return;
            }
            for (qsizetype i = next++; i < pages.size(); i = next++) {
                const QFileInfo& page = pages[i];
                const evaluation::PageReading reading = reader.readPage(page.filePath());
                pageErrors[i] = reading.error;
                lines[i] = evaluation::resultLine(page.fileName(), page.lastModified().date(), reading, separator);
                alternatives[size_t(i)] = evaluation::alternativesLines(page.fileName(), reading);
            }
        });
    }
    for (std::thread& w : workers)
        w.join();
    if (engineMissing)
        return fail(engineError.isEmpty() ? QStringLiteral("Tesseract ist nicht bereit.") : engineError);
    for (const QString& e : pageErrors)
        if (!e.isEmpty())
            WriteLog(logSource, e);

    // The alternatives go first, so that no result line is ever without its alternatives; when the
    // result lines cannot follow, the alternatives are cut back as well.
    QStringList alternativeLines;
    for (const QStringList& page : alternatives)
        alternativeLines += page;
    const QString alternativesFile = evaluation::alternativesPath(importFile);
    const QFileInfo alternativesBefore(alternativesFile);
    const qint64 alternativesSize = alternativesBefore.exists() ? alternativesBefore.size() : -1;
    QString error;
    if (!alternativeLines.isEmpty() && !evaluation::appendLines(alternativesFile, alternativeLines, &error, true))
        return fail(error);
    if (!evaluation::appendLines(importFile, lines, &error)) {
        if (!alternativeLines.isEmpty())
            evaluation::cutBack(alternativesFile, alternativesSize);
        return fail(error);
    }
    for (const QFileInfo& page : pages)
        if (!QFile::rename(page.filePath(), QDir(imageDir).filePath(page.fileName())))
            refuse(page);
    return movedAll();
}
