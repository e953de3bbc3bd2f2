// SPDX-License-Identifier: Apache-2.0
// How long the viewer takes to open a scan page and to move from one field to the next on it,
// each measured until the page is painted. Pages: a 300 dpi A4 colour scan (LZW, with paper grain
// as a scanner delivers it) and a 200 dpi bitonal form (group 4). Opening cycles through three
// copies of the file so that every round decodes; moving alternates two fields on one file.
//
//   build/default/bench/viewer/bench_viewer
#include "FormLayout.h"
#include "FormRenderer.h"
#include "TiffWriter.h"
#include "viewer/zvbkor.h"

#include <QAbstractScrollArea>
#include <QApplication>
#include <QFile>
#include <QPainter>
#include <QRandomGenerator>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

namespace {

QTemporaryDir* workDir = nullptr;

// An A4 colour page at 300 dpi: tinted paper with grain, a coloured card and lines of text.
QImage colourScan() {
    QImage page(2480, 3508, QImage::Format_RGB32);
    QRandomGenerator random(7);
    for (int y = 0; y < page.height(); ++y) {
        auto* line = reinterpret_cast<QRgb*>(page.scanLine(y));
        for (int x = 0; x < page.width(); ++x) {
            const int grain = int(random.bounded(9u)) - 4;
            line[x] = qRgb(246 + grain, 244 + grain, 236 + grain);
        }
    }
    QPainter p(&page);
    p.setRenderHint(QPainter::Antialiasing);
    p.setBrush(QColor(40, 90, 170));
    p.setPen(Qt::NoPen);
    p.drawRoundedRect(QRect(225, 645, 1770, 990), 50, 50);
    QFont font(QStringLiteral("Liberation Sans"));
    font.setPixelSize(48);
    p.setFont(font);
    p.setPen(QColor(20, 20, 20));
    for (int row = 0; row < 40; ++row)
        p.drawText(QPoint(225, 1800 + row * 40),
                   QStringLiteral("Zeile %1: Angaben zur versicherten Person und zur Behandlung").arg(row + 1));
    p.end();
    page.setDotsPerMeterX(11811);
    page.setDotsPerMeterY(11811);
    return page;
}

QImage bitonalForm() {
    const QHash<QString, QString> values{{QStringLiteral("NACHNAME"), QStringLiteral("Huber")},
                                         {QStringLiteral("VORNAME"), QStringLiteral("Maria")},
                                         {QStringLiteral("CARD_ID"), QStringLiteral("80040001234567890123")}};
    return renderForm(formlayout::layout4, values);
}

QStringList writeCopies(const QString& stem, const QImage& page) {
    QStringList paths;
    for (int i = 0; i < 3; ++i) {
        const QString path = workDir->filePath(QStringLiteral("%1-%2.tif").arg(stem).arg(i));
        if (!QFile::exists(path))
            writeTiffPages(path, {page});
        paths << path;
    }
    return paths;
}

// Paints the viewer's page area now, as the screen would show it.
void paintViewer() {
    for (QWidget* w : QApplication::topLevelWidgets())
        if (w->isVisible() && w->windowTitle() == QLatin1String("ZV-Beleg Image Viewer"))
            if (auto* area = w->findChild<QAbstractScrollArea*>())
                benchmark::DoNotOptimize(area->viewport()->grab());
}

void show(const QString& path, const QRect& r, const char* field) {
    if (Anzeigen(QFile::encodeName(path).constData(), field, "0", "0", r.x(), r.y(), r.width(), r.height()) != 1)
        std::abort();
    paintViewer();
}

void BM_OpenColourA4_300dpi(benchmark::State& state) {
    static const QStringList paths = writeCopies(QStringLiteral("farbe300"), colourScan());
    int i = 0;
    for (auto _ : state)
        show(paths[i++ % 3], QRect(420, 800, 1500, 90), "NACHNAME");
    state.counters["file_MB"] = double(QFile(paths[0]).size()) / 1e6;
}

void BM_RepositionColourA4_300dpi(benchmark::State& state) {
    static const QStringList paths = writeCopies(QStringLiteral("farbe300"), colourScan());
    show(paths[0], QRect(420, 800, 1500, 90), "NACHNAME");
    int i = 0;
    for (auto _ : state) {
        if (i++ % 2)
            show(paths[0], QRect(420, 800, 1500, 90), "NACHNAME");
        else
            show(paths[0], QRect(1245, 1470, 510, 90), "CARD_EXPIRY");
    }
}

void BM_OpenBitonalA4_200dpi(benchmark::State& state) {
    static const QStringList paths = writeCopies(QStringLiteral("formular"), bitonalForm());
    int i = 0;
    for (auto _ : state)
        show(paths[i++ % 3], QRect(190, 650, 1000, 60), "NACHNAME");
    state.counters["file_KB"] = double(QFile(paths[0]).size()) / 1e3;
}

void BM_RepositionBitonalA4_200dpi(benchmark::State& state) {
    static const QStringList paths = writeCopies(QStringLiteral("formular"), bitonalForm());
    show(paths[0], QRect(190, 650, 1000, 60), "NACHNAME");
    int i = 0;
    for (auto _ : state) {
        if (i++ % 2)
            show(paths[0], QRect(190, 650, 1000, 60), "NACHNAME");
        else
            show(paths[0], QRect(830, 980, 340, 60), "CARD_EXPIRY");
    }
}

// One zoom step in and one out on the colour page, each painted.
void BM_ZoomStepColourA4_300dpi(benchmark::State& state) {
    static const QStringList paths = writeCopies(QStringLiteral("farbe300"), colourScan());
    show(paths[0], QRect(420, 800, 1500, 90), "NACHNAME");
    for (auto _ : state) {
        AnzeigeZoom(0);
        paintViewer();
        AnzeigeZoom(1);
        paintViewer();
    }
}

BENCHMARK(BM_OpenColourA4_300dpi)->Unit(benchmark::kMillisecond)->MinTime(2.0);
BENCHMARK(BM_RepositionColourA4_300dpi)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_OpenBitonalA4_200dpi)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_RepositionBitonalA4_200dpi)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ZoomStepColourA4_300dpi)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char* argv[]) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    QTemporaryDir dir;
    workDir = &dir;
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    Schliessen();
    benchmark::Shutdown();
    return 0;
}
