// SPDX-License-Identifier: Apache-2.0
// The start-up steps that need no window: the field colours, the once-a-day housekeeping on the
// fixed test date (Sunday 15 November 2026, 10:30) and the order of the steps.

#include "HomeTest.h"
#include "app/Database.h"
#include "app/mdlDB.h"
#include "model/FormModel.h"
#include "workflow/mdlStart.h"

#include <QDir>

namespace {

class Housekeeping : public HomeTest {
protected:
    Housekeeping() {
        SetSysValue("Backup_HistoryDays", 7);
        plantOldBackup();
    }
    // A day of backup two weeks old, which a clean-up empties.
    void plantOldBackup() { home.writeFile("backup/261101/images/31901001.tif", "II*"); }
    bool oldBackupThere() const { return QFileInfo::exists(home.path("backup/261101/images/31901001.tif")); }
    void lastOpened(const QVariant& value) { SetSysValue("APP_LastOpened", value); }
    QString storedLastOpened() const { return GetSysValue("APP_LastOpened").toString(); }
};

// A first start ever, or a last opening that is no date, counts as a new day.
TEST_F(Housekeeping, a_first_start_or_a_new_day_cleans_the_backup_once) {
    for (const QVariant& last : {QVariant(), QVariant("gestern")}) {
        plantOldBackup();
        lastOpened(last);
        DBAufraeumen();
        EXPECT_FALSE(oldBackupThere()) << last.toString().toStdString();
        EXPECT_EQ(storedLastOpened(), "2026-11-15 10:30:00");
    }
    // Today at any hour is not a new day, yesterday one minute to midnight is.
    plantOldBackup();
    lastOpened("2026-11-15 00:00:00");
    DBAufraeumen();
    EXPECT_TRUE(oldBackupThere()) << "same day: no clean-up";
    EXPECT_EQ(storedLastOpened(), "2026-11-15 10:30:00") << "every start is noted";

    lastOpened("2026-11-14 23:59:00");
    DBAufraeumen();
    EXPECT_FALSE(oldBackupThere());
    EXPECT_TRUE(messages.messages().isEmpty());
}

TEST_F(Housekeeping, a_clock_set_back_warns_once_then_stays_quiet) {
    lastOpened("2026-11-16 08:00:00");
    DBAufraeumen();
    ASSERT_EQ(messages.messages().size(), 1);
    EXPECT_TRUE(messages.messages().first().prompt.startsWith(
        "Achtung!\r\nDas Datum, zu dem die Anwendung das letzte Mal geöffnet wurde, liegt in der Zukunft."));
    EXPECT_EQ(messages.messages().first().buttons, MsgBox::Critical);
    EXPECT_TRUE(oldBackupThere()) << "no clean-up on a day in the past";
    EXPECT_EQ(storedLastOpened(), "2026-11-15 10:30:00") << "the earlier date is stored";

    DBAufraeumen();
    EXPECT_EQ(messages.messages().size(), 1) << "the next start of the same day shows nothing";
}

class Colours : public HomeTest {};

// Stored colours are loaded and unset ones take their defaults; one bad colour resets all six, also
// those read before it, with one message.
TEST_F(Colours, stored_colours_are_loaded_and_one_bad_colour_resets_all_six) {
    SetSysValue("Color_Fehler", "&H0000FF");
    SetSysValue("Color_OK", QVariant());
    LoadColours();
    EXPECT_EQ(ProgramColours().fehler, 0x0000FF);
    EXPECT_EQ(ProgramColours().ok, 0x00FF00);
    EXPECT_EQ(ProgramColours().warnung, 0x80FFFF);
    EXPECT_TRUE(messages.messages().isEmpty());

    SetSysValue("Color_Warnung", "&HGELB");
    LoadColours();
    ASSERT_EQ(messages.messages().size(), 1);
    EXPECT_TRUE(messages.messages().first().prompt.startsWith(
        "Fehler beim Farbwerte auslesen!\r\nEs werden die Standardfarben genommen.\r\nFehler #13: "));
    EXPECT_EQ(messages.messages().first().buttons, MsgBox::Information);
    EXPECT_EQ(ProgramColours().fehler, 0xA0A0FF);
    EXPECT_EQ(ProgramColours().warnung, 0x80FFFF);
}

class StartupSteps : public HomeTest {};

TEST_F(StartupSteps, prepare_definitions_colours_housekeeping_and_master_data_without_a_window) {
    SetSysValue("Color_OK", "&H00C000");
    SetSysValue("APP_LastOpened", "2026-11-14 18:00:00");
    RunStartupSteps();
    EXPECT_TRUE(messages.messages().isEmpty()) << messages.prompts().join("|").toStdString();
    EXPECT_TRUE(FelderArray().Exists("NACHNAME"));
    EXPECT_EQ(WerteArray().GetCount(), 0);
    EXPECT_EQ(ProgramColours().ok, 0x00C000);
    EXPECT_EQ(GetSysValue("APP_LastOpened").toString(), "2026-11-15 10:30:00");
    EXPECT_EQ(CountRows("*", "zvbAutoImport", "VersionsDatum IS NULL"), 0) << "the registered files were imported";
}

} // namespace
