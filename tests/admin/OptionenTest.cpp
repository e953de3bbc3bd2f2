// SPDX-License-Identifier: Apache-2.0
// The procedures behind the options dialog that the dialog itself never reaches: the colour notation
// of values no picker offers, the hot-key rule, and a write that names an unknown column or finds
// the settings row missing. What the dialog shows and writes is tested with the dialog.

#include "HomeTest.h"
#include "admin/mdlOptionen.h"
#include "app/Database.h"
#include "app/FieldColours.h"
#include "app/mdlDB.h"

namespace {

using Optionen = HomeTest;

// Colour texts are "&H" and blue-green-red without leading zeros.
TEST_F(Optionen, colour_texts_hot_keys_and_a_write_with_an_unknown_column_or_no_settings_row) {
    EXPECT_EQ(colourText(0xA0A0FF), "&HA0A0FF");
    EXPECT_EQ(colourText(0), "&H0");
    for (const ColourSetting& s : colourSettings)
        EXPECT_EQ(colourText(parseColourText(QLatin1String(s.defaultText))), QLatin1String(s.defaultText));
    EXPECT_TRUE(HotkeysAssignedTwice({1, 1, 0}) && HotkeysAssignedTwice({0, 2, 2}));
    EXPECT_FALSE(HotkeysAssignedTwice({0, 0, 0}) || HotkeysAssignedTwice({1, 2, 3}));

    // An unknown column is reported and nothing is written; an empty settings table gets its row.
    EXPECT_FALSE(SaveOptions({{"Cursor_allg", 2}, {"Gibt_Es_Nicht", 1}}));
    ASSERT_EQ(messages.messages().size(), 1);
    EXPECT_TRUE(messages.messages()[0].prompt.startsWith("Laufzeitfehler in Funktion 'frmOptionen.SaveSettings()'!"));
    EXPECT_EQ(GetSysValue("Cursor_allg").toInt(), 0);

    execSql("DELETE FROM zvbSys");
    SaveSettings({{"APP_KorrID", 7}, {"Scan_Pfad", "/srv/scan"}});
    EXPECT_EQ(CountRows("*", "zvbSys", QString()), 1);
    EXPECT_EQ(GetKorrID(), 7);
    EXPECT_EQ(GetSysText("Scan_Pfad"), "/srv/scan");
}

} // namespace
