// SPDX-License-Identifier: Apache-2.0
// bench_evaluation: the accuracy of zvscan on a test corpus (formgen --corpus). The corpus is read
// twice in fresh homes, once with the confidence threshold (unsure characters written as "?") and
// once as the plain engine reads (threshold 0, every error silent); each result is imported with
// `veridon-cli import` and the fields after the clean-up are compared with the corpus truth.
//   bench_evaluation CORPUS_DIR [THRESHOLD]      (default: zvscan's own default)
// Printed per run: fields exactly right with no "?", character error rate, silent errors and "?" per
// 1,000 characters, CPU seconds per page, pages per minute. Nothing is asserted.

#include "DemoForms.h"
#include "app/Home.h"
#include "app/mdlDB.h"
#include "workflow/Workspace.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <cstdio>
#include <sys/resource.h>
#include <vector>

namespace {

const QStringList fields{QStringLiteral("STATE"),   QStringLiteral("NACHNAME"),    QStringLiteral("VORNAME"),
                         QStringLiteral("GEBDAT"),  QStringLiteral("PERSONAL_ID"), QStringLiteral("INSTITUT_ID"),
                         QStringLiteral("CARD_ID"), QStringLiteral("CARD_EXPIRY")};

struct Figures {
    int pages = 0, fieldsTotal = 0, fieldsRight = 0;
    long truthChars = 0, edits = 0, silent = 0, marks = 0;
    double cpuSeconds = 0, wallSeconds = 0;
};

// Edit distance between read and truth; with wildcard, a "?" in read matches any character, so
// what remains are the errors the operator is not shown.
long distance(const QString& read, const QString& truth, bool wildcard) {
    std::vector<long> row(size_t(truth.size()) + 1);
    for (size_t j = 0; j < row.size(); ++j)
        row[j] = long(j);
    for (qsizetype i = 1; i <= read.size(); ++i) {
        long diagonal = row[0];
        row[0] = i;
        for (qsizetype j = 1; j <= truth.size(); ++j) {
            const bool same = read[i - 1] == truth[j - 1] || (wildcard && read[i - 1] == QLatin1Char('?'));
            const long next = std::min({row[size_t(j)] + 1, row[size_t(j - 1)] + 1, diagonal + (same ? 0 : 1)});
            diagonal = row[size_t(j)];
            row[size_t(j)] = next;
        }
    }
    return row[size_t(truth.size())];
}

double childCpuSeconds() {
    rusage usage{};
    getrusage(RUSAGE_CHILDREN, &usage);
    return double(usage.ru_utime.tv_sec + usage.ru_stime.tv_sec) +
           double(usage.ru_utime.tv_usec + usage.ru_stime.tv_usec) / 1e6;
}

bool run(const QString& program, const QStringList& args) {
    QProcess p;
    p.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    p.start(program, args);
    p.waitForFinished(-1);
    return p.exitStatus() == QProcess::NormalExit && p.exitCode() == 0;
}

Figures measure(const QString& corpus, const QList<DemoForm>& truth, const QString& threshold) {
    Figures f;
    QTemporaryDir home;
    initHome(home.path(), false, false);
    setHome(home.path());
    for (const char* folder : {"scan", "images", "import"})
        QDir().mkpath(home.filePath(QLatin1String(folder)));
    SetSysValue(QStringLiteral("Scan_Pfad"), home.filePath(QStringLiteral("scan")));
    SetSysValue(QStringLiteral("Import_Datei"), home.filePath(QStringLiteral("import/zvscan.txt")));
    SetSysValue(QStringLiteral("APP_Bildpfad"), home.filePath(QStringLiteral("images")));
    if (!threshold.isEmpty()) {
        QFile ini(home.filePath(QStringLiteral("tarnvel.ini")));
        ini.open(QIODevice::Append);
        ini.write("\r\n[Auswertung]\r\nMinKonfidenz=" + threshold.toUtf8() + "\r\n");
    }
    for (const DemoForm& form : truth)
        QFile::copy(QDir(corpus).filePath(form.bmpName), home.filePath(QStringLiteral("scan/") + form.bmpName));

    const double cpuBefore = childCpuSeconds();
    QElapsedTimer clock;
    clock.start();
    if (!run(QStringLiteral(ZVSCAN), {QStringLiteral("--home"), home.path()}))
        std::fprintf(stderr, "zvscan ist gescheitert\n");
    f.wallSeconds = clock.elapsed() / 1000.0;
    f.cpuSeconds = childCpuSeconds() - cpuBefore;
    if (qEnvironmentVariableIsSet("BENCH_SHOW"))
        QFile::copy(
            home.filePath(QStringLiteral("import/zvscan.txt")),
            QDir::temp().filePath(
                QStringLiteral("zvscan-%1.txt").arg(threshold.isEmpty() ? QStringLiteral("default") : threshold)));
    if (!run(QStringLiteral(VERIDON_CLI), {QStringLiteral("--home"), home.path(), QStringLiteral("import"),
                                           home.filePath(QStringLiteral("import/zvscan.txt"))}))
        std::fprintf(stderr, "der Import ist gescheitert\n");

    setHome(home.path());
    for (const DemoForm& form : truth) {
        ++f.pages;
        const QString where = QStringLiteral("BMPName = '%1'").arg(form.bmpName);
        for (const QString& field : fields) {
            QString expected = form.values.value(field);
            if (field == QLatin1String("GEBDAT") || field == QLatin1String("CARD_EXPIRY"))
                expected.replace(QLatin1Char('.'), QLatin1Char('/'));
            const QString read = GetValue(field, QStringLiteral("zvbWerte"), where).toString();
            ++f.fieldsTotal;
            f.fieldsRight += read == expected;
            f.truthChars += expected.size();
            f.edits += distance(read, expected, false);
            f.silent += distance(read, expected, true);
            f.marks += read.count(QLatin1Char('?'));
            if (read != expected && qEnvironmentVariableIsSet("BENCH_SHOW"))
                std::printf("  %s %s: '%s' statt '%s'\n", qUtf8Printable(form.bmpName), qUtf8Printable(field),
                            qUtf8Printable(read), qUtf8Printable(expected));
        }
    }
    setHome(QDir::tempPath());
    return f;
}

} // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    if (argc < 2) {
        std::fprintf(stderr, "Aufruf: bench_evaluation KORPUSORDNER [SCHWELLE]\n");
        return 2;
    }
    const QString corpus = QString::fromLocal8Bit(argv[1]);
    QString error;
    const QList<DemoForm> truth = readDemoForms(QDir(corpus).filePath(QStringLiteral("truth.tsv")), &error);
    if (truth.isEmpty()) {
        std::fprintf(stderr, "bench_evaluation: %s\n", qUtf8Printable(error));
        return 1;
    }
    const QString threshold = argc > 2 ? QString::fromLocal8Bit(argv[2]) : QString();
    const Figures marked = measure(corpus, truth, threshold);
    const Figures plain = measure(corpus, truth, QStringLiteral("0"));

    const auto row = [](const char* name, double a, double b, const char* goal) {
        std::printf("%-40s %12.2f %12.2f   %s\n", name, a, b, goal);
    };
    std::printf("%d Seiten aus %s\n%-40s %12s %12s   %s\n", marked.pages, qUtf8Printable(corpus), "", "mit \"?\"",
                "ohne (roh)", "Ziel");
    const auto perMille = [](long n, const Figures& f) {
        return 1000.0 * double(n) / double(f.truthChars);
    };
    row("Felder exakt richtig ohne \"?\" (%)", 100.0 * marked.fieldsRight / marked.fieldsTotal,
        100.0 * plain.fieldsRight / plain.fieldsTotal, ">= 97");
    row("Zeichenfehlerrate (%)", 100.0 * double(marked.edits) / double(marked.truthChars),
        100.0 * double(plain.edits) / double(plain.truthChars), "");
    row("stille Fehler je 1000 Zeichen", perMille(marked.silent, marked), perMille(plain.silent, plain), "<= 1");
    row("\"?\" je 1000 Zeichen", perMille(marked.marks, marked), perMille(plain.marks, plain), "<= 20");
    row("CPU-Sekunden je Seite", marked.cpuSeconds / marked.pages, plain.cpuSeconds / plain.pages, "<= 1");
    row("Seiten je Minute", 60.0 * marked.pages / marked.wallSeconds, 60.0 * plain.pages / plain.wallSeconds, "");
    return 0;
}
