// SPDX-License-Identifier: Apache-2.0
// A day at the keyboard: no key lost on a button, the keys of their own for hand-over, discard and
// the page, an empty window that finds new records by itself, a full field that says so, and Qt's
// own dialogs in the operator's language.

#include "MainWindowFixture.h"

#include "app/mdlDB.h"
#include "ui/QtTranslations.h"

#include <QAction>
#include <QApplication>
#include <QDialogButtonBox>
#include <QLabel>
#include <QMenuBar>
#include <QPushButton>
#include <QStatusBar>

namespace {

class DeskKeys : public MainWindowTest {
protected:
    DeskKeys() {
        noReports();
        for (const FormValues& form : demoForms())
            writeImage(form["BMPName"]);
    }
    QString waiting() const { return window->findChild<QLabel*>("lblWarteschlange")->text(); }
};

// No key is lost on a button, every button has its letter, the configured keys hand over from
// anywhere, a discard asks with No as the answer Enter gives, and the page moves by keys that never
// come from the numeric pad.
TEST_F(DeskKeys, the_buttons_trap_no_key_and_hand_over_discard_and_page_keys_work_from_anywhere) {
    SetSysValue("GUI_BildanzeigeEnabled", true);
    FormValues unread = demoForms().at(0);
    unread["NACHNAME"] = "Hu?er";
    const qint32 huber = insertRecord(unread);
    insertDemoRecords(3);
    open();
    // The button with the focus shows it, also when the program put it there (no Tab pressed yet).
    button("buttonBeenden")->setFocus(Qt::OtherFocusReason);
    const QImage framed = button("buttonBeenden")->grab().toImage();
    field("NACHNAME")->setFocus(Qt::OtherFocusReason);
    EXPECT_NE(button("buttonBeenden")->grab().toImage(), framed);

    for (Qt::KeyboardModifiers modifiers : {Qt::NoModifier, Qt::ShiftModifier}) {
        tabTo("buttonOK");
        key(Qt::Key_F2, modifiers);
        EXPECT_EQ(focusedName(), "NACHNAME") << "F2 from the button, modifiers " << modifiers;
    }

    // Every button and menu has a letter of its own.
    QList<QKeySequence> letters;
    for (QPushButton* b : window->findChildren<QPushButton*>())
        letters << QKeySequence::mnemonic(b->text());
    for (QAction* menu : window->menuBar()->actions())
        letters << QKeySequence::mnemonic(menu->text());
    EXPECT_FALSE(letters.contains(QKeySequence())) << "a caption without a letter";
    EXPECT_EQ(QSet<QKeySequence>(letters.begin(), letters.end()).size(), letters.size()) << "a letter taken twice";

    key(Qt::Key_V, Qt::AltModifier); // "&Verwerfen", answered with the question's default
    // A button pressed by its letter is shown pressed for a moment, then clicked.
    ASSERT_TRUE(QTest::qWaitFor([&] { return messages.saw("verwerfen"); }, 1000));
    EXPECT_TRUE(messages.messages().last().buttons & MsgBox::DefaultButton2) << "No is the default";
    EXPECT_EQ(window->currentRecord(), huber);

    const QString zoom = viewerStatus();
    key(Qt::Key_Plus, Qt::KeypadModifier);
    EXPECT_EQ(viewerStatus(), zoom) << "the pad's plus is no zoom";
    key(Qt::Key_Plus, Qt::ControlModifier);
    EXPECT_NE(viewerStatus(), zoom);

    field("NACHNAME")->setText("Huber");
    SetSysValue("Key_OK", "F9");
    key(Qt::Key_F10);
    EXPECT_EQ(window->currentRecord(), huber) << "F10 is no longer the key";
    key(Qt::Key_F9);
    EXPECT_EQ(workflowOf(huber), "") << "handed over and exported";

    SetSysValue("Key_Verwerfen", "Ctrl+Del");
    const qint32 third = window->currentRecord();
    messages.queueAnswer(MsgBox::Yes);
    key(Qt::Key_F8);
    key(Qt::Key_Delete); // without Ctrl it deletes a character
    EXPECT_EQ(window->currentRecord(), third);
    key(Qt::Key_Delete, Qt::ControlModifier);
    EXPECT_EQ(workflowOf(third), "");
}

// The empty window looks for records every few seconds and at once on F5; the status bar always
// says how many wait. A value that fills its field beeps and says so instead of dropping keys.
TEST_F(DeskKeys, an_empty_window_finds_new_records_by_itself_and_a_full_field_says_so) {
    open();
    EXPECT_EQ(waiting(), "Kein Beleg wartet");
    // The empty form's actions only beep, and leaving it asks nothing.
    EXPECT_EQ(window->windowTitle(), "Veridon ");
    EXPECT_FALSE(window->findChild<QWidget*>("Datensatz")->isEnabled());
    action("mpBelegLoeschen")->trigger();
    key(Qt::Key_F2);
    EXPECT_TRUE(messages.messages().isEmpty()) << messages.prompts().join("|").toStdString();
    insertDemoRecords(2);
    key(Qt::Key_F5);
    ASSERT_GE(window->currentRecord(), 0);
    EXPECT_EQ(waiting(), "Wartende Belege: 1");

    tabTo("STATE");
    key(Qt::Key_F3);
    type("ATX");
    EXPECT_EQ(field("STATE")->text(), "AT");
    EXPECT_TRUE(window->statusBar()->currentMessage().contains("höchstens 2 Zeichen"))
        << window->statusBar()->currentMessage().toStdString();
    key(Qt::Key_Escape);

    key(Qt::Key_F10);
    key(Qt::Key_F10);
    ASSERT_EQ(window->currentRecord(), -1);
    EXPECT_EQ(waiting(), "Kein Beleg wartet");
    EXPECT_TRUE(window->close());
    EXPECT_TRUE(messages.messages().isEmpty());
    open();
    insertDemoRecords(1);
    EXPECT_TRUE(QTest::qWaitFor([&] { return window->currentRecord() >= 0; }, 2 * frmMain::pollIntervalMs));
}

// Qt's own dialogs (colour and folder choice, standard buttons) speak the chosen language.
TEST(QtOwnTexts, follow_the_chosen_language) {
    const struct {
        const char* language;
        const char* cancel;
    } cases[] = {{"DE", "Abbrechen"}, {"EN", "Cancel"}, {"FR", "Annuler"}, {"DE", "Abbrechen"}};
    for (const auto& c : cases) {
        LoadQtTranslations(c.language);
        QDialogButtonBox box(QDialogButtonBox::Cancel);
        EXPECT_EQ(box.button(QDialogButtonBox::Cancel)->text(), c.cancel) << c.language;
    }
    LoadQtTranslations("EN");
}

} // namespace
