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

using Housekeeping = HomeTest;

// A first start ever, a last opening that is no date, or one on an earlier day, even a minute
// before midnight, cleans the backup once; a later start the same day does not. A last opening in
// the future (a clock set back) warns once and cleans nothing. Every start is noted.
TEST_F(Housekeeping, a_new_day_cleans_the_backup_once_and_a_clock_set_back_warns) {
    SetSysValue("Backup_HistoryDays", 7);
    const QString oldBackup = "backup/261101/images/31901001.tif"; // two weeks old
    const struct {
        QVariant lastOpened;
        bool cleaned, warned;
    } cases[] = {
        {QVariant(), true, false},
        {"gestern", true, false},
        {"2026-11-15 00:00:00", false, false},
        {"2026-11-14 23:59:00", true, false},
        {"2026-11-16 08:00:00", false, true},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.lastOpened.toString().toStdString());
        home.writeFile(oldBackup, "II*");
        SetSysValue("APP_LastOpened", c.lastOpened);
        messages.clear();
        DBAufraeumen();
        EXPECT_EQ(QFileInfo::exists(home.path(oldBackup)), !c.cleaned);
        EXPECT_EQ(GetSysValue("APP_LastOpened").toString(), "2026-11-15 10:30:00");
        if (c.warned) {
            ASSERT_EQ(messages.messages().size(), 1);
            EXPECT_TRUE(messages.messages().first().prompt.startsWith(
                "Achtung!\r\nDas Datum, zu dem die Anwendung das letzte Mal geöffnet wurde, liegt in der Zukunft."));
            EXPECT_EQ(messages.messages().first().buttons, MsgBox::Critical);
        } else {
            EXPECT_TRUE(messages.messages().isEmpty());
        }
    }
    DBAufraeumen();
    EXPECT_EQ(messages.messages().size(), 1) << "the next start of the same day shows nothing";
}

using Colours = HomeTest;

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

using StartupSteps = HomeTest;

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
