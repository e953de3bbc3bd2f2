// SPDX-License-Identifier: Apache-2.0
// The form's keyboard, key by key as the operator presses them: F2 and Shift+F2 to the faulty
// fields, cursor placement, Escape, Enter like Tab, F3, overwrite mode, the pad's decimal key and
// the configured hot keys; the fields' colours after their checks, which F2 searches by; and the
// key for the reader's candidates. The settings are read at each key, so one window sees several.

#include "MainWindowFixture.h"

#include "admin/OperatorStats.h"
#include "app/Database.h"
#include "app/TextFile.h"
#include "import/mdlImport.h"

#include <QStatusBar>

namespace {

using Keyboard = MainWindowTest;

// Mrs Huber's form as read by the evaluation, with two characters it could not read.
TEST_F(Keyboard, f2_and_its_hot_key_land_on_the_question_marks_and_tab_on_the_field_as_the_cursor_settings_say) {
    SetSysValue("Cursor_F2", true);
    SetSysValue("Cursor_Allg", 0);
    SetSysValue("Key_F2", 1); // zvbSysKeys 1: "+ (Ziffernblock)", character 43, key code 107
    FormValues form = demoForms().at(0);
    form["NACHNAME"] = "Hu?er";
    form["GEBDAT"] = "03.0?.1961";
    insertRecord(form);
    insertDemoRecords(2);
    open();
    // A field entered by Tab follows Cursor_Allg (0: all, 1: at the start), even with a "?" in it.
    tabTo("NACHNAME");
    EXPECT_EQ(caret(), "NACHNAME Hu?er [Hu?er] 0");
    SetSysValue("Cursor_Allg", 1);
    key(Qt::Key_Tab);
    EXPECT_EQ(caret(), "VORNAME Maria [] 0");

    field("FORM_ID")->setFocus();
    key(Qt::Key_Plus, Qt::KeypadModifier);
    EXPECT_EQ(caret(), "NACHNAME Hu?er [?] 2");
    EXPECT_EQ(field("FORM_ID")->text(), "E-111N") << "the hot key's character is not typed";

    key(Qt::Key_F2);
    EXPECT_EQ(caret(), "GEBDAT 03.0?.1961 [?] 4");
    key(Qt::Key_F2, Qt::ShiftModifier);
    EXPECT_EQ(caret(), "NACHNAME Hu?er [?] 2");
    // Typing replaces the selected "?" at once.
    type("b");
    EXPECT_EQ(field("NACHNAME")->text(), "Huber");

    // The same character from the main keyboard is typed as it is, and so is the pad's without the
    // hot key.
    key(Qt::Key_End);
    key(Qt::Key_Plus);
    EXPECT_EQ(field("NACHNAME")->text(), "Huber+");
    SetSysValue("Key_F2", 0);
    key(Qt::Key_Plus, Qt::KeypadModifier);
    EXPECT_EQ(field("NACHNAME")->text(), "Huber++");

    // Without Cursor_F2 the jump follows the general cursor rule (2: at the end).
    SetSysValue("Cursor_F2", false);
    SetSysValue("Cursor_Allg", 2);
    key(Qt::Key_F2);
    EXPECT_EQ(caret(), "GEBDAT 03.0?.1961 [] 10");
}

TEST_F(Keyboard, the_editing_keys_pad_decimal_f3_enter_insert_and_escape) {
    execSql("INSERT INTO ZVBForm_Felder (FeldNr, ReihenfolgeNr) VALUES ('BARCODE', 99)");
    SetSysValue("Cursor_Allg", 1);
    SetSysValue("Key_NUMKommaGleichEntf", true);
    insertDemoRecords(1);
    open();
    // The field table is rebuilt from the form when it loads; a field it does not have goes.
    EXPECT_EQ(CountRows("*", "ZVBForm_Felder", "FeldNr='BARCODE'"), 0);
    EXPECT_EQ(field("NACHNAME")->maxLength(), 40);

    key(Qt::Key_Comma, Qt::KeypadModifier);
    EXPECT_EQ(field("FORM_ID")->text(), "-111N") << "the pad's decimal key deletes";
    SetSysValue("Key_NUMKommaGleichEntf", false);
    key(Qt::Key_Comma, Qt::KeypadModifier);
    EXPECT_EQ(field("FORM_ID")->text(), ",-111N");
    key(Qt::Key_F3);
    EXPECT_EQ(field("FORM_ID")->text(), "");

    SetSysValue("Key_EnterLikeTab", true);
    key(Qt::Key_Return);
    EXPECT_EQ(focusedName(), "SCANDAT");
    key(Qt::Key_Enter, Qt::KeypadModifier);
    EXPECT_EQ(focusedName(), "STATE");
    SetSysValue("Key_EnterLikeTab", false);
    key(Qt::Key_Return);
    EXPECT_EQ(focusedName(), "STATE");

    tabTo("NACHNAME");
    key(Qt::Key_Insert);
    type("Ka");
    EXPECT_EQ(field("NACHNAME")->text(), "Kaber");
    // At the end of the field overwrite mode simply appends.
    key(Qt::Key_End);
    type("s");
    EXPECT_EQ(field("NACHNAME")->text(), "Kabers");
    key(Qt::Key_Insert);
    key(Qt::Key_Home);
    type("M");
    EXPECT_EQ(field("NACHNAME")->text(), "MKabers");
    // Escape restores the text the field had when it was entered.
    key(Qt::Key_Escape);
    EXPECT_EQ(field("NACHNAME")->text(), "Huber");

    // Left with a change and entered again: Escape goes back to the changed text, not the stored one.
    SetSysValue("Cursor_Allg", 2);
    tabTo("VORNAME");
    type(" T.");
    key(Qt::Key_Tab);
    key(Qt::Key_Backtab, Qt::ShiftModifier);
    ASSERT_EQ(focusedName(), "VORNAME");
    type("x");
    EXPECT_EQ(field("VORNAME")->text(), "Maria T.x");
    key(Qt::Key_Escape);
    EXPECT_EQ(field("VORNAME")->text(), "Maria T.");
}

// A field is checked when it is left and takes the colour of its status; the record is checked and
// coloured when it is shown (a missing name, an insurance number whose check digit is wrong). F2
// finds fields by "?" or by the error colour as F2_WasSuchen says.
TEST_F(Keyboard, fields_take_the_colour_of_their_check_and_f2_finds_what_f2_was_suchen_says) {
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

TEST_F(Keyboard, the_alternative_key_pages_through_the_candidates_and_enter_takes_the_one_shown) {
    // Mrs Huber's card with the b of her name unreadable; the reader thought of h first, then b.
    home.writeFile("tarnvel.ini", encodeText("[Beleg]\nTrenner=;\n"));
    home.writeFile("import/zvscan.txt",
                   encodeText("31901001.tif;15.11.2026;5;0;0;;;;;;;EHIC  DE;DE;Hu\\fer;Maria;"
                              "03/07/1961     1236030761;AOK Bayern;80276000001234567890     31/12/2029\n"));
    home.writeFile("import/zvscan.alt", "31901001.tif\tT5_L3\t1\thb\r\n");
    ASSERT_EQ(ImportZVBWerte(home.path("import/zvscan.txt")), 1);
    writeImage("31901001.tif");
    SetSysValue("Cursor_F2", true);
    SetSysValue("Key_EnterLikeTab", true);
    open();
    EXPECT_EQ(background("NACHNAME"), errorColour);

    key(Qt::Key_F2);
    ASSERT_EQ(caret(), "NACHNAME Hu?er [?] 2");
    EXPECT_EQ(window->statusBar()->currentMessage(),
              "Lesevorschläge: h, b (angezeigt: ?) - F6 zeigt den nächsten, Enter übernimmt.");

    for (const char* page : {"Huher [h]", "Huber [b]", "Hu?er [?]", "Huher [h]", "Huber [b]"}) {
        key(Qt::Key_F6);
        EXPECT_EQ(caret(), QString("NACHNAME %1 2").arg(page));
    }
    EXPECT_EQ(window->statusBar()->currentMessage(),
              "Lesevorschläge: h, b (angezeigt: b) - F6 zeigt den nächsten, Enter übernimmt.");

    key(Qt::Key_Return);
    EXPECT_EQ(focusedName(), "VORNAME");
    EXPECT_EQ(field("NACHNAME")->text(), "Huber");
    EXPECT_EQ(background("NACHNAME"), okColour);
    EXPECT_EQ(recordWork().keystrokes, 7) << "F2, five times the key and Enter are the operator's work";

    // On a character the reader was sure of, the key does nothing.
    key(Qt::Key_F6);
    EXPECT_EQ(field("VORNAME")->text(), "Maria");
}

} // namespace
