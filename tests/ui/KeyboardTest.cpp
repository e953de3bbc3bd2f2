// SPDX-License-Identifier: Apache-2.0
// The form's keyboard, key by key as the operator presses them: F2 and Shift+F2 to the faulty
// fields, cursor placement, Escape, Enter like Tab, F3, overwrite mode, the pad's decimal key and
// the configured hot keys.

#include "MainWindowFixture.h"

#include "app/Database.h"

namespace {

class Keyboard : public MainWindowTest {
protected:
    // Mrs Huber's form as read by the evaluation: two characters it could not read.
    void openHuberWithUnreadCharacters() {
        FormValues form = demoForms().at(0);
        form["NACHNAME"] = "Hu?er";
        form["GEBDAT"] = "03.0?.1961";
        huber = insertRecord(form);
        insertDemoRecords(2);
        open();
    }
    qint32 huber = -1;
};

TEST_F(Keyboard, f2_lands_on_the_first_faulty_field_with_the_question_mark_selected) {
    setting("Cursor_F2", true);
    openHuberWithUnreadCharacters();
    ASSERT_EQ(focusedName(), "FORM_ID");

    key(Qt::Key_F2);
    EXPECT_EQ(focusedName(), "NACHNAME");
    EXPECT_EQ(field("NACHNAME")->selectedText(), "?");
    EXPECT_EQ(field("NACHNAME")->selectionStart(), 2);

    key(Qt::Key_F2);
    EXPECT_EQ(focusedName(), "GEBDAT");
    EXPECT_EQ(field("GEBDAT")->selectionStart(), 4);
    EXPECT_EQ(field("GEBDAT")->selectedText(), "?");

    key(Qt::Key_F2, Qt::ShiftModifier);
    EXPECT_EQ(focusedName(), "NACHNAME");

    // Typing replaces the selected "?" at once.
    type("b");
    EXPECT_EQ(field("NACHNAME")->text(), "Huber");
}

TEST_F(Keyboard, without_cursor_f2_the_jump_follows_the_general_cursor_rule) {
    setting("Cursor_F2", false);
    setting("Cursor_Allg", 2);
    openHuberWithUnreadCharacters();
    key(Qt::Key_F2);
    EXPECT_EQ(focusedName(), "NACHNAME");
    EXPECT_FALSE(field("NACHNAME")->hasSelectedText());
    EXPECT_EQ(field("NACHNAME")->cursorPosition(), 5);
}

TEST_F(Keyboard, a_field_entered_by_tab_follows_cursor_allg_even_with_a_question_mark) {
    setting("Cursor_F2", true);
    setting("Cursor_Allg", 0);
    FormValues form = demoForms().at(0);
    form["SCANDAT"] = "12?4";
    insertRecord(form);
    open();
    key(Qt::Key_Tab);
    EXPECT_EQ(focusedName(), "SCANDAT");
    EXPECT_EQ(field("SCANDAT")->selectedText(), "12?4");

    setting("Cursor_Allg", 1);
    key(Qt::Key_Tab);
    EXPECT_EQ(field("STATE")->cursorPosition(), 0);
    EXPECT_FALSE(field("STATE")->hasSelectedText());
}

TEST_F(Keyboard, escape_restores_the_text_the_field_had_when_it_was_entered) {
    setting("Cursor_Allg", 2);
    insertDemoRecords(1);
    open();
    tabTo("VORNAME");
    type(" Theresia");
    EXPECT_EQ(field("VORNAME")->text(), "Maria Theresia");
    key(Qt::Key_Escape);
    EXPECT_EQ(field("VORNAME")->text(), "Maria");

    // Left with a change and entered again: Escape goes back to the changed text, not the stored one.
    type(" T.");
    key(Qt::Key_Tab);
    key(Qt::Key_Backtab, Qt::ShiftModifier);
    ASSERT_EQ(focusedName(), "VORNAME");
    type("x");
    key(Qt::Key_Escape);
    EXPECT_EQ(field("VORNAME")->text(), "Maria T.");
}

TEST_F(Keyboard, enter_moves_on_only_when_enter_like_tab_is_set) {
    setting("Key_EnterLikeTab", true);
    insertDemoRecords(1);
    open();
    key(Qt::Key_Return);
    EXPECT_EQ(focusedName(), "SCANDAT");
    key(Qt::Key_Enter, Qt::KeypadModifier);
    EXPECT_EQ(focusedName(), "STATE");

    setting("Key_EnterLikeTab", false);
    key(Qt::Key_Return);
    EXPECT_EQ(focusedName(), "STATE");
}

TEST_F(Keyboard, f3_empties_the_field_and_insert_switches_to_overwrite) {
    setting("Cursor_Allg", 1);
    insertDemoRecords(1);
    open();
    key(Qt::Key_F3);
    EXPECT_EQ(field("FORM_ID")->text(), "");

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
}

TEST_F(Keyboard, the_pads_decimal_key_deletes_when_so_configured) {
    setting("Cursor_Allg", 1);
    setting("Key_NUMKommaGleichEntf", true);
    insertDemoRecords(1);
    open();
    key(Qt::Key_Comma, Qt::KeypadModifier);
    EXPECT_EQ(field("FORM_ID")->text(), "-111N");

    setting("Key_NUMKommaGleichEntf", false);
    key(Qt::Key_Comma, Qt::KeypadModifier);
    EXPECT_EQ(field("FORM_ID")->text(), ",-111N");
}

TEST_F(Keyboard, the_pads_plus_stands_for_f2_when_configured_as_hot_key) {
    setting("Cursor_F2", true);
    setting("Key_F2", 1); // zvbSysKeys 1: "+ (Ziffernblock)", character 43, key code 107
    openHuberWithUnreadCharacters();
    key(Qt::Key_Plus, Qt::KeypadModifier);
    EXPECT_EQ(focusedName(), "NACHNAME");
    EXPECT_EQ(field("NACHNAME")->selectedText(), "?");
    EXPECT_EQ(field("FORM_ID")->text(), "E-111N");

    // The same character from the main keyboard is typed as it is.
    key(Qt::Key_End);
    key(Qt::Key_Plus);
    EXPECT_EQ(field("NACHNAME")->text(), "Hu?er+");

    setting("Key_F2", 0);
    key(Qt::Key_Plus, Qt::KeypadModifier);
    EXPECT_EQ(field("NACHNAME")->text(), "Hu?er++");
}

TEST_F(Keyboard, field_table_and_lengths_are_rebuilt_when_the_form_loads) {
    execSql("INSERT INTO ZVBForm_Felder (FeldNr, ReihenfolgeNr) VALUES ('BARCODE', 99)");
    insertDemoRecords(1);
    open();
    QSqlQuery rows = execSql("SELECT FeldNr, ReihenfolgeNr FROM ZVBForm_Felder ORDER BY ReihenfolgeNr");
    QStringList order;
    int last = -1;
    while (rows.next()) {
        order << rows.value(0).toString();
        EXPECT_GT(rows.value(1).toInt(), last);
        last = rows.value(1).toInt();
    }
    EXPECT_EQ(order, frmMain::fieldNames());
    EXPECT_EQ(field("STATE")->maxLength(), 2);
    EXPECT_EQ(field("NACHNAME")->maxLength(), 40);

    tabTo("STATE");
    key(Qt::Key_F3);
    type("DEU");
    EXPECT_EQ(field("STATE")->text(), "DE");
}

} // namespace
