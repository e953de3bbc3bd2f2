// SPDX-License-Identifier: Apache-2.0
// bench_evaluation: the accuracy of zvscan on a test corpus (formgen --corpus). The corpus is read
// twice in fresh homes, once with the confidence threshold (unsure characters written as "?") and
// once as the plain engine reads (threshold 0, every error silent); each result is imported with
// `veridon-cli import` and the fields after the clean-up are compared with the corpus truth.
//   bench_evaluation CORPUS_DIR [THRESHOLD]      (default: zvscan's own default)
// BENCH_SHOW=1 lists every field read wrong; BENCH_QUICK=1 skips the plain run (its column then
// repeats the first).
// Printed per run: fields exactly right with no "?", character error rate, silent errors and "?" per
// 1,000 characters, CPU seconds per page, pages per minute. Nothing is asserted.
// For the run with marks it also prints the keystrokes the alternatives save: every "?" left in an
// imported field is looked up in the .alt file zvscan wrote beside the result file, by BMPName,
// column and ordinal, as the import matches them (a "?" the clean-up moved so that it no longer
// matches counts as one without alternatives). Without alternatives the operator types the true
// character (keyCost below); with them he presses the cycle key as often as the true character's
// rank among the candidates and then Enter, or types it when it is not among them.

#include "DemoForms.h"
#include "app/Home.h"
#include "app/mdlDB.h"
#include "import/ImportText.h"
#include "import/OcrCorrection.h"
#include "workflow/Workspace.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
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
    // keystrokes for the "?" of the imported fields: typed, with the alternatives, and how many marks
    // had alternatives matched and how many of those held the true character
    long keysTyped = 0, keysWithAlternatives = 0, keysBestOf = 0, marksMatched = 0, marksHit = 0;
};

// Keys to type c on a German keyboard: 1 for a character on a key of its own (letters, digits, ä ö
// ü ß, blank, - . , # +), 2 for a shifted character (capitals, Ä Ö Ü, / ' and the like) or a dead
// accent before a small letter (é, à, ô: accent key, letter), 3 for a dead accent before a capital
// (É), 4 for everything composed (ș ł ő ñ ë Þ ...: compose key and two more).
int keyCost(QChar c) {
    static const QString single = QString::fromUtf8("abcdefghijklmnopqrstuvwxyz0123456789äöüß -.,#+<");
    static const QString shifted = QString::fromUtf8("ABCDEFGHIJKLMNOPQRSTUVWXYZÄÖÜ/'!\"§$%&()=?_:;>*");
    static const QString deadKey = QString::fromUtf8("áàâéèêíìîóòôúùû");
    if (single.contains(c))
        return 1;
    if (shifted.contains(c))
        return 2;
    if (deadKey.contains(c))
        return 2;
    if (deadKey.contains(c.toLower()))
        return 3;
    return 4;
}

// For each character of read, the truth's character it stands for (a null QChar where read has one
// too many), from the edit distance's alignment with "?" matching anything.
QList<QChar> alignedTruth(const QString& read, const QString& truth) {
    const qsizetype n = read.size(), m = truth.size();
    std::vector<std::vector<long>> d(size_t(n) + 1, std::vector<long>(size_t(m) + 1));
    for (qsizetype i = 0; i <= n; ++i)
        for (qsizetype j = 0; j <= m; ++j) {
            if (i == 0 || j == 0) {
                d[size_t(i)][size_t(j)] = long(i + j);
                continue;
            }
            const bool same = read[i - 1] == truth[j - 1] || read[i - 1] == QLatin1Char('?');
            d[size_t(i)][size_t(j)] = std::min({d[size_t(i - 1)][size_t(j)] + 1, d[size_t(i)][size_t(j - 1)] + 1,
                                                d[size_t(i - 1)][size_t(j - 1)] + (same ? 0 : 1)});
        }
    QList<QChar> out(n);
    for (qsizetype i = n, j = m; i > 0;) {
        const bool same = j > 0 && (read[i - 1] == truth[j - 1] || read[i - 1] == QLatin1Char('?'));
        if (j > 0 && d[size_t(i)][size_t(j)] == d[size_t(i - 1)][size_t(j - 1)] + (same ? 0 : 1)) {
            out[i - 1] = truth[j - 1];
            --i, --j;
        } else if (d[size_t(i)][size_t(j)] == d[size_t(i - 1)][size_t(j)] + 1) {
            out[i - 1] = QChar();
            --i;
        } else {
            --j;
        }
    }
    return out;
}

// The alternatives file: candidates by "BMPName/column/n".
QHash<QString, QString> readAlternatives(const QString& path) {
    QHash<QString, QString> out;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return out;
    for (const QByteArray& raw : file.readAll().split('\n')) {
        const QStringList f = QString::fromUtf8(raw).remove(QLatin1Char('\r')).split(QLatin1Char('\t'));
        if (f.size() == 4)
            out.insert(f[0] + QLatin1Char('/') + f[1] + QLatin1Char('/') + f[2], f[3]);
    }
    return out;
}

// Where the import takes a field from: the column and which part of its line (0 the whole line, 1
// the part before the widest gap, 2 the part after it) and how many frame characters it strips.
struct FieldSource {
    QString column;
    int part, frame;
};

FieldSource sourceOf(const QString& field, bool layout4) {
    static const QHash<QString, FieldSource> four{{QStringLiteral("STATE"), {QStringLiteral("T4_L2"), 0, 2}},
                                                  {QStringLiteral("NACHNAME"), {QStringLiteral("T4_L3"), 0, 1}},
                                                  {QStringLiteral("VORNAME"), {QStringLiteral("T4_L4"), 1, 2}},
                                                  {QStringLiteral("GEBDAT"), {QStringLiteral("T4_L4"), 2, 2}},
                                                  {QStringLiteral("PERSONAL_ID"), {QStringLiteral("T4_L5"), 1, 2}},
                                                  {QStringLiteral("INSTITUT_ID"), {QStringLiteral("T4_L5"), 2, 2}},
                                                  {QStringLiteral("CARD_ID"), {QStringLiteral("T4_L6"), 1, 2}},
                                                  {QStringLiteral("CARD_EXPIRY"), {QStringLiteral("T4_L6"), 2, 2}}};
    static const QHash<QString, FieldSource> five{{QStringLiteral("STATE"), {QStringLiteral("T5_L2"), 0, 2}},
                                                  {QStringLiteral("NACHNAME"), {QStringLiteral("T5_L3"), 0, 1}},
                                                  {QStringLiteral("VORNAME"), {QStringLiteral("T5_L4"), 0, 1}},
                                                  {QStringLiteral("GEBDAT"), {QStringLiteral("T5_L5"), 1, 2}},
                                                  {QStringLiteral("PERSONAL_ID"), {QStringLiteral("T5_L5"), 2, 2}},
                                                  {QStringLiteral("INSTITUT_ID"), {QStringLiteral("T5_L6"), 0, 2}},
                                                  {QStringLiteral("CARD_ID"), {QStringLiteral("T5_L7"), 1, 2}},
                                                  {QStringLiteral("CARD_EXPIRY"), {QStringLiteral("T5_L7"), 2, 2}}};
    return (layout4 ? four : five).value(field);
}

// The ordinal (1-based, among the "?" of the raw column) of the field's first "?", or 0 when the
// field's marks cannot be matched to the raw column's (the clean-up added, dropped or moved one).
int firstOrdinal(const QString& raw, const FieldSource& source, const QString& value) {
    QString segment = EntferneRandzeichen(raw, source.frame);
    if (source.part > 0) {
        QString first, second;
        TrenneAmGroesstenAbstand(segment, first, second);
        segment = source.part == 1 ? first : second;
    }
    const qsizetype at = source.part == 2 ? raw.lastIndexOf(segment) : raw.indexOf(segment);
    if (at < 0 || segment.count(QLatin1Char('?')) != value.count(QLatin1Char('?')))
        return 0;
    return int(raw.left(at).count(QLatin1Char('?'))) + 1;
}

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

// The keys the marks of one field cost without and with the alternatives.
void countKeys(Figures& f, const QString& bmpName, const QString& field, const QString& read, const QString& truth,
               const QString& where, const QHash<QString, QString>& alternatives) {
    const bool layout4 =
        GetValue(QStringLiteral("TYP"), QStringLiteral("zvbWerte"), where).toString() == QLatin1String("4");
    const FieldSource source = sourceOf(field, layout4);
    const QString raw = GetValue(source.column, QStringLiteral("zvbWerte"), where).toString();
    int ordinal = firstOrdinal(raw, source, read);
    const QList<QChar> wanted = alignedTruth(read, truth);
    for (qsizetype i = 0; i < read.size(); ++i) {
        if (read[i] != QLatin1Char('?'))
            continue;
        // A "?" standing for nothing is deleted: one key either way.
        const int typed = wanted[i].isNull() ? 1 : keyCost(wanted[i]);
        const QString candidates = ordinal > 0 ? alternatives.value(bmpName + QLatin1Char('/') + source.column +
                                                                    QLatin1Char('/') + QString::number(ordinal))
                                               : QString();
        const qsizetype rank = wanted[i].isNull() ? -1 : candidates.indexOf(wanted[i]);
        const int cycled = rank >= 0 ? int(rank) + 2 : typed;
        f.keysTyped += typed;
        f.keysWithAlternatives += cycled;
        f.keysBestOf += std::min(typed, cycled);
        f.marksMatched += !candidates.isEmpty();
        f.marksHit += rank >= 0;
        if (ordinal > 0)
            ++ordinal;
    }
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
        // The setting replaced where the home's file has it (the first one found counts).
        QFile ini(home.filePath(QStringLiteral("tarnvel.ini")));
        ini.open(QIODevice::ReadOnly);
        QByteArray text = ini.readAll();
        ini.close();
        static const QRegularExpression setting(QStringLiteral("(?m)^MinKonfidenz=[^\r\n]*"));
        QString replaced = QString::fromUtf8(text);
        if (replaced.contains(setting))
            replaced.replace(setting, QStringLiteral("MinKonfidenz=") + threshold);
        else
            replaced += QStringLiteral("\r\n[Auswertung]\r\nMinKonfidenz=") + threshold + QStringLiteral("\r\n");
        ini.open(QIODevice::WriteOnly | QIODevice::Truncate);
        ini.write(replaced.toUtf8());
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
    // The import may take the alternatives over; the bench reads what zvscan wrote.
    const QHash<QString, QString> alternatives = readAlternatives(home.filePath(QStringLiteral("import/zvscan.alt")));
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
            // The clean-up capitalises every part of a name ("van Dijk" is stored as "Van Dijk"),
            // so a perfect reading of the card yields the capitalised form; anything else is an
            // error of the reading.
            if (field == QLatin1String("NACHNAME") || field == QLatin1String("VORNAME"))
                expected = SmartCase(expected);
            const QString read = GetValue(field, QStringLiteral("zvbWerte"), where).toString();
            ++f.fieldsTotal;
            f.fieldsRight += read == expected;
            f.truthChars += expected.size();
            f.edits += distance(read, expected, false);
            f.silent += distance(read, expected, true);
            f.marks += read.count(QLatin1Char('?'));
            if (read.contains(QLatin1Char('?')))
                countKeys(f, form.bmpName, field, read, expected, where, alternatives);
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
    const Figures plain =
        qEnvironmentVariableIsSet("BENCH_QUICK") ? marked : measure(corpus, truth, QStringLiteral("0"));

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
    std::printf("\nTasten fuer die \"?\" (Ziel: weniger mit Alternativen)\n");
    std::printf("  \"?\" in Feldern: %ld, davon mit Alternativen: %ld, richtiges Zeichen darunter: %ld\n", marked.marks,
                marked.marksMatched, marked.marksHit);
    std::printf("  Tasten ohne Alternativen: %ld, mit: %ld, gespart: %ld (%.2f je 1000 Zeichen, %.2f je Beleg)\n",
                marked.keysTyped, marked.keysWithAlternatives, marked.keysTyped - marked.keysWithAlternatives,
                perMille(marked.keysTyped - marked.keysWithAlternatives, marked),
                double(marked.keysTyped - marked.keysWithAlternatives) / marked.pages);
    std::printf("  wer das Zeichen tippt, wo das kuerzer ist: %ld Tasten, gespart: %ld\n", marked.keysBestOf,
                marked.keysTyped - marked.keysBestOf);
    return 0;
}
