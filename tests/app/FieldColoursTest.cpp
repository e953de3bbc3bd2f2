// SPDX-License-Identifier: Apache-2.0
// Status codes to field colours, and the colour texts of the settings.

#include "app/FieldColours.h"
#include "app/Errors.h"

#include <gtest/gtest.h>

namespace {

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
