// SPDX-License-Identifier: Apache-2.0
// Handing records over: a warning asks before the hand-over, and a morning's work through the real
// hand-over and discard counts into the day's stats file; a locked or unwritable file or backup
// switched off never stops the work.

#include "admin/OperatorStats.h"
#include "DemoRecords.h"
#include "HomeTest.h"
#include "app/Database.h"
#include "app/TextFile.h"
#include "model/FormModel.h"
#include "workflow/mdlWorkflow.h"

#include <QDir>
#include <QFileInfo>
#include <QLockFile>

namespace {

class HandOver : public HomeTest {
protected:
    HandOver() {
        execSql("UPDATE zvbSys SET Report_Ambrix_Country=0, Report_Other_Country=0");
        FelderArray().Fill();
        records = insertDemoRecords(7);
        for (int i = 1; i <= 7; ++i)
            home.writeFile(QString("images/3190100%1.tif").arg(i), "II*");
    }
    ~HandOver() override {
        WerteArray().Clear();
        FelderArray().EmptyArray();
    }
    void at(int hour, int minute) { clock.set(QDateTime(QDate(2026, 11, 15), QTime(hour, minute))); }
    void typeKeys(int count) {
        for (int i = 0; i < count; ++i)
            noteKeystroke();
    }
    // Takes the next record, lets edit change it, and hands it over as "OK / übergeben" does.
    void handOverNext(const std::function<void()>& edit) {
        const qint32 n = TakeNextRecord();
        ASSERT_GE(n, 0);
        edit();
        QString errors;
        ASSERT_TRUE(DecideHandOver(errors, nullptr)) << errors.toStdString();
        ASSERT_TRUE(CompleteHandOver(n));
    }
    QString statsFile() const { return home.path("backup/261115/stats/arbeitsplatz_1.txt"); }
    QStringList statsLines() const {
        QStringList lines;
        readTextLines(statsFile(), lines);
        return lines;
    }
    QString log() const { return QString::fromLatin1(home.readFile("zvMsgLog.txt")); }

    QVector<qint32> records;
};

// A warning (Maria Huber's Austrian insurance number with a wrong check digit) shows its list and
// asks; no keeps the record as not corrected, yes marks it corrected. Errors and the export after
// the hand-over are the command line's accept test.
TEST_F(HandOver, a_warning_asks_and_only_yes_marks_the_record_corrected) {
    execSql("UPDATE zvbWerte SET PERSONAL_ID='1234030761' WHERE LfdNr=?", {records[0]});
    ASSERT_EQ(TakeNextRecord(), records[0]);
    QString errorText;
    QString listed;
    messages.queueAnswer(MsgBox::No);
    EXPECT_FALSE(DecideHandOver(errorText, [&](const QString& text) { listed = text; }));
    EXPECT_EQ(listed, "\r\nPersönliche Kennnummer passt nicht zu Aufbau und Prüfziffer der persönlichen Kennnummer des "
                      "Staates AT");
    EXPECT_TRUE(messages.saw("Es gibt noch Warnungen zu diesem Beleg!"));
    EXPECT_EQ(WerteArray().GetValue("Korrigiert"), "0");
    messages.queueAnswer(MsgBox::Yes);
    EXPECT_TRUE(DecideHandOver(errorText, nullptr));
    EXPECT_EQ(errorText, "");
    EXPECT_EQ(WerteArray().GetValue("Korrigiert"), "1");
}

TEST_F(HandOver, a_days_work_is_counted_and_a_file_that_cannot_be_written_never_stops_it) {
    at(10, 30);
    handOverNext([&] {
        WerteArray().SetValue("NACHNAME", "Hüber"); // two fields corrected
        WerteArray().SetValue("VORNAME", "Marie");
        typeKeys(12);
        at(10, 32);
    });
    handOverNext([&] { // a clean record only looked at
        typeKeys(3);
        at(10, 33);
    });
    ASSERT_GE(TakeNextRecord(), 0);
    WerteArray().SetValue("NACHNAME", "Dupond"); // corrections of a discarded record do not count
    typeKeys(4);
    at(10, 34);
    ASSERT_TRUE(DiscardRecord(records[2], true));

    EXPECT_EQ(statsLines(), (QStringList{"Arbeitsplatz=1", "Datum=15.11.2026", "Uebergeben=2", "Verworfen=1",
                                         "FelderKorrigiert=2", "Tastenanschlaege=19", "Arbeitssekunden=240"}));
    const QVector<OperatorDay> days = readOperatorDays(1);
    ASSERT_EQ(days.size(), 1);
    EXPECT_DOUBLE_EQ(days[0].keystrokesPerRecord(), 19.0 / 3.0);
    EXPECT_DOUBLE_EQ(days[0].recordsPerHour(), 30.0) << "two records in four minutes";

    // A record left on screen over lunch counts half an hour, not the break.
    handOverNext([&] { at(13, 0); });
    const QStringList before = statsLines();
    EXPECT_TRUE(before.contains("Arbeitssekunden=2040")) << before.join('|').toStdString();

    // A locked or unwritable file or backup switched off costs the count, never the hand-over.
    {
        QLockFile other(statsFile() + ".lock"); // another program of this workstation writes
        ASSERT_TRUE(other.tryLock(0));
        handOverNext([] {});
    }
    EXPECT_EQ(statsLines(), before);
    EXPECT_TRUE(log().contains("gesperrt; der Beleg wird nicht gezählt")) << log().toStdString();
    EXPECT_EQ(workflowOf(records[4]), "") << "handed over and exported all the same";

    // A file that cannot be replaced (a folder in its place) keeps nothing and stops nothing.
    QFile::remove(statsFile());
    ASSERT_TRUE(QDir().mkpath(statsFile()));
    EXPECT_FALSE(keepRecordWork(RecordWork{}, true));
    EXPECT_TRUE(log().contains("kann nicht geschrieben werden")) << log().toStdString();
    ASSERT_TRUE(QDir(statsFile()).removeRecursively());

    execSql("UPDATE zvbSys SET Backup_Enabled='0'");
    handOverNext([] {});
    EXPECT_FALSE(QFileInfo::exists(statsFile())) << "no backup, no statistics";
    EXPECT_TRUE(messages.messages().isEmpty()) << messages.prompts().join("|").toStdString();
}

} // namespace
