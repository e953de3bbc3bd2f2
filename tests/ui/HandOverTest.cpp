// SPDX-License-Identifier: Apache-2.0
// Handing records over from the main window: OK with errors, OK on a clean record (saved as handed
// over and exported), and F2 at the end of a record, up to a walk through a whole batch.

#include "MainWindowFixture.h"

#include "app/mdlDB.h"

#include <QApplication>
#include <QFileInfo>
#include <QPlainTextEdit>
#include <QPushButton>

namespace {

class HandOverWindow : public MainWindowTest {
protected:
    HandOverWindow() {
        noReports();
        setting("Cursor_F2", true);
        // The scans of the first demo forms lie in the image folder, as after an import.
        for (const char* image : {"31901001.tif", "31901002.tif", "31901003.tif"})
            writeImage(image);
    }
    // A demo form with an unread character in its name.
    qint32 insertUnread(int form) {
        FormValues values = demoForms().at(form);
        values["NACHNAME"] = values["NACHNAME"].left(2) + "?" + values["NACHNAME"].mid(3);
        return insertRecord(values);
    }
};

TEST_F(HandOverWindow, ok_with_errors_keeps_the_record_and_lists_the_errors) {
    const qint32 unread = insertUnread(0);
    open();
    QTest::mouseClick(button("buttonOK"), Qt::LeftButton);

    EXPECT_EQ(workflowOf(unread), "30/1");
    EXPECT_EQ(window->currentRecord(), unread);
    EXPECT_EQ(window->findChild<QLineEdit*>("korrigiert")->text(), "0");
    QWidget* list = errorList();
    ASSERT_NE(list, nullptr);
    const QString listed = list->findChild<QPlainTextEdit*>("txtFehler")->toPlainText();
    EXPECT_TRUE(listed.contains("befindet sich noch ein ?")) << listed.toStdString();
    // The list neither blocks the form nor takes the keyboard; the faulty field has it.
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
    EXPECT_EQ(QApplication::activeWindow(), window.get());
    EXPECT_EQ(focusedName(), "NACHNAME");
    EXPECT_FALSE(exported("31901001.tif"));

    // Ctrl+F hands the keyboard to the list.
    key(Qt::Key_F, Qt::ControlModifier);
    EXPECT_EQ(focused(), list->findChild<QPlainTextEdit*>("txtFehler"));

    // Corrected, it goes; keys typed and the field corrected count in the day's statistics.
    window->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
    field("NACHNAME")->setFocus();
    key(Qt::Key_F3); // empties the field
    type("Huber");
    QTest::mouseClick(button("buttonOK"), Qt::LeftButton);
    const QString stats = QString::fromLatin1(home.readFile("backup/261115/stats/arbeitsplatz_1.txt"));
    EXPECT_TRUE(stats.contains("Uebergeben=1\r\n")) << stats.toStdString();
    EXPECT_TRUE(stats.contains("FelderKorrigiert=1\r\n")) << stats.toStdString();
    EXPECT_TRUE(stats.contains("Tastenanschlaege=7\r\n")) << "Ctrl+F, F3 and five letters; " << stats.toStdString();
}

TEST_F(HandOverWindow, ok_on_a_clean_record_exports_it_and_shows_the_next) {
    const QVector<qint32> records = insertDemoRecords(2);
    open();
    QTest::mouseClick(button("buttonOK"), Qt::LeftButton);
    // The next record is on screen first; the handed-over one is saved and waits for its export.
    EXPECT_EQ(window->currentRecord(), records[1]);
    EXPECT_EQ(field("NACHNAME")->text(), "de Vries");
    EXPECT_EQ(workflowOf(records[0]), "40/0");
    EXPECT_TRUE(QTest::qWaitFor([&] { return workflowOf(records[0]).isEmpty(); })) << "exported and removed";
    EXPECT_TRUE(exported("31901001.tif"));
    EXPECT_FALSE(QFileInfo::exists(home.path("images/31901001.tif")));
    EXPECT_TRUE(messages.messages().isEmpty()) << messages.prompts().join("|").toStdString();
}

// At the end of a record F2 does as F2_WieWeitSuchen says: 1 goes to "OK", 0 hands over and the
// next record starts at its first field (not at its "?"), 2 hands over a batch until a record
// needs the operator. Shift+F2 never hands over.
TEST_F(HandOverWindow, f2_at_the_end_of_a_record_follows_wie_weit_suchen) {
    const QVector<FormValues> forms = demoForms();
    const qint32 clean = insertRecord(forms.at(0));
    const qint32 unread = insertUnread(2);
    insertRecord(forms.at(1));
    open();
    setting("F2_WieWeitSuchen", 2);
    key(Qt::Key_Tab);
    key(Qt::Key_F2, Qt::ShiftModifier);
    EXPECT_EQ(focusedName(), "SCANDAT");

    setting("F2_WieWeitSuchen", 1);
    field("FORM_ID")->setFocus();
    key(Qt::Key_F2);
    EXPECT_EQ(focusedName(), "buttonOK");
    EXPECT_EQ(window->currentRecord(), clean);
    EXPECT_EQ(workflowOf(clean), "30/1");

    setting("F2_WieWeitSuchen", 0);
    field("FORM_ID")->setFocus();
    key(Qt::Key_F2);
    EXPECT_TRUE(exported("31901001.tif"));
    EXPECT_EQ(window->currentRecord(), unread);
    EXPECT_EQ(focusedName(), "FORM_ID");

    setting("F2_WieWeitSuchen", 2);
    key(Qt::Key_F2);
    EXPECT_EQ(window->currentRecord(), unread);
    EXPECT_EQ(focusedName(), "NACHNAME");
    EXPECT_EQ(field("NACHNAME")->selectedText(), "?");
    // Corrected, it goes with F2, and so does the clean record after it: the form is empty.
    type("p");
    key(Qt::Key_F2);
    EXPECT_TRUE(exported("31901003.tif"));
    EXPECT_TRUE(exported("31901002.tif"));
    EXPECT_EQ(window->currentRecord(), -1);
}

} // namespace
