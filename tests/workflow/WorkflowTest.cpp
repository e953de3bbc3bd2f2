// SPDX-License-Identifier: Apache-2.0
// The record workflow on a real data.mdb: which workstation holds which record, saving with a
// state, discarding with the image rules, and leaving the program.

#include "DemoRecords.h"
#include "HomeTest.h"
#include "app/Database.h"
#include "app/mdlDB.h"
#include "model/FormModel.h"
#include "model/ImageFiles.h"
#include "workflow/mdlWorkflow.h"

#include <QFileInfo>
#include <QSet>
#include <thread>

namespace {

class Workflow : public HomeTest {
protected:
    Workflow() {
        // This workstation is number 1 in the master data.
        EXPECT_EQ(GetKorrID(), 1);
    }
    ~Workflow() override { WerteArray().Clear(); }
};

TEST_F(Workflow, own_records_in_correction_are_released_before_every_take) {
    const QVector<qint32> records = insertDemoRecords(3);
    // A record this workstation left in correction (after a crash) goes back to the pool first and,
    // being first in table order, is taken again at once.
    execSql("UPDATE zvbWerte SET Workflow_Status=30, Workflow_KorrID=1 WHERE LfdNr=?", {records[0]});
    EXPECT_EQ(TakeNextRecord(), records[0]);

    // Taking again releases the one held now; the workstation never holds two records.
    execSql("UPDATE zvbWerte SET Workflow_Status=30, Workflow_KorrID=1 WHERE LfdNr=?", {records[2]});
    EXPECT_EQ(TakeNextRecord(), records[0]);
    EXPECT_EQ(workflowOf(records[2]), "10/0");
    EXPECT_EQ(CountRows("LfdNr", "zvbWerte", "Workflow_Status=30 AND Workflow_KorrID=1"), 1);

    EXPECT_EQ(ReleaseOwnRecords(), 1);
    EXPECT_EQ(workflowOf(records[0]), "10/0");
}

TEST_F(Workflow, records_are_taken_in_table_order_whoever_held_them_before) {
    const QVector<qint32> records = insertDemoRecords(5);
    // Fresh from the import nobody has ever held the records: no holder at all.
    execSql("UPDATE zvbWerte SET Workflow_KorrID=NULL");
    EXPECT_EQ(TakeNextRecord(), records[0]);
    EXPECT_EQ(workflowOf(records[0]), "30/1");
    EXPECT_EQ(WerteArray().GetValue("NACHNAME"), "Huber");
    // Given back (holder 0 now), it still comes first, before the never-held ones.
    EXPECT_EQ(TakeNextRecord(), records[0]);
    // Handed over (40), exported (41) or in the import (20): out of the pool.
    execSql("UPDATE zvbWerte SET Workflow_Status=40 WHERE LfdNr=?", {records[0]});
    EXPECT_EQ(TakeNextRecord(), records[1]);
    execSql("UPDATE zvbWerte SET Workflow_Status=20 WHERE LfdNr=?", {records[2]});
    execSql("UPDATE zvbWerte SET Workflow_Status=41 WHERE LfdNr=?", {records[3]});
    execSql("UPDATE zvbWerte SET Workflow_Status=40 WHERE LfdNr=?", {records[1]});
    EXPECT_EQ(TakeNextRecord(), records[4]);
}

TEST_F(Workflow, another_workstations_records_are_never_taken_nor_released) {
    const QVector<qint32> records = insertDemoRecords(2);
    execSql("UPDATE zvbWerte SET Workflow_Status=30, Workflow_KorrID=2 WHERE LfdNr=?", {records[0]});

    EXPECT_EQ(TakeNextRecord(), records[1]);
    EXPECT_EQ(workflowOf(records[0]), "30/2");
    EXPECT_EQ(ReleaseOwnRecords(), 1);
    EXPECT_EQ(workflowOf(records[0]), "30/2");

    // With the own record handed over, only the other workstation's record is left: nothing to take.
    execSql("UPDATE zvbWerte SET Workflow_Status=40 WHERE LfdNr=?", {records[1]});
    EXPECT_EQ(TakeNextRecord(), -1);
    EXPECT_EQ(workflowOf(records[0]), "30/2");
    EXPECT_TRUE(messages.messages().isEmpty()) << messages.prompts().join("|").toStdString();
}

// Two workstations on one data.mdb, each on its own connection and thread, take records as fast as
// they can; each finishes what it took. Every record must end with exactly one of them.
TEST_F(Workflow, two_workstations_never_hold_the_same_record) {
    const QVector<FormValues> forms = demoForms();
    QSet<qint32> all;
    {
        Transaction batch;
        for (int i = 0; i < 120; ++i)
            all.insert(insertRecord(forms[i % forms.size()]));
        batch.commit();
    }
    closeDatabase();

    struct Station {
        qint16 korrId;
        QVector<qint32> taken;
        QString failure;
        int conflicts = 0;
    };
    Station a{3, {}, {}};
    Station b{4, {}, {}};
    auto work = [](Station* s) {
        try {
            for (;;) {
                const qint32 n = ClaimNextRecord(s->korrId);
                if (n < 0)
                    break;
                // Holding it means: nobody else holds it now.
                if (workflowOf(n) != QStringLiteral("30/%1").arg(s->korrId))
                    ++s->conflicts;
                s->taken << n;
                execSql(
                    QStringLiteral("UPDATE zvbWerte SET Workflow_Status=40, Workflow_KorrID=0 WHERE LfdNr=%1").arg(n));
            }
        } catch (const std::exception& e) {
            s->failure = QString::fromLocal8Bit(e.what());
        }
        closeDatabase();
    };
    std::thread first(work, &a);
    std::thread second(work, &b);
    first.join();
    second.join();

    EXPECT_TRUE(a.failure.isEmpty()) << a.failure.toStdString();
    EXPECT_TRUE(b.failure.isEmpty()) << b.failure.toStdString();
    EXPECT_EQ(a.conflicts + b.conflicts, 0);
    const QSet<qint32> takenByA(a.taken.cbegin(), a.taken.cend());
    const QSet<qint32> takenByB(b.taken.cbegin(), b.taken.cend());
    EXPECT_EQ(takenByA.size(), a.taken.size());
    EXPECT_FALSE(takenByA.intersects(takenByB));
    EXPECT_EQ(takenByA + takenByB, all);
    EXPECT_EQ(CountRows("LfdNr", "zvbWerte", "Workflow_Status=40"), 120);
}

TEST_F(Workflow, a_scan_empties_a_workstations_own_pool_but_never_a_shared_one) {
    insertRecord(demoForms()[0], 10);
    insertRecord(demoForms()[1], 30, 2);
    insertRecord(demoForms()[2], 40);
    const bool shared = !testPoolServer().isEmpty();
    EXPECT_EQ(EmptyPoolForScan(), shared ? 0 : 3);
    EXPECT_EQ(CountRows("*", "zvbWerte", QString()), shared ? 3 : 0);
}

TEST_F(Workflow, save_with_status_writes_the_values_and_gives_the_record_up) {
    const QVector<qint32> records = insertDemoRecords(2);
    const qint32 n = TakeNextRecord();
    WerteArray().SetValue("NACHNAME", "Hüber-Lenz");
    WerteArray().SetValue("Korrigiert", "1");
    EXPECT_TRUE(SaveWithStatus(n, WorkflowStatus::HandedOver));
    EXPECT_EQ(workflowOf(n), "40/0");
    EXPECT_EQ(columnOf(n, "NACHNAME"), "Hüber-Lenz");
    EXPECT_EQ(columnOf(n, "Korrigiert"), "1");

    EXPECT_FALSE(SaveWithStatus(-1, WorkflowStatus::HandedOver));
    EXPECT_EQ(workflowOf(records[1]), "10/0");
}

class Discard : public Workflow {
protected:
    QString writeImage(const QString& name) const {
        return home.writeFile("images/" + name, QByteArray("II*\0", 4) + QByteArray(200, '\x11'));
    }
};

TEST_F(Discard, image_folder_has_a_trailing_slash_and_path_like_names_are_recognised) {
    EXPECT_EQ(GetBildpfad(), home.path("images/"));
    for (const char* name : {"C:\\scan\\31901001.tif", "scan/31901001.tif", "a,b.tif", "D:31901001.tif"}) {
        EXPECT_TRUE(IsPathLikeImageName(name)) << name;
        EXPECT_EQ(RecordImageFile(name), "") << name;
    }
    EXPECT_FALSE(IsPathLikeImageName("31901001.tif"));
    EXPECT_EQ(RecordImageFile("31901001.tif"), home.path("images/31901001.tif"));
    EXPECT_EQ(RecordImageFile(""), "");
    EXPECT_EQ(DiscardedImageName("31901001.tif"), "31901001_d.tif");
    EXPECT_EQ(DiscardedImageName("scan.2026.tif"), "scan.2026_d.tif");
    EXPECT_EQ(DiscardedImageName("31901001"), "31901001_d.");
}

TEST_F(Discard, deletes_the_record_and_its_bare_named_image_keeping_a_backup_copy) {
    const QVector<qint32> records = insertDemoRecords(2);
    const QString image = writeImage("31901001.tif");
    const qint32 n = TakeNextRecord();
    EXPECT_TRUE(DiscardRecord(n, true));
    EXPECT_EQ(workflowOf(n), "");
    EXPECT_FALSE(QFileInfo::exists(image));
    EXPECT_TRUE(QFileInfo::exists(home.path("backup/261115/images/31901001_d.tif")));
    EXPECT_EQ(workflowOf(records[1]), "10/0");
    const QString log = QString::fromLatin1(home.readFile("zvMsgLog.txt"));
    EXPECT_TRUE(log.contains(QStringLiteral("frmMain.actionVerwerfen();Beleg #%1 - 31901001.tif gel").arg(n)))
        << log.toStdString();
}

TEST_F(Discard, a_path_like_image_name_is_never_deleted_from_disk) {
    FormValues form = demoForms().first();
    // The image sits in a sub-folder of the image folder and is named with that folder: a path.
    const QString image = writeImage("alt/31901001.tif");
    form["BMPName"] = "alt/31901001.tif";
    const qint32 withSlash = insertRecord(form);
    form["BMPName"] = "alt\\31901001.tif";
    const qint32 withBackslash = insertRecord(form);

    for (const qint32 n : {withSlash, withBackslash}) {
        ASSERT_TRUE(LoadRecord(n));
        EXPECT_TRUE(DiscardRecord(n, true));
        EXPECT_EQ(workflowOf(n), "");
        EXPECT_TRUE(QFileInfo::exists(image));
    }
    EXPECT_TRUE(messages.messages().isEmpty()) << messages.prompts().join("|").toStdString();
}

TEST_F(Discard, without_image_backup_no_copy_is_kept_and_a_missing_image_is_no_obstacle) {
    execSql("UPDATE zvbSys SET Backup_Bilder=FALSE");
    insertDemoRecords(2);
    const QString image = writeImage("31901001.tif");
    qint32 n = TakeNextRecord();
    EXPECT_TRUE(DiscardRecord(n, true));
    EXPECT_FALSE(QFileInfo::exists(image));
    EXPECT_FALSE(QFileInfo::exists(home.path("backup/261115/images/31901001_d.tif")));

    n = TakeNextRecord(); // its image 31901002.tif was never written
    EXPECT_TRUE(DiscardRecord(n, true));
    EXPECT_EQ(workflowOf(n), "");
    EXPECT_TRUE(messages.messages().isEmpty());
}

TEST_F(Discard, leaving_clears_the_images_of_the_image_folder_only) {
    writeImage("31901001.tif");
    writeImage("31901002.TIF");
    const QString note = writeImage("liesmich.txt");
    EXPECT_EQ(DeleteFolderImages(), 2);
    EXPECT_FALSE(QFileInfo::exists(home.path("images/31901001.tif")));
    EXPECT_TRUE(QFileInfo::exists(note));
}

class HandOver : public Workflow {
protected:
    HandOver() { FelderArray().Fill(); }
    ~HandOver() override { FelderArray().EmptyArray(); }
};

TEST_F(HandOver, errors_block_without_a_question_and_a_corrected_record_goes) {
    const FormValues clean = demoForms().first();
    FormValues form = clean;
    form["NACHNAME"] = "Hu?er";
    form["CARD_ID"] = "8004A";
    insertRecord(form);
    TakeNextRecord();
    QString errorText;
    int listShown = 0;
    const auto showList = [&](const QString&) {
        ++listShown;
    };
    EXPECT_FALSE(DecideHandOver(errorText, showList));
    EXPECT_TRUE(errorText.contains("befindet sich noch ein ?")) << errorText.toStdString();
    EXPECT_TRUE(errorText.contains("muss eine Zahl enthalten")) << errorText.toStdString();
    EXPECT_EQ(WerteArray().GetValue("Korrigiert"), "0");

    WerteArray().SetValue("NACHNAME", clean["NACHNAME"]);
    WerteArray().SetValue("CARD_ID", clean["CARD_ID"]);
    errorText.clear();
    EXPECT_TRUE(DecideHandOver(errorText, showList));
    EXPECT_EQ(errorText, "");
    EXPECT_EQ(WerteArray().GetValue("Korrigiert"), "1");
    EXPECT_EQ(listShown, 0);
    EXPECT_TRUE(messages.messages().isEmpty());
}

// Maria Huber's Austrian insurance number with a wrong check digit: the card check warns.
TEST_F(HandOver, warnings_show_the_list_and_with_yes_the_record_goes_to_40_and_is_exported) {
    execSql("UPDATE zvbSys SET Report_Ambrix_Country=0, Report_Other_Country=0");
    const QVector<qint32> records = insertDemoRecords(2);
    execSql("UPDATE zvbWerte SET PERSONAL_ID='1234030761' WHERE LfdNr=?", {records[0]});
    home.writeFile("images/31901001.tif", "II*");
    const qint32 n = TakeNextRecord();
    QString errorText;
    QString listed;
    messages.queueAnswer(MsgBox::No);
    EXPECT_FALSE(DecideHandOver(errorText, [&](const QString& text) { listed = text; }));
    EXPECT_EQ(listed, "\r\nPersönliche Kennnummer passt nicht zu Aufbau und Prüfziffer der persönlichen Kennnummer des "
                      "Staates AT");
    EXPECT_TRUE(messages.saw("Es gibt noch Warnungen zu diesem Beleg!"));
    EXPECT_EQ(WerteArray().GetValue("Korrigiert"), "0");

    errorText.clear();
    messages.queueAnswer(MsgBox::Yes);
    ASSERT_TRUE(DecideHandOver(errorText, nullptr));
    EXPECT_EQ(errorText, "");
    EXPECT_EQ(WerteArray().GetValue("Korrigiert"), "1");
    EXPECT_FALSE(CompleteHandOver(-1));
    ASSERT_TRUE(CompleteHandOver(n));

    EXPECT_EQ(workflowOf(n), ""); // 40, exported (41) and removed by the export pass
    const QString xml = QString::fromLatin1(home.readFile("export/31901001.xml"));
    EXPECT_TRUE(xml.contains("<Name>Huber</Name>")) << xml.toStdString();
    const QString copy = QString::fromLatin1(home.readFile("backup/261115/exportdata/exp.txt"));
    EXPECT_TRUE(copy.contains("Huber,Maria")) << copy.toStdString();
    EXPECT_EQ(workflowOf(records[1]), "10/0");
}

} // namespace
