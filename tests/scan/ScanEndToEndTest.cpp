// SPDX-License-Identifier: Apache-2.0
// Paper to record with every real part: a drawn demo form "scanned" by SANE's pnm device, read by
// the evaluation program zvscan, imported and cleaned up into the form's fields.
#include "ScanFixture.h"

#include "app/Database.h"
#include "scan/ScanSequence.h"
#include "scan/ScanSettings.h"

#include <QFile>
#include <QSqlQuery>

TEST(ScanEndToEnd, a_drawn_form_becomes_a_record_with_the_cards_values) {
    useTestSane();
    FixedClock clock(QDateTime(QDate(2026, 11, 15), QTime(10, 30)));
    setAppClock(&clock);
    TempHome home;
    const QString pbm = home.path(QStringLiteral("vorlage.pbm"));
    ASSERT_TRUE(tiffToPbm(QStringLiteral(VERIDON_DATA_DIR "/demo/home/images/31901001.tif"), pbm));
    storeScanOptions(QStringLiteral("pnm:0"), {{QStringLiteral("filename"), pbm}});
    chooseScanDevice(QStringLiteral("pnm:0"));
    ASSERT_TRUE(QFile::link(QStringLiteral(VERIDON_ZVSCAN), home.path(QStringLiteral("zvscan"))));
    std::unique_ptr<Scanner> scanner = makeScanner();
    ScanObserver quiet;

    const ScanRun run = RunScanSequence(*scanner, {}, quiet);
    setAppClock(nullptr);

    ASSERT_TRUE(run.imported);
    QSqlQuery q = execSql(QStringLiteral("SELECT BMPName, TYP, STATE, NACHNAME, VORNAME, GEBDAT, CARD_ID, CARD_EXPIRY "
                                         "FROM zvbWerte"));
    ASSERT_TRUE(q.next());
    QStringList record;
    for (int i = 0; i < 8; ++i)
        record << q.value(i).toString();
    // Dates are stored as the card prints them; the form normalises them when they are checked.
    EXPECT_EQ(record, (QStringList{"319010001.tif", "4", "AT", "Huber", "Maria", "03/07/1961", "80040001234567890123",
                                   "31/12/2029"}));
    EXPECT_FALSE(q.next());
}
