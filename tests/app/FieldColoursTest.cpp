// Status codes to field colours, and the colour texts of the settings.

#include "app/FieldColours.h"
#include "app/Errors.h"

#include <gtest/gtest.h>

namespace {

TEST(FieldColourTexts, hex_texts_are_blue_green_red) {
    EXPECT_EQ(parseColourText("&HA0A0FF"), 0xA0A0FF);
    EXPECT_EQ(colourRed(parseColourText("&HA0A0FF")), 0xFF) << "a light red";
    EXPECT_EQ(colourBlue(parseColourText("&H80FFFF")), 0x80) << "a light yellow";
    EXPECT_EQ(parseColourText("&hff00"), 0x00FF00);
    EXPECT_EQ(parseColourText("&HFF00&"), 0x00FF00);
    EXPECT_EQ(parseColourText("16777215"), 0xFFFFFF);
    EXPECT_THROW(parseColourText("&HXYZ"), VeridonError);
    EXPECT_THROW(parseColourText("gruen"), VeridonError);
    EXPECT_THROW(parseColourText(""), VeridonError);
}

TEST(FieldColourTexts, each_status_code_has_its_colour) {
    FieldColours c;
    c.ok = 1;
    c.noCheck = 2;
    c.syntaxOk = 3;
    c.fehler = 4;
    c.ausgegraut = 5;
    c.warnung = 6;
    EXPECT_EQ(colourForStatus("0", c), 1);
    EXPECT_EQ(colourForStatus("1", c), 2);
    EXPECT_EQ(colourForStatus("2", c), 3);
    EXPECT_EQ(colourForStatus("3", c), 4);
    EXPECT_EQ(colourForStatus("4", c), 5);
    EXPECT_EQ(colourForStatus("5", c), 6);
    EXPECT_EQ(colourForStatus("", c), 2);
    EXPECT_EQ(colourForStatus("9", c), 2);
}

TEST(FieldColourTexts, defaults_match_the_setting_defaults) {
    const FieldColours defaults;
    for (const ColourSetting& s : colourSettings)
        EXPECT_EQ(parseColourText(QString::fromLatin1(s.defaultText)), defaults.*(s.member)) << s.column;
}

} // namespace
