// SPDX-License-Identifier: Apache-2.0
// The scan sequence on SANE's virtual devices: names of scanned pages, the feeder's pages as
// group 4 TIFFs, device faults that keep what was scanned, a real image through the pnm device, and
// the command line without a scanner.
#include "CliRun.h"
#include "ScanFixture.h"

#include "app/Database.h"
#include "app/Errors.h"
#include "app/mdlDB.h"
#include "scan/GetScanFile.h"
#include "scan/ScanSequence.h"
#include "scan/ScanSettings.h"

#include <QDir>
#include <QFileInfo>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QTemporaryDir>
#include <cstdlib>
#include <tuple>

#include <tiffio.h>

namespace {

// Records what the sequence told its caller.
struct RecordingObserver : ScanObserver {
    QStringList events;
    std::function<void(int)> afterPage;
    void acquiring(bool on) override { events << (on ? QStringLiteral("disable") : QStringLiteral("enable")); }
    void pageSaved(int pages, const QString& path) override {
        events << QFileInfo(path).fileName();
        if (afterPage)
            afterPage(pages);
    }
};

// The pool's rows in table order, each as its columns' values joined by blanks.
QStringList poolNames(const QString& columns = QStringLiteral("BMPName, NACHNAME")) {
    QStringList rows;
    QSqlQuery q = execSql(QStringLiteral("SELECT ") + columns + QStringLiteral(" FROM zvbWerte ORDER BY LfdNr"));
    while (q.next()) {
        QStringList values;
        for (int i = 0; i < q.record().count(); ++i)
            values << q.value(i).toString();
        rows << values.join(QLatin1Char(' '));
    }
    return rows;
}

class GetScanFileTest : public HomeTest {};
class ScanSequenceTest : public HomeTest {
protected:
    ScanSequenceTest() {
        useTestSane();
        scanner = makeScanner();
        resetVirtualDevice();
    }
    // The virtual device keeps its options for the whole process; every home starts it healthy.
    static void resetVirtualDevice(const QString& fault = QStringLiteral("Default")) {
        storeScanOptions(QStringLiteral("test:0"), {{QStringLiteral("read-return-value"), fault}});
    }
    std::unique_ptr<Scanner> scanner;
};

} // namespace

TEST_F(GetScanFileTest, names_carry_day_workstation_and_a_counter_that_skips_names_on_disk) {
    struct Case {
        const char* what;
        QDate today;
        const char* workstation;
        int storedDay, storedCounter;
        QStringList onDisk;
        const char* expected;
        int counterAfter;
    } cases[] = {
        {"first scan of a new day", QDate(2026, 11, 15), "01", 318, 77, {}, "319010001.tif", 2},
        {"name on disk skipped", QDate(2026, 11, 15), "01", 319, 1, {"319010001.tif"}, "319010002.tif", 3},
        {"counter 255", QDate(2026, 11, 15), "01", 319, 255, {}, "3190100FF.tif", 256},
        {"counter 4096", QDate(2026, 11, 15), "01", 319, 4096, {}, "319011000.tif", 4097},
        {"day 45, workstation 07", QDate(2026, 2, 14), "07", 45, 26, {}, "04507001A.tif", 27},
        // The same day of the next year goes on with the old counter.
        {"same day next year", QDate(2027, 11, 15), "01", 319, 9, {}, "319010009.tif", 10},
        // The counter's end is an overflow error and the counter stays.
        {"counter 32767", QDate(2026, 11, 15), "01", 319, 32767, {}, nullptr, 32767},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        clock.set(QDateTime(c.today, QTime(9, 0)));
        QDir(home.path(QStringLiteral("scan"))).removeRecursively();
        for (const QString& name : c.onDisk)
            home.writeFile(QStringLiteral("scan/") + name, "II*");
        SetSysValues(QStringLiteral("Scan_TagDesJahres"), c.storedDay, QStringLiteral("Scan_NrDesTages"),
                     c.storedCounter);
        SetSysValue(QStringLiteral("Scan_RechnerId"), QString::fromLatin1(c.workstation));

        if (c.expected)
            EXPECT_EQ(GetScanFile(), home.path(QStringLiteral("scan/") + QLatin1String(c.expected)));
        else
            EXPECT_THROW(GetScanFile(), VeridonError);
        EXPECT_EQ(GetSysValue(QStringLiteral("Scan_NrDesTages")).toInt(), c.counterAfter);
        EXPECT_EQ(GetSysValue(QStringLiteral("Scan_TagDesJahres")).toInt(), c.today.dayOfYear());
    }
}

// A whole feeder (the virtual device holds ten sheets) and device faults after some pages: every page
// saved is a group 4 TIFF at 200 dpi, the pages before a fault are evaluated and make the pool, and
// the fault is said once.
TEST_F(ScanSequenceTest, a_feeder_of_pages_becomes_group4_tiffs_and_a_new_pool_and_device_faults_keep_the_pages_saved) {
    struct Case {
        const char* status;
        int afterPages;
        const char* says;
    } cases[] = {
        {"Default", 10, nullptr},
        {"SANE_STATUS_JAMMED", 2, "Papierstau"},
        {"SANE_STATUS_COVER_OPEN", 2, "Abdeckung des Scanners ist offen"},
        {"SANE_STATUS_IO_ERROR", 2, "antwortet nicht mehr"},
        {"SANE_STATUS_NO_DOCS", 0, "keine Belege"},
        // The scan folder lies below a file, so it cannot be made: the first page stops the feeder.
        {nullptr, 0, "LEAD1_TwainPage()"},
    };
    const QStringList allNames{"319010001.tif", "319010002.tif", "319010003.tif", "319010004.tif", "319010005.tif",
                               "319010006.tif", "319010007.tif", "319010008.tif", "319010009.tif", "31901000A.tif"};
    for (const Case& c : cases) {
        SCOPED_TRACE(c.says ? c.says : "full feeder");
        TempHome caseHome;
        messages.clear();
        writeStandInEvaluation(caseHome);
        RecordingObserver observer;
        const QString fault = QString::fromLatin1(c.status);
        resetVirtualDevice(c.afterPages == 0 && c.status ? fault : QStringLiteral("Default"));
        if (!c.status)
            SetSysValue(QStringLiteral("Scan_Pfad"), caseHome.path(QStringLiteral("data.mdb/scan")));
        execSql(
            QStringLiteral("INSERT INTO zvbWerte (BMPName, NACHNAME, Workflow_Status) VALUES ('alt.tif', 'Alt', 10)"));
        observer.afterPage = [&](int pages) {
            QString error;
            if (pages == c.afterPages && c.says) {
                ASSERT_TRUE(scanner->setOption(QStringLiteral("read-return-value"), fault, error))
                    << error.toStdString();
            }
        };

        const ScanRun run = RunScanSequence(*scanner, {QStringLiteral("test:0"), {}, 0}, observer);

        const QStringList names = allNames.first(c.afterPages);
        EXPECT_EQ(std::tuple(run.pages, run.evaluated), std::tuple(c.afterPages, c.afterPages > 0));
        EXPECT_EQ(observer.events, QStringList{"disable"} + names + QStringList{"enable"});
        EXPECT_EQ(messages.prompts().size(), c.says ? 1 : 0) << messages.prompts().join(u'|').toStdString();
        if (c.says) {
            EXPECT_TRUE(messages.saw(QLatin1String(c.says)));
            EXPECT_EQ(messages.saw(QStringLiteral("Die 2 ")), c.afterPages > 0);
        }
        for (const QString& name : names) {
            // A4 at 200 dpi (give or take a pixel of rounding in the device), with the grid drawn on it.
            const TiffFacts tiff = readTiff(caseHome.path(QStringLiteral("images/") + name));
            EXPECT_EQ(std::tuple(tiff.compression, tiff.bitsPerSample, tiff.xDpi, tiff.yDpi),
                      std::tuple(COMPRESSION_CCITTFAX4, 1, 200.0f, 200.0f))
                << name.toStdString();
            EXPECT_LE(std::abs(int(tiff.width) - 1654) + std::abs(int(tiff.height) - 2339), 2);
            EXPECT_GT(tiff.blackShare, 0.001);
            EXPECT_LT(tiff.blackShare, 0.5);
        }
        EXPECT_EQ(QDir(caseHome.path(QStringLiteral("images"))).entryList({QStringLiteral("*.tif")}), names);
        // The old record is gone and the batch is the pool, in page order; without a page the
        // evaluation does not run and the pool stays.
        QStringList expectedPool = names.isEmpty() ? QStringList{"alt.tif Alt"} : QStringList();
        for (const QString& name : names)
            expectedPool << name + QStringLiteral(" Huber");
        EXPECT_EQ(poolNames(), expectedPool);
    }
}

// A rendered demo form "scanned" by SANE's pnm device is saved pixel for pixel. With the evaluation
// program built, paper becomes a record with every real part: read by zvscan, imported and cleaned
// up into the form's fields (dates as the card prints them; the form normalises them when checked).
TEST_F(ScanSequenceTest, the_pnm_device_scans_a_rendered_form_pixel_for_pixel_into_a_record) {
    const QString form = QStringLiteral(VERIDON_DATA_DIR "/demo/home/images/31901001.tif");
    const TiffFacts original = readTiff(form);
    const QString pbm = home.writeFile(QStringLiteral("vorlage.pbm"), original.pbm);
    storeScanOptions(QStringLiteral("pnm:0"), {{QStringLiteral("filename"), pbm}});
    chooseScanDevice(QStringLiteral("pnm:0"));
#ifdef VERIDON_ZVSCAN
    ASSERT_TRUE(QFile::link(QStringLiteral(VERIDON_ZVSCAN), home.path(QStringLiteral("zvscan"))));
    const QString columns = QStringLiteral(" TYP, STATE, NACHNAME, VORNAME, GEBDAT, CARD_ID, CARD_EXPIRY");
    const QString record = QStringLiteral(" 4 AT Huber Maria 03/07/1961 80040001234567890123 31/12/2029");
#else
    writeStandInEvaluation(home);
    const QString columns = QStringLiteral(" NACHNAME");
    const QString record = QStringLiteral(" Huber");
#endif
    RecordingObserver observer;

    const ScanRun run = RunScanSequence(*scanner, {}, observer);

    EXPECT_EQ(run.pages, 1);
    const TiffFacts scanned = readTiff(home.path(QStringLiteral("images/319010001.tif")));
    EXPECT_EQ(std::tuple(scanned.compression, scanned.xDpi), std::tuple(COMPRESSION_CCITTFAX4, 200.0f));
    EXPECT_TRUE(scanned.pbm == original.pbm) << "the page differs from the form fed in";
    EXPECT_EQ(poolNames(QStringLiteral("BMPName,") + columns), QStringList{QStringLiteral("319010001.tif") + record});
}

TEST_F(ScanSequenceTest, command_line_lists_devices_and_without_one_evaluates_what_is_in_the_folder) {
    useTestSane();
    const QString homeArg = home.dir();
    const CliRun devices = runCli({QStringLiteral("--home"), homeArg, QStringLiteral("devices")});
    EXPECT_EQ(devices.exitCode, 0) << devices.err.toStdString();
    EXPECT_TRUE(devices.out.contains(QStringLiteral("pnm:0")) && devices.out.contains(QStringLiteral("test:0")))
        << devices.out.toStdString();

    // A SANE without backends: no scanner at all. A page left from an earlier run is evaluated.
    QTemporaryDir noBackends;
    QFile(noBackends.filePath(QStringLiteral("dll.conf"))).open(QIODevice::WriteOnly);
    qputenv("SANE_CONFIG_DIR", noBackends.path().toLocal8Bit());
    home.writeFile(QStringLiteral("scan/319010001.tif"), "II*");
    writeStandInEvaluation(home);
    const CliRun scan = runCli({QStringLiteral("--home"), homeArg, QStringLiteral("scan")});
    useTestSane();

    EXPECT_EQ(scan.exitCode, 1);
    EXPECT_TRUE(scan.err.contains(QStringLiteral("Kein TWAIN kompatibles Gerät gefunden"))) << scan.err.toStdString();
    EXPECT_TRUE(scan.out.contains(QStringLiteral("319010001.tif")) && scan.out.contains(QStringLiteral("Huber")))
        << scan.out.toStdString();
}
