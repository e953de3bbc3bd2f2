// SPDX-License-Identifier: Apache-2.0
// bench_desk: what the operator waits for at the main window, measured on real key events under
// the offscreen platform, in a fresh home with waiting records made from the demo forms, each with
// its own copy of a demo page (an A4 page at 200 dpi, CCITT G4):
//   - start-up: the start-up steps, the main window built and shown with the first record and its
//     page in the viewer, until every pending event (painting included) is handled;
//   - leaving a field: Tab out of a changed field (re-check and recolour);
//   - F2 from the first field to a faulty last field;
//   - hand-over: F2 on a clean record (report printing off, backup off) until the next record is on
//     screen with its page (the posted events, its painting included, handled): check, save,
//     taking the next record;
//   - the export pass that follows a hand-over one turn of the event loop later, with its syncs.
//   bench_desk [RECORDS]   (default 40; the hand-over runs RECORDS - 2 times)
// Each figure is the median of its runs (start-up: the first, cold start); the last lines are the
// form scripts/bench collects. Nothing is asserted.

#include "app/Database.h"
#include "app/Home.h"
#include "app/MessagePresenter.h"
#include "app/mdlDB.h"
#include "ui/frmMain.h"
#include "workflow/Workspace.h"
#include "workflow/mdlStart.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QLineEdit>
#include <QTemporaryDir>
#include <QTest>
#include <algorithm>
#include <cstdio>
#include <ctime>
#include <memory>

namespace {

// count waiting records (state 10) from the demo forms, each with its own image file.
void insertWaitingRecords(int count) {
    QFile file(masterDataDir() + QStringLiteral("demo/forms.tsv"));
    file.open(QIODevice::ReadOnly);
    QStringList lines = QString::fromUtf8(file.readAll()).remove(QLatin1Char('\r')).split(QLatin1Char('\n'));
    const QStringList header = lines.takeFirst().split(QLatin1Char('\t'));
    lines.removeAll(QString());
    const int bmpColumn = int(header.indexOf(QStringLiteral("BMPName")));
    const QString images = withTrailingSlash(GetSysText(QStringLiteral("APP_Bildpfad")));
    const QString demoImages = masterDataDir() + QStringLiteral("demo/home/images/");
    QStringList marks;
    for (int i = 0; i < header.size(); ++i)
        marks << QStringLiteral("?");
    QSqlQuery insert =
        prepareSql(QStringLiteral("INSERT INTO zvbWerte (%1, Workflow_Status, Workflow_KorrID) VALUES (%2, 10, 0)")
                       .arg(header.join(QLatin1Char(',')), marks.join(QLatin1Char(','))));
    Transaction transaction;
    for (int i = 0; i < count; ++i) {
        QStringList row = lines[i % lines.size()].split(QLatin1Char('\t'));
        const QString demoImage = row[bmpColumn];
        row[bmpColumn] = QStringLiteral("desk%1.tif").arg(i, 4, 10, QLatin1Char('0'));
        for (int c = 0; c < row.size(); ++c)
            insert.bindValue(c, row[c]);
        execPrepared(insert);
        QFile::copy(demoImages + demoImage, images + row[bmpColumn]);
    }
    transaction.commit();
}

double median(QVector<double> values) {
    if (values.isEmpty())
        return -1;
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

// CPU time of the process (all its threads) in milliseconds: on a shared machine the steadier
// figure beside the wall clock.
double cpuMs() {
    timespec t{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &t);
    return double(t.tv_sec) * 1e3 + double(t.tv_nsec) / 1e6;
}

struct Latencies {
    QVector<double> wall;
    QVector<double> cpu;
};

// Milliseconds that action takes, with every event it leaves behind (repaints) handled.
template <class Action> void timed(Latencies& into, Action action) {
    QElapsedTimer timer;
    const double cpuBefore = cpuMs();
    timer.start();
    action();
    QApplication::processEvents();
    into.wall << double(timer.nsecsElapsed()) / 1e6;
    into.cpu << cpuMs() - cpuBefore;
}

// Prints the median wall time of the runs (the goal's measure) and their median CPU time.
void result(const char* what, const Latencies& runs, const char* goal) {
    const double wall = median(runs.wall);
    std::printf("%-46s %8.2f ms wall %8.2f ms CPU  (%lld runs)\n", what, wall, median(runs.cpu),
                static_cast<long long>(runs.wall.size()));
    std::printf("RESULT\t%s\t%.2f\tms\t-\t%s\n", what, wall, goal);
}

} // namespace

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    const int count = std::max(argc > 1 ? std::atoi(argv[1]) : 40, 4);
    QTemporaryDir folder;
    ConsolePresenter presenter(false);
    setMessagePresenter(&presenter);
    initHome(folder.path(), false, false);
    QDir::setCurrent(folder.path());
    SetSysValue(QStringLiteral("Backup_Enabled"), 0);
    SetSysValue(QStringLiteral("Report_Other_Country"), 0);
    SetSysValue(QStringLiteral("Report_Ambrix_Country"), 0);
    SetSysValue(QStringLiteral("F2_WieWeitSuchen"), 1);
    insertWaitingRecords(count);
    closeDatabase(); // the program opens its own connection

    // Start-up, cold: the steps of the start and the window with the first record on screen.
    std::unique_ptr<frmMain> window;
    Latencies startUp;
    timed(startUp, [&] {
        RunStartupSteps();
        window = std::make_unique<frmMain>();
        window->show();
        window->activateWindow();
    });
    if (!QTest::qWaitForWindowActive(window.get()) || window->currentRecord() < 0) {
        std::fprintf(stderr, "bench_desk: the main window shows no record\n");
        return 1;
    }
    QWindow* keys = window->windowHandle();
    const auto field = [&](const char* name) {
        return window->findChild<QLineEdit*>(QLatin1String(name));
    };
    const auto focus = [&](const char* name) {
        field(name)->setFocus();
        QApplication::processEvents();
    };

    // Leaving a changed field: its check and the colours of the form.
    Latencies leave;
    QLineEdit* nachname = field("NACHNAME");
    const QString name = nachname->text();
    for (int i = 0; i < 60; ++i) {
        focus("NACHNAME");
        nachname->setText(i % 2 ? name : name + QStringLiteral("x"));
        timed(leave, [&] { QTest::keyClick(keys, Qt::Key_Tab); });
    }
    focus("NACHNAME");
    nachname->setText(name);

    // F2 from the first field to the last one, which holds an unreadable character.
    QLineEdit* expiry = field("CARD_EXPIRY");
    const QString date = expiry->text();
    focus("CARD_EXPIRY");
    expiry->setText(QStringLiteral("31.12.20?9"));
    Latencies f2;
    bool landed = true;
    for (int i = 0; i < 60; ++i) {
        focus("FORM_ID");
        timed(f2, [&] { QTest::keyClick(keys, Qt::Key_F2); });
        landed = landed && QApplication::focusWidget() == expiry;
    }
    expiry->setText(date);
    focus("FORM_ID");

    // Hand-over by F2 on a clean record: checked, saved, exported, the next record on screen.
    SetSysValue(QStringLiteral("F2_WieWeitSuchen"), 0);
    Latencies handOver;
    Latencies exportPass;
    for (int i = 0; i + 2 < count; ++i) {
        const qint32 before = window->currentRecord();
        QElapsedTimer timer;
        const double cpuBefore = cpuMs();
        timer.start();
        // Sent to the focused field (through the application's filters, as a real key) rather than
        // to the window, whose simulated keys run the timers too.
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_F2);
        QCoreApplication::sendPostedEvents();
        handOver.wall << double(timer.nsecsElapsed()) / 1e6;
        handOver.cpu << cpuMs() - cpuBefore;
        // The timers' turn: the export pass the hand-over queued.
        timed(exportPass, [] {});
        if (window->currentRecord() == before || window->currentRecord() < 0) {
            std::fprintf(stderr, "bench_desk: record %d was not handed over\n", before);
            handOver.wall.removeLast();
            handOver.cpu.removeLast();
            exportPass.wall.removeLast();
            exportPass.cpu.removeLast();
            break;
        }
    }
    window.reset();

    if (!landed)
        std::fprintf(stderr, "bench_desk: F2 did not land on the faulty field\n");
    result("start-up to the first record", startUp, "<= 300 ms");
    result("leave a field (re-check, recolour)", leave, "<= 5 ms");
    result("F2 to the next faulty field", f2, "<= 5 ms");
    result("hand-over to the next record", handOver, "<= 50 ms");
    result("export pass after a hand-over", exportPass, "-");
    closeDatabase();
    return 0;
}
