// SPDX-License-Identifier: Apache-2.0
// bench_import: how fast ImportZVBWerte takes a large evaluation result file, next to the floor of
// sqlite3's own ".import" of the same file into a table of the file's columns (same declared types,
// same journal settings, one transaction, nothing else).
//   bench_import [LINES]      (default 100000; needs the sqlite3 command-line tool on PATH)
// The file is generated from varied forms of both layouts with the usual reading errors, so the
// clean-up has its normal work to do. The figures are printed; nothing is asserted.

#include "CardText.h"
#include "app/ColumnInfo.h"
#include "app/Database.h"
#include "app/Home.h"
#include "app/MessagePresenter.h"
#include "app/Progress.h"
#include "app/TextFile.h"
#include "app/mdlDB.h"
#include "app/mdlMessages.h"
#include "import/mdlImport.h"
#include "workflow/Workspace.h"

#include <QCoreApplication>
#include <QDate>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <cstdio>
#include <ctime>
#include <random>
#include <sys/resource.h>

namespace {

// CPU time of this process in nanoseconds: on a shared machine the fairer measure beside the
// wall clock.
qint64 processCpuTime() {
    timespec t{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &t);
    return qint64(t.tv_sec) * 1000000000 + t.tv_nsec;
}

// CPU time of the finished child processes (the sqlite3 run) in nanoseconds.
qint64 childrenCpuTime() {
    rusage usage{};
    getrusage(RUSAGE_CHILDREN, &usage);
    const auto ns = [](const timeval& tv) {
        return qint64(tv.tv_sec) * 1000000000 + qint64(tv.tv_usec) * 1000;
    };
    return ns(usage.ru_utime) + ns(usage.ru_stime);
}

// Notes when the clean-up starts, so the import's two phases can be told apart.
class PhaseClock : public Progress {
public:
    explicit PhaseClock(const QElapsedTimer& timer) : timer_(timer) {}
    void status(const QString& text) override {
        if (cleanupStart_ < 0 && text.startsWith(QLatin1String("Bearbeite"))) {
            cleanupStart_ = timer_.nsecsElapsed();
            cleanupStartCpu_ = processCpuTime();
        }
    }
    void progress(qint64, qint64) override {}
    qint64 cleanupStart() const { return cleanupStart_; }
    qint64 cleanupStartCpu() const { return cleanupStartCpu_; }

private:
    const QElapsedTimer& timer_;
    qint64 cleanupStart_ = -1;
    qint64 cleanupStartCpu_ = -1;
};

QString pick(std::mt19937& random, const QStringList& list) {
    return list[std::uniform_int_distribution<int>(0, int(list.size()) - 1)(random)];
}

QString digits(std::mt19937& random, int count) {
    QString text;
    for (int i = 0; i < count; ++i)
        text += QChar(u'0' + std::uniform_int_distribution<int>(0, 9)(random));
    return text;
}

QString someDate(std::mt19937& random, int fromYear, int toYear) {
    const QDate date(std::uniform_int_distribution<int>(fromYear, toYear)(random),
                     std::uniform_int_distribution<int>(1, 12)(random),
                     std::uniform_int_distribution<int>(1, 28)(random));
    return date.toString(QStringLiteral("dd.MM.yyyy"));
}

// count result lines of varied forms; about one line in five carries each kind of reading error.
QStringList generateResultLines(int count) {
    const QStringList states{QStringLiteral("AT"), QStringLiteral("BE"), QStringLiteral("DE"), QStringLiteral("FR"),
                             QStringLiteral("IT"), QStringLiteral("NL"), QStringLiteral("PL"), QStringLiteral("ES"),
                             QStringLiteral("SE"), QStringLiteral("CZ"), QStringLiteral("HU"), QStringLiteral("PT")};
    const QStringList surnames{QStringLiteral("Huber"),        QStringLiteral("de Vries"),    QStringLiteral("Dupont"),
                               QStringLiteral("Rossi"),        QStringLiteral("Kowalski"),    QStringLiteral("Müller"),
                               QStringLiteral("García López"), QStringLiteral("Lindqvist"),   QStringLiteral("Novák"),
                               QStringLiteral("Horváth"),      QStringLiteral("Schmidt-Ott"), QStringLiteral("Silva")};
    const QStringList firstNames{
        QStringLiteral("Maria"),     QStringLiteral("Jan Pieter"), QStringLiteral("Marie-Claire"),
        QStringLiteral("Giuseppe"),  QStringLiteral("Piotr"),      QStringLiteral("Jürgen"),
        QStringLiteral("José Luis"), QStringLiteral("Astrid"),     QStringLiteral("Eva")};
    const QStringList institutes{QStringLiteral("1100 - OEGK"),
                                 QStringLiteral("3311 - Zilveren Kruis"),
                                 QStringLiteral("75 - CPAM Paris"),
                                 QStringLiteral("120207 - ASL Roma 1"),
                                 QStringLiteral("108310400 - AOK Bayern"),
                                 QStringLiteral("28 - INSS Madrid")};
    std::mt19937 random(20261115);
    std::bernoulli_distribution misread(0.2);
    QStringList lines;
    lines.reserve(count);
    for (int n = 0; n < count; ++n) {
        CardForm f;
        f.bmpName = QStringLiteral("31901%1.tif").arg(n, 5, 16, QLatin1Char('0')).toUpper();
        f.typ = n % 2 == 0 ? QStringLiteral("4") : QStringLiteral("5");
        f.scandat = QStringLiteral("15.11.2026");
        f.state = pick(random, states);
        f.nachname = pick(random, surnames);
        f.vorname = pick(random, firstNames);
        f.gebdat = someDate(random, 1930, 2020);
        f.personalId = digits(random, 10);
        f.institutId = pick(random, institutes);
        f.cardId = QStringLiteral("80") + digits(random, 18);
        f.cardExpiry = someDate(random, 2027, 2032);
        QStringList card = cleanCardLines(f);
        const int last = int(card.size()) - 1;
        if (misread(random))
            card[1] = QStringLiteral("|  ") + card[1].toLower();
        if (misread(random))
            card[2] = card[2].toLower();
        if (misread(random))
            card[last].replace(
                0, 20, f.cardId.left(4) + QLatin1Char(' ') + f.cardId.mid(4, 8) + QLatin1Char(' ') + f.cardId.mid(12));
        if (misread(random))
            card[last].replace(card[last].lastIndexOf(QLatin1Char('/')), 1, QLatin1Char('1'));
        if (misread(random))
            card[last - 1] += QStringLiteral("  ]");
        lines << resultLine(f, card, QStringLiteral(";"));
    }
    return lines;
}

struct Timing {
    qint64 wall = -1;
    qint64 cpu = -1;
};

// The floor: sqlite3 loads the same file into a table of its columns. Returns its wall and CPU
// time in nanoseconds; -1 when sqlite3 could not be run.
Timing sqliteFloor(const QString& folder, const QString& file, int columns) {
    QStringList definitions;
    const QVector<ColumnInfo> info = tableColumns(GetValuesTable());
    for (int i = 0; i < columns && i < info.size(); ++i)
        definitions << info[i].name + QLatin1Char(' ') + info[i].declaredType;
    const QString script = QStringLiteral("PRAGMA journal_mode=WAL;\nPRAGMA synchronous=FULL;\n"
                                          "CREATE TABLE zvbWerte (%1);\n.separator \";\" \"\\n\"\n.import %2 zvbWerte\n"
                                          "SELECT count(*) FROM zvbWerte;\n")
                               .arg(definitions.join(QStringLiteral(", ")), file);
    QProcess sqlite;
    QElapsedTimer timer;
    const qint64 cpuBefore = childrenCpuTime();
    timer.start();
    sqlite.start(QStringLiteral("sqlite3"), {folder + QStringLiteral("/floor.db")});
    if (!sqlite.waitForStarted())
        return {};
    sqlite.write(script.toUtf8());
    sqlite.closeWriteChannel();
    sqlite.waitForFinished(-1);
    const qint64 elapsed = timer.nsecsElapsed();
    const QByteArray errors = sqlite.readAllStandardError();
    if (!errors.isEmpty())
        std::fprintf(stderr, "sqlite3: %s\n", errors.left(400).constData());
    std::printf("sqlite3 .import        %s rows\n",
                sqlite.readAllStandardOutput().trimmed().split('\n').last().constData());
    if (sqlite.exitCode() != 0)
        return {};
    return {elapsed, childrenCpuTime() - cpuBefore};
}

void report(const char* what, Timing t, int lines) {
    const double wall = double(t.wall) / 1e9;
    const double cpu = double(t.cpu) / 1e9;
    std::printf("%-32s %7.3f s %9.0f lines/s   %7.3f s %9.0f lines/s\n", what, wall, lines / wall, cpu, lines / cpu);
}

} // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    const int count = argc > 1 ? std::atoi(argv[1]) : 100000;
    QTemporaryDir folder;
    ConsolePresenter presenter(false);
    setMessagePresenter(&presenter);
    initHome(folder.path(), false, false);

    const QStringList lines = generateResultLines(count);
    const QString path = homePath(QStringLiteral("import/zvscan.txt"));
    const QString floorFile = folder.path() + QStringLiteral("/floor.txt");
    if (!writeTextLines(path, lines) || !QFile::copy(path, floorFile)) {
        std::fprintf(stderr, "bench_import: cannot write the result file\n");
        return 1;
    }
    std::printf("result file            %d lines, %lld bytes\n", count, QFileInfo(floorFile).size());

    QElapsedTimer timer;
    PhaseClock phases(timer);
    setAppProgress(&phases);
    const qint64 cpuStart = processCpuTime();
    timer.start();
    const int imported = ImportZVBWerte(path);
    const Timing total{timer.nsecsElapsed(), processCpuTime() - cpuStart};
    setAppProgress(nullptr);
    if (imported != count) {
        std::fprintf(stderr, "bench_import: ImportZVBWerte returned %d for %d lines\n", imported, count);
        return 1;
    }
    const Timing floor = sqliteFloor(folder.path(), floorFile, 18);

    std::printf("\n%-32s %-29s %s\n", "", "wall clock", "CPU time");
    report("ImportZVBWerte, whole import", total, count);
    if (phases.cleanupStart() > 0) {
        report("  lines into rows", {phases.cleanupStart(), phases.cleanupStartCpu() - cpuStart}, count);
        report("  clean-up and commit",
               {total.wall - phases.cleanupStart(), total.cpu - (phases.cleanupStartCpu() - cpuStart)}, count);
    }
    if (floor.wall > 0) {
        report("sqlite3 .import (floor)", floor, count);
        std::printf("%-32s %7.1f x %19s %7.1f x\n", "ImportZVBWerte / floor", double(total.wall) / double(floor.wall),
                    "", double(total.cpu) / double(floor.cpu));
    } else {
        std::printf("sqlite3 could not be run: no floor\n");
    }
    closeDatabase();
    return 0;
}
