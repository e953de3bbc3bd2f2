// SPDX-License-Identifier: Apache-2.0
// The form's keyboard, key by key as the operator presses them: F2 and Shift+F2 to the faulty
// fields, cursor placement, Escape, Enter like Tab, F3, overwrite mode, the pad's decimal key and
// the configured hot keys. The settings are read at each key, so one window sees several.

#include "MainWindowFixture.h"

#include "app/Database.h"

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
    EXPECT_EQ(field("NACHNAME")->selectedText(), "Hu?er");
    SetSysValue("Cursor_Allg", 1);
    key(Qt::Key_Tab);
    EXPECT_EQ(field("VORNAME")->cursorPosition(), 0);
    EXPECT_FALSE(field("VORNAME")->hasSelectedText());

    field("FORM_ID")->setFocus();
    key(Qt::Key_Plus, Qt::KeypadModifier);
    EXPECT_EQ(focusedName(), "NACHNAME");
    EXPECT_EQ(field("NACHNAME")->selectedText(), "?");
    EXPECT_EQ(field("NACHNAME")->selectionStart(), 2);
    EXPECT_EQ(field("FORM_ID")->text(), "E-111N") << "the hot key's character is not typed";

    key(Qt::Key_F2);
    EXPECT_EQ(focusedName(), "GEBDAT");
    EXPECT_EQ(field("GEBDAT")->selectionStart(), 4);
    EXPECT_EQ(field("GEBDAT")->selectedText(), "?");
    key(Qt::Key_F2, Qt::ShiftModifier);
    EXPECT_EQ(focusedName(), "NACHNAME");
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
    EXPECT_EQ(focusedName(), "GEBDAT");
    EXPECT_FALSE(field("GEBDAT")->hasSelectedText());
    EXPECT_EQ(field("GEBDAT")->cursorPosition(), 10);
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

} // namespace
