// SPDX-License-Identifier: Apache-2.0
// The procedures behind the options dialog: colour notation, the hot-key rule, the choice lists and
// the write of the settings row.

#include "HomeTest.h"
#include "admin/mdlOptionen.h"
#include "app/Database.h"
#include "app/FieldColours.h"
#include "app/mdlDB.h"
#include "app/mdlMessages.h"

namespace {

class Optionen : public HomeTest {
protected:
    void SetUp() override { ReloadLanguage(); }
    void TearDown() override { ReloadLanguage(); }
};

TEST(ColourText, is_ampersand_h_and_blue_green_red_without_leading_zeros) {
    EXPECT_EQ(colourText(0xA0A0FF), "&HA0A0FF");
    EXPECT_EQ(colourText(0x00FF00), "&HFF00");
    EXPECT_EQ(colourText(0), "&H0");
    for (const ColourSetting& s : colourSettings)
        EXPECT_EQ(colourText(parseColourText(QLatin1String(s.defaultText))), QLatin1String(s.defaultText));
}

TEST(Hotkeys, the_same_key_twice_is_refused_but_no_key_may_repeat) {
    EXPECT_TRUE(HotkeysAssignedTwice({1, 1, 0}));
    EXPECT_TRUE(HotkeysAssignedTwice({0, 2, 2}));
    EXPECT_FALSE(HotkeysAssignedTwice({0, 0, 0}));
    EXPECT_FALSE(HotkeysAssignedTwice({1, 2, 3}));
}

TEST_F(Optionen, choice_lists_come_from_the_master_data) {
    EXPECT_EQ(HotkeyChoices().size(), 4) << "one per row of zvbSysKeys";
    EXPECT_EQ(LanguageChoices().size(), 2);
    EXPECT_EQ(StateChoices().value(0).text, QString::fromUtf8("AT - Österreich")) << "code and name";
    EXPECT_EQ(FormFieldNames(), (QStringList{"FORM_ID", "SCANDAT", "STATE", "NACHNAME", "VORNAME", "GEBDAT",
                                             "PERSONAL_ID", "INSTITUT_ID", "CARD_ID", "CARD_EXPIRY"}));
}

TEST_F(Optionen, saving_writes_the_row_and_switches_the_language) {
    ASSERT_EQ(GetLanguage(), "DE");
    EXPECT_TRUE(SaveOptions({{"APP_Language", "EN"},
                             {"Cursor_allg", 2},
                             {"Key_EnterLikeTab", false},
                             {"Color_Fehler", colourText(0x0000FF)},
                             {"Export_Pfad", QVariant()}}));
    EXPECT_EQ(GetSysText("APP_Language"), "EN");
    EXPECT_EQ(GetSysValue("Cursor_allg").toInt(), 2);
    EXPECT_FALSE(GetSysFlag("Key_EnterLikeTab", true));
    EXPECT_EQ(GetSysText("Color_Fehler"), "&HFF");
    EXPECT_TRUE(GetSysValue("Export_Pfad").isNull());
    EXPECT_EQ(GetSysText("APP_State"), "DE") << "columns not named stay";
    EXPECT_EQ(GetText(Msg::AskDelete), "Do you really want to discard the current record?");
    EXPECT_TRUE(messages.messages().isEmpty());
}

TEST_F(Optionen, an_unknown_column_is_reported_and_nothing_is_written) {
    EXPECT_FALSE(SaveOptions({{"Cursor_allg", 2}, {"Gibt_Es_Nicht", 1}}));
    ASSERT_EQ(messages.messages().size(), 1);
    EXPECT_TRUE(messages.messages()[0].prompt.startsWith("Laufzeitfehler in Funktion 'frmOptionen.SaveSettings()'!"));
    EXPECT_EQ(GetSysValue("Cursor_allg").toInt(), 0);
}

TEST_F(Optionen, an_empty_settings_table_gets_its_row) {
    execSql("DELETE FROM zvbSys");
    SaveSettings({{"APP_KorrID", 7}, {"Scan_Pfad", "/srv/scan"}});
    EXPECT_EQ(CountRows("*", "zvbSys", QString()), 1);
    EXPECT_EQ(GetKorrID(), 7);
    EXPECT_EQ(GetSysText("Scan_Pfad"), "/srv/scan");
}

} // namespace
