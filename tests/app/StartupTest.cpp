// SPDX-License-Identifier: Apache-2.0
// The start-up steps that need no window: the field colours (the codes and colour texts behind them), the once-a-day
// housekeeping on the fixed test date (Sunday 15 November 2026, 10:30) and the order of the steps.

#include "HomeTest.h"
#include "app/Database.h"
#include "app/Errors.h"
#include "app/FieldColours.h"
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
        EXPECT_EQ(messages.messages().size(), c.warned ? 1 : 0);
    }
    DBAufraeumen();
    ASSERT_EQ(messages.messages().size(), 1) << "the next start of the same day shows nothing";
    EXPECT_TRUE(messages.messages().first().prompt.startsWith(
        "Achtung!\r\nDas Datum, zu dem die Anwendung das letzte Mal geöffnet wurde, liegt in der Zukunft."));
    EXPECT_EQ(messages.messages().first().buttons, MsgBox::Critical);
}

using StartupSteps = HomeTest;

// Without a window the start-up prepares the definitions, the colours (stored ones loaded, unset ones
// their defaults), the housekeeping and the master data. One bad colour resets all six, also those
// read before it, with one message.
TEST_F(StartupSteps, prepare_definitions_and_colours_and_one_bad_colour_resets_all_six) {
    SetSysValue("Color_Fehler", "&H0000FF");
    SetSysValue("Color_OK", QVariant());
    RunStartupSteps();
    EXPECT_TRUE(messages.messages().isEmpty()) << messages.prompts().join("|").toStdString();
    EXPECT_TRUE(FelderArray().Exists("NACHNAME"));
    EXPECT_EQ(WerteArray().GetCount(), 0);
    const auto colours = [] {
        return QList<qint32>{ProgramColours().fehler, ProgramColours().ok, ProgramColours().warnung};
    };
    EXPECT_EQ(colours(), (QList<qint32>{0x0000FF, 0x00FF00, 0x80FFFF}));

    SetSysValue("Color_Warnung", "&HGELB");
    LoadColours();
    ASSERT_EQ(messages.messages().size(), 1);
    EXPECT_TRUE(messages.messages().first().prompt.startsWith(
        "Fehler beim Farbwerte auslesen!\r\nEs werden die Standardfarben genommen.\r\nFehler #13: "));
    EXPECT_EQ(messages.messages().first().buttons, MsgBox::Information);
    EXPECT_EQ(colours(), (QList<qint32>{0xA0A0FF, 0x00FF00, 0x80FFFF}));
}

// "&H" texts are blue-green-red, with or without a closing "&"; a plain number is decimal.
TEST(FieldColourTexts, hex_texts_are_blue_green_red) {
    EXPECT_EQ(colourRed(parseColourText("&HA0A0FF")), 0xFF) << "a light red";
    EXPECT_EQ(colourBlue(parseColourText("&H80FFFF")), 0x80) << "a light yellow";
    for (const char* green : {"&hff00", "&HFF00&", "65280"})
        EXPECT_EQ(parseColourText(green), 0x00FF00) << green;
    for (const char* bad : {"&HXYZ", "gruen", ""})
        EXPECT_THROW(parseColourText(bad), VeridonError) << bad;
}

// Codes 0 to 5 give OK, no check, syntax OK, fault, greyed out and warning; anything else reads as
// unchecked.
TEST(FieldColourTexts, each_status_code_has_its_colour) {
    const FieldColours c{.ok = 1, .noCheck = 2, .syntaxOk = 3, .fehler = 4, .ausgegraut = 5, .warnung = 6};
    for (int code = 0; code <= 5; ++code)
        EXPECT_EQ(colourForStatus(QString::number(code), c), code + 1) << "code " << code;
    EXPECT_EQ(colourForStatus("", c), 2);
    EXPECT_EQ(colourForStatus("9", c), 2);
}

} // namespace
