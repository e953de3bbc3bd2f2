// SPDX-License-Identifier: Apache-2.0
// A day at the keyboard: what the demo batch costs in keys, no key lost on a button, the keys of
// their own for hand-over, discard and the page, an empty window that finds new records by itself,
// a full field that says so, and Qt's own dialogs in the operator's language.

#include "MainWindowFixture.h"

#include "app/mdlDB.h"
#include "ui/QtTranslations.h"

#include <QAction>
#include <QApplication>
#include <QDialogButtonBox>
#include <QFile>
#include <QFileInfo>
#include <QLabel>
#include <QMenuBar>
#include <QPushButton>
#include <QStatusBar>
#include <iostream>

namespace {

class DeskKeys : public MainWindowTest {
protected:
    DeskKeys() {
        noReports(); // the report question is the settings' business and not counted among the keys
        for (const FormValues& form : demoForms())
            writeImage(form["BMPName"]);
    }
    // A key the operator presses, counted for the record on screen.
    void press(Qt::Key k, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        ++pressed;
        key(k, modifiers);
    }
    QString waiting() const { return window->findChild<QLabel*>("lblWarteschlange")->text(); }
    int pressed = 0;
};

// The demo batch with the shipped settings: a clean record goes with F10, or with F2 (to "OK") and
// Enter; a record with one unread character costs F2, the character and F10.
TEST_F(DeskKeys, the_demo_batch_costs_one_or_two_keys_a_clean_record_and_two_more_than_typed_with_a_question_mark) {
    QVector<FormValues> forms = demoForms();
    const QString surname = forms[2]["NACHNAME"];
    forms[2]["NACHNAME"] = surname.left(3) + "?" + surname.mid(4);
    for (const FormValues& form : forms)
        insertRecord(form);
    open();
    QStringList costs;
    for (int record = 0; record < forms.size(); ++record) {
        pressed = 0;
        if (field("NACHNAME")->text().contains('?')) {
            press(Qt::Key_F2);
            ASSERT_EQ(field("NACHNAME")->selectedText(), "?");
            ++pressed;
            type(surname.mid(3, 1));
            press(Qt::Key_F10);
            EXPECT_LE(pressed, 1 + 3);
        } else if (record == 5) {
            press(Qt::Key_F2);
            ASSERT_EQ(focusedName(), "buttonOK");
            press(Qt::Key_Return);
            EXPECT_LE(pressed, 2);
        } else {
            press(Qt::Key_F10);
            EXPECT_LE(pressed, 2);
        }
        costs << QString::number(pressed);
        ASSERT_TRUE(exported(forms[record]["BMPName"])) << record;
    }
    EXPECT_EQ(window->currentRecord(), -1);
    // The day's figures in the status bar count the same keys: 11 for 8 records.
    EXPECT_TRUE(window->findChild<QLabel*>("lblStatistik")->text().startsWith("Heute 8 übergeben, 0 verworfen, 1,4"))
        << window->findChild<QLabel*>("lblStatistik")->text().toStdString();
    QFile corrected(home.path("export/" + QFileInfo(forms[2]["BMPName"]).completeBaseName() + ".xml"));
    ASSERT_TRUE(corrected.open(QIODevice::ReadOnly));
    EXPECT_TRUE(corrected.readAll().contains(surname.toLatin1()));
    std::cout << "keys per record of the demo batch: " << costs.join(' ').toStdString() << '\n';
}

// No key is lost on a button, every button has its letter, the configured keys hand over from
// anywhere, a discard asks with No as the answer Enter gives, and the page moves by keys that never
// come from the numeric pad.
TEST_F(DeskKeys, the_buttons_trap_no_key_and_hand_over_discard_and_page_keys_work_from_anywhere) {
    setting("GUI_BildanzeigeEnabled", true);
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
    QStringList captions;
    for (QPushButton* b : window->findChildren<QPushButton*>())
        captions << b->text();
    for (QAction* menu : window->menuBar()->actions())
        captions << menu->text();
    QString letters;
    for (const QString& caption : captions) {
        const int amp = caption.indexOf('&');
        ASSERT_GE(amp, 0) << caption.toStdString();
        letters += caption.at(amp + 1).toLower();
    }
    for (const QChar letter : letters)
        EXPECT_EQ(letters.count(letter), 1) << "letter " << letter.toLatin1() << " twice";

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
    setting("Key_OK", "F9");
    key(Qt::Key_F10);
    EXPECT_EQ(window->currentRecord(), huber) << "F10 is no longer the key";
    key(Qt::Key_F9);
    EXPECT_EQ(workflowOf(huber), "") << "handed over and exported";

    setting("Key_Verwerfen", "Ctrl+Del");
    const qint32 third = window->currentRecord();
    key(Qt::Key_F8);
    EXPECT_EQ(window->currentRecord(), third);
    messages.queueAnswer(MsgBox::Yes);
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
