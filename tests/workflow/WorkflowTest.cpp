// SPDX-License-Identifier: Apache-2.0
// The record workflow on a real data.mdb: which workstation holds which record, saving with a
// state, discarding with the image rules, and leaving the program.

#include "DemoRecords.h"
#include "HomeTest.h"
#include "app/Database.h"
#include "app/mdlDB.h"
#include "model/FormModel.h"
#include "model/ImageFiles.h"
#include "scan/ScanSequence.h"
#include "workflow/mdlWorkflow.h"

#include <QFileInfo>
#include <algorithm>
#include <thread>

namespace {

class Workflow : public HomeTest {
protected:
    Workflow() {
        // This workstation is number 1 in the master data.
        EXPECT_EQ(GetKorrID(), 1);
    }
    ~Workflow() override { WerteArray().Clear(); }
    static void setState(qint32 n, int status, int korrId = 0) {
        execSql("UPDATE zvbWerte SET Workflow_Status=?, Workflow_KorrID=? WHERE LfdNr=?", {status, korrId, n});
    }
};

// Records come in table order, whoever held them before; a record this workstation left in
// correction (after a crash) goes back to the pool before every take, so it never holds two; another
// workstation's record is neither taken nor released.
TEST_F(Workflow, records_are_taken_in_table_order_own_ones_released_first_others_never_touched) {
    const QVector<qint32> r = insertDemoRecords(5);
    execSql("UPDATE zvbWerte SET Workflow_KorrID=NULL"); // fresh from the import: no holder at all
    setState(r[0], 30, 2);
    EXPECT_EQ(TakeNextRecord(), r[1]);
    EXPECT_EQ(workflowOf(r[1]), "30/1");
    EXPECT_EQ(WerteArray().GetValue("NACHNAME"), "de Vries");
    setState(r[3], 30, 1);
    EXPECT_EQ(TakeNextRecord(), r[1]) << "given back (holder 0 now), it still comes before the never-held ones";
    EXPECT_EQ(workflowOf(r[3]), "10/0");
    EXPECT_EQ(CountRows("LfdNr", "zvbWerte", "Workflow_Status=30 AND Workflow_KorrID=1"), 1);
    // Handed over (40), exported (41) or in the import (20): out of the pool.
    setState(r[1], 40);
    setState(r[2], 20);
    setState(r[3], 41);
    EXPECT_EQ(TakeNextRecord(), r[4]);
    EXPECT_EQ(ReleaseOwnRecords(), 1);
    EXPECT_EQ(workflowOf(r[4]), "10/0");
    // Saving with a state writes the values and gives the record up; only a record held can be saved.
    EXPECT_FALSE(SaveWithStatus(r[4], WorkflowStatus::HandedOver));
    ASSERT_EQ(TakeNextRecord(), r[4]);
    WerteArray().SetValue("NACHNAME", "Hüber-Lenz");
    EXPECT_TRUE(SaveWithStatus(r[4], WorkflowStatus::HandedOver));
    EXPECT_EQ(workflowOf(r[4]), "40/0");
    EXPECT_EQ(columnOf(r[4], "NACHNAME"), "Hüber-Lenz");
    EXPECT_FALSE(SaveWithStatus(-1, WorkflowStatus::HandedOver));
    EXPECT_EQ(TakeNextRecord(), -1);
    EXPECT_EQ(workflowOf(r[0]), "30/2");
}

// Two workstations on one data.mdb, each on its own connection and thread, take records as fast as
// they can; each finishes what it took. Every record must end with exactly one of them, and a record
// just taken must show its taker as holder.
TEST_F(Workflow, two_workstations_never_hold_the_same_record) {
    QVector<qint32> all;
    {
        Transaction batch;
        for (int i = 0; i < 120; ++i)
            all << insertRecord(demoForms()[i % 8]);
        batch.commit();
    }
    closeDatabase();
    QVector<qint32> taken[2];
    QString failure[2];
    auto work = [&](int station) {
        const int korrId = 3 + station;
        try {
            for (qint32 n = ClaimNextRecord(qint16(korrId)); n >= 0; n = ClaimNextRecord(qint16(korrId))) {
                if (workflowOf(n) != QStringLiteral("30/%1").arg(korrId))
                    failure[station] += QStringLiteral("%1 held by %2; ").arg(n).arg(workflowOf(n));
                taken[station] << n;
                execSql(QStringLiteral("UPDATE zvbWerte SET Workflow_Status=40, Workflow_KorrID=0 WHERE LfdNr=?"), {n});
            }
        } catch (const std::exception& e) {
            failure[station] = QString::fromLocal8Bit(e.what());
        }
        closeDatabase();
    };
    std::thread first(work, 0);
    std::thread second(work, 1);
    first.join();
    second.join();

    EXPECT_EQ(failure[0] + failure[1], "");
    QVector<qint32> both = taken[0] + taken[1];
    std::sort(both.begin(), both.end());
    EXPECT_EQ(both, all) << "each record taken once, none left";
    EXPECT_EQ(CountRows("LfdNr", "zvbWerte", "Workflow_Status=40"), 120);
}

class Discard : public Workflow {
protected:
    QString writeImage(const QString& name) const {
        return home.writeFile("images/" + name, QByteArray("II*\0", 4) + QByteArray(200, '\x11'));
    }
};

// A bare name's image goes, with a copy in the day's backup while images are backed up; a path-like
// name (an image in a sub-folder, named with it) is never deleted from disk; a missing image is no
// obstacle.
TEST_F(Discard, deletes_the_record_and_its_bare_named_image_but_never_a_path_like_one) {
    FormValues form = demoForms().first();
    const QString image = writeImage("31901001.tif");
    const QString nested = writeImage("alt/31901001.tif");
    // A bare name, a path with either separator, and an image never written.
    QVector<qint32> discarded;
    for (const char* name : {"31901001.tif", "alt/31901001.tif", "alt\\31901001.tif", "31901002.tif"}) {
        form["BMPName"] = name;
        discarded << insertRecord(form);
    }
    const qint32 other = insertRecord(demoForms()[2]);
    for (const qint32 n : discarded) {
        if (n == discarded.last())
            execSql("UPDATE zvbSys SET Backup_Bilder=FALSE");
        ASSERT_TRUE(ClaimRecord(n, GetKorrID()) && LoadRecord(n));
        EXPECT_TRUE(DiscardRecord(n, true));
        EXPECT_EQ(workflowOf(n), "");
    }
    EXPECT_FALSE(QFileInfo::exists(image));
    EXPECT_TRUE(QFileInfo::exists(home.path("backup/261115/images/31901001_d.tif")));
    EXPECT_TRUE(QFileInfo::exists(nested));
    EXPECT_FALSE(QFileInfo::exists(home.path("backup/261115/images/31901002_d.tif")));
    EXPECT_EQ(workflowOf(other), "10/0");
    const QString log = QString::fromLatin1(home.readFile("zvMsgLog.txt"));
    EXPECT_TRUE(
        log.contains(QStringLiteral("frmMain.actionVerwerfen();Beleg #%1 - 31901001.tif gel").arg(discarded[0])))
        << log.toStdString();
    EXPECT_TRUE(messages.messages().isEmpty()) << messages.prompts().join("|").toStdString();
}

// A workstation's record is released behind its back (it left, started again or lost its
// connection) and the pool moves on. Its late OK or discard must leave the record, its values and
// its image exactly as the pool has them now, and say why.
TEST_F(Discard, a_record_released_meanwhile_is_neither_handed_over_nor_discarded) {
    const struct {
        qint16 otherStatus; // what became of the record meanwhile; 30 = workstation 2 took it
        const char* state;
        const char* why;
    } cases[] = {
        {30, "30/2", "Er wurde freigegeben und wird jetzt am Arbeitsplatz 2 bearbeitet."},
        {10, "10/0", "Er wurde freigegeben und wartet wieder im Pool."},
        {40, "40/0", "Er ist bereits übergeben (Status 40)."},
    };
    const QString image = writeImage("31901001.tif");
    for (const auto& c : cases) {
        execSql("DELETE FROM zvbWerte");
        const qint32 n = insertDemoRecords(1)[0];
        ASSERT_EQ(TakeNextRecord(), n);
        WerteArray().SetValue("NACHNAME", "Nowak");
        ReleaseOwnRecords();
        ASSERT_TRUE(c.otherStatus == 10 || ClaimRecord(n, 2));
        if (c.otherStatus == 40)
            execSql("UPDATE zvbWerte SET Workflow_Status=40, Workflow_KorrID=0 WHERE LfdNr=?", {n});

        EXPECT_FALSE(SaveWithStatus(n, WorkflowStatus::HandedOver)) << c.state;
        EXPECT_FALSE(DiscardRecord(n, true)) << c.state;
        EXPECT_EQ(workflowOf(n), c.state);
        EXPECT_EQ(columnOf(n, "NACHNAME"), demoForms()[0]["NACHNAME"]) << "the late correction is not written";
        EXPECT_TRUE(QFileInfo::exists(image));
        EXPECT_TRUE(messages.saw(QString("Beleg %1 gehört nicht mehr zu diesem Arbeitsplatz. %2").arg(n).arg(c.why)))
            << c.state;
        EXPECT_FALSE(StillHoldsRecord(n));
        WerteArray().Clear();
    }
}

TEST_F(Discard, leaving_deletes_only_images_that_no_record_of_the_pool_names_and_a_scan_only_an_own_pool) {
    const QVector<qint32> records = insertDemoRecords(4);
    execSql("UPDATE zvbWerte SET Workflow_Status=30, Workflow_KorrID=2 WHERE LfdNr=?", {records[1]});
    execSql("UPDATE zvbWerte SET Workflow_Status=40 WHERE LfdNr=?", {records[2]});
    const QStringList kept{writeImage("31901001.tif"), writeImage("31901002.tif"), writeImage("31901003.tif"),
                           writeImage("31901004.TIF"), writeImage("liesmich.txt")};
    const QString discarded = writeImage("31901009.tif"); // its record was discarded or exported
    // Waiting, held by workstation 2, handed over and not yet exported, named in another case: kept.
    EXPECT_EQ(DeleteUnreferencedImages(), 1);
    EXPECT_FALSE(QFileInfo::exists(discarded));
    for (const QString& file : kept)
        EXPECT_TRUE(QFileInfo::exists(file)) << file.toStdString();

    // A pool that cannot be read deletes nothing: a doubt keeps the images.
    writeImage("31901009.tif");
    execSql("ALTER TABLE zvbWerte RENAME TO zvbWerte_alt");
    EXPECT_EQ(DeleteUnreferencedImages(), 0);
    EXPECT_TRUE(QFileInfo::exists(discarded));
    EXPECT_TRUE(messages.saw("DeleteUnreferencedImages()"));
    execSql("ALTER TABLE zvbWerte_alt RENAME TO zvbWerte");

    // A scan empties a workstation's own pool whatever the states, never a shared one.
    const bool shared = !testPoolServer().isEmpty();
    EXPECT_EQ(EmptyPoolForScan(), shared ? 0 : 4);
    EXPECT_EQ(CountRows("*", "zvbWerte", QString()), shared ? 4 : 0);
}

} // namespace
