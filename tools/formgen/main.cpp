// SPDX-License-Identifier: Apache-2.0
// formgen: renders the demo form images from the demo form list, one bitonal group 4 TIFF per
// form, named after its BMPName. The committed images under data/demo/home/images come from here;
// run it again after changing the layout or the list.
// With --corpus N it writes a test corpus instead: N spoilt forms of made-up holders and their
// truth (truth.tsv) into --out, the same for the same --seed; --dpi 200 or 300 fixes the resolution,
// 0 mixes both.
#include "Corpus.h"
#include "DemoForms.h"
#include "FormRenderer.h"
#include "TiffWriter.h"

#include <QCommandLineParser>
#include <QDir>
#include <QFileInfo>
#include <QGuiApplication>

#include <cstdio>

namespace {

int writeCorpus(int count, unsigned seed, int dpi, const QString& outDir) {
    if (count <= 0 || !QDir().mkpath(outDir)) {
        std::fprintf(stderr, "formgen: Anzahl oder Zielordner ungültig.\n");
        return 1;
    }
    std::mt19937 random(seed);
    const QList<DemoForm> forms = corpusForms(count, random);
    for (const DemoForm& form : forms) {
        const formlayout::Layout& layout = formlayout::layoutFor(form.typ);
        const Degradation d = randomDegradation(random, dpi);
        const QImage page = degradePage(renderForm(layout, form.values), layout, d, random);
        QString error;
        if (!writeTiffPages(QDir(outDir).filePath(form.bmpName), {page}, &error)) {
            std::fprintf(stderr, "formgen: %s\n", qUtf8Printable(error));
            return 1;
        }
    }
    if (!writeTruth(QDir(outDir).filePath(QStringLiteral("truth.tsv")), forms)) {
        std::fprintf(stderr, "formgen: truth.tsv nicht schreibbar.\n");
        return 1;
    }
    std::printf("%d Formulare in %s\n", count, qUtf8Printable(outDir));
    return 0;
}

} // namespace

int main(int argc, char* argv[]) {
    // Drawing needs fonts but no display.
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Erzeugt die Bilder der Demo-Formulare."));
    parser.addHelpOption();
    const QString dataDir = QStringLiteral(VERIDON_DATA_DIR);
    QCommandLineOption formsOption(QStringLiteral("forms"), QStringLiteral("Formularliste (TSV)."),
                                   QStringLiteral("datei"), dataDir + QStringLiteral("/demo/forms.tsv"));
    QCommandLineOption outOption(QStringLiteral("out"), QStringLiteral("Zielordner der Bilder."),
                                 QStringLiteral("ordner"), dataDir + QStringLiteral("/demo/home/images"));
    QCommandLineOption corpusOption(QStringLiteral("corpus"), QStringLiteral("Testkorpus mit N Formularen."),
                                    QStringLiteral("n"));
    QCommandLineOption seedOption(QStringLiteral("seed"), QStringLiteral("Startwert des Zufalls."),
                                  QStringLiteral("zahl"), QStringLiteral("1"));
    QCommandLineOption dpiOption(QStringLiteral("dpi"), QStringLiteral("200, 300 oder 0 (gemischt)."),
                                 QStringLiteral("dpi"), QStringLiteral("200"));
    // The paper of the scanning demo: SANE's pnm device "scans" PBM files.
    QCommandLineOption pbmOption(QStringLiteral("pbm"),
                                 QStringLiteral("Seiten als PBM statt TIFF (für das pnm-Gerät)."));
    parser.addOption(formsOption);
    parser.addOption(outOption);
    parser.addOption(corpusOption);
    parser.addOption(seedOption);
    parser.addOption(dpiOption);
    parser.addOption(pbmOption);
    parser.process(app);

    if (parser.isSet(corpusOption))
        return writeCorpus(parser.value(corpusOption).toInt(), parser.value(seedOption).toUInt(),
                           parser.value(dpiOption).toInt(), parser.value(outOption));

    QString error;
    const QList<DemoForm> forms = readDemoForms(parser.value(formsOption), &error);
    if (forms.isEmpty()) {
        std::fprintf(stderr, "formgen: %s\n",
                     qUtf8Printable(error.isEmpty() ? QStringLiteral("keine Formulare") : error));
        return 1;
    }
    const QDir out(parser.value(outOption));
    if (!QDir().mkpath(out.path())) {
        std::fprintf(stderr, "formgen: Der Ordner '%s' kann nicht angelegt werden.\n", qUtf8Printable(out.path()));
        return 1;
    }
    for (const DemoForm& form : forms) {
        const QImage page = renderForm(formlayout::layoutFor(form.typ), form.values);
        if (parser.isSet(pbmOption)) {
            const QString path = out.filePath(QFileInfo(form.bmpName).completeBaseName() + QStringLiteral(".pbm"));
            if (!page.save(path, "PBM")) {
                std::fprintf(stderr, "formgen: %s kann nicht geschrieben werden\n", qUtf8Printable(path));
                return 1;
            }
            std::printf("%s\n", qUtf8Printable(path));
            continue;
        }
        const QString path = out.filePath(form.bmpName);
        if (!writeTiffPages(path, {page}, &error)) {
            std::fprintf(stderr, "formgen: %s\n", qUtf8Printable(error));
            return 1;
        }
        std::printf("%s  Vordruck %d  %lld KB\n", qUtf8Printable(path), form.typ, QFileInfo(path).size() / 1024);
    }
    return 0;
}
