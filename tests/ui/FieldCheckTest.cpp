// SPDX-License-Identifier: Apache-2.0
// Checks on screen: the colours of the fields and the F2 search by "?" or by the error colour.

#include "MainWindowFixture.h"

namespace {

using FieldCheck = MainWindowTest;

// A field is checked when it is left and takes the colour of its status; the record is checked and
// coloured when it is shown (a missing name, an insurance number whose check digit is wrong). F2
// finds fields by "?" or by the error colour as F2_WasSuchen says.
TEST_F(FieldCheck, fields_take_the_colour_of_their_check_and_f2_finds_what_f2_was_suchen_says) {
    SetSysValue("F2_WieWeitSuchen", 1);
    FormValues form = demoForms().at(0);
    form["NACHNAME"] = "";              // error colour, no question mark
    form["GEBDAT"] = "03.0?.1961";      // a question mark
    form["PERSONAL_ID"] = "1234030761"; // Austrian insurance number, check digit 6 would be right
    form["Fehlerhaft"] = "";
    insertRecord(form);
    open();
    EXPECT_EQ(background("NACHNAME"), errorColour);
    EXPECT_EQ(background("VORNAME"), okColour);
    EXPECT_EQ(background("PERSONAL_ID"), QColor(0xFF, 0xFF, 0x80)) << "light yellow for a warning";
    // 0: question marks only, 1: nothing, 2: both, 3: error colours only.
    const std::pair<int, const char*> rows[] = {{0, "GEBDAT"}, {1, "buttonOK"}, {2, "NACHNAME"}, {3, "NACHNAME"}};
    for (const auto& [wasSuchen, found] : rows) {
        SCOPED_TRACE(wasSuchen);
        SetSysValue("F2_WasSuchen", wasSuchen);
        field("FORM_ID")->setFocus();
        key(Qt::Key_F2);
        EXPECT_EQ(focusedName(), found);
    }

    tabTo("CARD_ID");
    EXPECT_EQ(background("CARD_ID"), okColour);
    key(Qt::Key_F3);
    type("8004A12");
    key(Qt::Key_Tab);
    EXPECT_EQ(background("CARD_ID"), errorColour);
    EXPECT_EQ(WerteArray().GetValue("CARD_ID"), "8004A12");
    EXPECT_EQ(WerteArray().GetValue("Fehlerhaft").mid(8, 1), "3");
    EXPECT_EQ(background("CARD_EXPIRY"), okColour) << "the other fields keep their colours";
    key(Qt::Key_Backtab, Qt::ShiftModifier);
    key(Qt::Key_F3);
    type("80040001234567890123");
    key(Qt::Key_Tab);
    EXPECT_EQ(background("CARD_ID"), okColour);
}

} // namespace
