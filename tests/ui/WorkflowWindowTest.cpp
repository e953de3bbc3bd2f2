// SPDX-License-Identifier: Apache-2.0
// The record workflow through the main window's buttons and menus: discarding, leaving the program,
// the empty form and the display toggles that are stored at once.

#include "MainWindowFixture.h"

#include "app/Database.h"
#include "app/mdlDB.h"
#include "app/mdlMessages.h"

#include <QAction>
#include <QFileInfo>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QStatusBar>
#include <QToolBar>

namespace {

class WindowWorkflow : public MainWindowTest {
protected:
    QPushButton* button(const QString& name) const { return window->findChild<QPushButton*>(name); }
    QAction* action(const QString& name) const { return window->findChild<QAction*>(name); }
};

TEST_F(WindowWorkflow, shows_the_first_waiting_record_and_holds_it_for_this_workstation) {
    const QVector<qint32> records = insertDemoRecords(3);
    open();
    EXPECT_EQ(window->currentRecord(), records[0]);
    EXPECT_EQ(field("NACHNAME")->text(), "Huber");
    EXPECT_EQ(field("CARD_EXPIRY")->text(), "31.12.2029");
    EXPECT_EQ(window->findChild<QLineEdit*>("BMPName")->text(), "31901001.tif");
    EXPECT_EQ(window->findChild<QLineEdit*>("LfdNr")->text(), QString::number(records[0]));
    EXPECT_EQ(focusedName(), "FORM_ID"); // GUI_FocusField of the demo settings
    EXPECT_TRUE(window->windowTitle().startsWith("Veridon - Beleg"));
    EXPECT_EQ(workflowOf(records[0]), "30/1");
}

TEST_F(WindowWorkflow, verwerfen_asks_then_deletes_the_record_and_its_image_and_shows_the_next) {
    const QVector<qint32> records = insertDemoRecords(2);
    const QString image = writeImage("31901001.tif");
    open();
    // No keeps everything, the operator's change included.
    field("NACHNAME")->setText("Huber-Berger");
    messages.queueAnswer(MsgBox::No);
    action("mpBelegLoeschen")->trigger();
    EXPECT_TRUE(messages.saw("Wollen Sie wirklich den aktuellen Datensatz verwerfen?"));
    EXPECT_EQ(workflowOf(records[0]), "30/1");
    EXPECT_TRUE(QFileInfo::exists(image));
    EXPECT_EQ(field("NACHNAME")->text(), "Huber-Berger");

    messages.queueAnswer(MsgBox::Yes);
    QTest::mouseClick(button("buttonVerwerfen"), Qt::LeftButton);
    EXPECT_EQ(workflowOf(records[0]), "");
    EXPECT_FALSE(QFileInfo::exists(image));
    EXPECT_EQ(window->currentRecord(), records[1]);
    EXPECT_EQ(field("NACHNAME")->text(), "de Vries");
}

TEST_F(WindowWorkflow, verwerfen_never_deletes_an_image_named_with_a_path) {
    FormValues form = demoForms().at(0);
    form["BMPName"] = "archiv/31901001.tif";
    const qint32 withPath = insertRecord(form);
    const QString image = writeImage("archiv/31901001.tif");
    open();
    messages.queueAnswer(MsgBox::Yes);
    action("mpBelegLoeschen")->trigger();
    EXPECT_EQ(workflowOf(withPath), "");
    EXPECT_TRUE(QFileInfo::exists(image));
    EXPECT_EQ(window->currentRecord(), -1);
}

TEST_F(WindowWorkflow, leaving_asks_and_with_yes_discards_the_record_and_empties_the_image_folder) {
    const QVector<qint32> records = insertDemoRecords(3);
    const QString image = writeImage("31901001.tif");
    const QString waiting = writeImage("31901002.tif");
    open();
    messages.queueAnswer(MsgBox::No);
    QTest::mouseClick(button("buttonBeenden"), Qt::LeftButton);
    EXPECT_TRUE(messages.saw("Trotzdem beenden?"));
    EXPECT_TRUE(window->isVisible());
    EXPECT_EQ(workflowOf(records[0]), "30/1");
    EXPECT_EQ(window->currentRecord(), records[0]);

    messages.queueAnswer(MsgBox::Yes);
    QTest::mouseClick(button("buttonBeenden"), Qt::LeftButton);
    EXPECT_FALSE(window->isVisible());
    EXPECT_EQ(workflowOf(records[0]), "");
    EXPECT_EQ(workflowOf(records[1]), "10/0");
    EXPECT_FALSE(QFileInfo::exists(image));
    EXPECT_FALSE(QFileInfo::exists(waiting));
    EXPECT_EQ(CountRows("LfdNr", "zvbWerte", "Workflow_Status=30"), 0);
}

TEST_F(WindowWorkflow, an_empty_pool_leaves_an_empty_form_whose_actions_only_beep) {
    open();
    EXPECT_EQ(window->currentRecord(), -1);
    EXPECT_EQ(window->windowTitle(), "Veridon ");
    EXPECT_FALSE(window->findChild<QWidget*>("Datensatz")->isEnabled());
    EXPECT_EQ(field("NACHNAME")->text(), "");
    action("mpBelegLoeschen")->trigger();
    key(Qt::Key_F2);
    EXPECT_TRUE(messages.messages().isEmpty()) << messages.prompts().join("|").toStdString();
    // Leaving an empty form asks nothing.
    EXPECT_TRUE(window->close());
    EXPECT_TRUE(messages.messages().isEmpty());
}

TEST_F(WindowWorkflow, display_toggles_follow_the_settings_and_are_stored_at_once) {
    setting("GUI_ToolBarEnabled", false);
    setting("GUI_StatusBarEnabled", true);
    insertDemoRecords(1);
    open();
    EXPECT_FALSE(window->findChild<QToolBar*>("Toolbar1")->isVisible());
    EXPECT_FALSE(action("mpToolbar")->isChecked());
    EXPECT_TRUE(window->statusBar()->isVisible());

    action("mpStatusBar")->trigger();
    EXPECT_FALSE(window->statusBar()->isVisible());
    EXPECT_FALSE(GetSysFlag("GUI_StatusBarEnabled", true));
    action("mpToolbar")->trigger();
    EXPECT_TRUE(window->findChild<QToolBar*>("Toolbar1")->isVisible());
    EXPECT_TRUE(GetSysFlag("GUI_ToolBarEnabled", false));
}

TEST_F(WindowWorkflow, captions_follow_the_language_and_the_window_its_stored_place) {
    setting("APP_Language", "EN");
    ReloadLanguage();
    execSql("INSERT INTO zvbSysWindowPositions (formName, x, y, dx, dy) VALUES ('frmMain', 120, 90, 800, 560)");
    insertDemoRecords(1);
    open();
    EXPECT_EQ(button("buttonOK")->text(), "OK / hand over");
    EXPECT_EQ(window->findChild<QLabel*>("lblNACHNAME")->text(), "Surname:");
    EXPECT_EQ(window->menuBar()->findChild<QMenu*>("mnuDatei")->title(), "&File");
    EXPECT_EQ(window->pos(), QPoint(120, 90));
    EXPECT_EQ(window->size(), QSize(800, 560));

    // Closed somewhere else, it comes back there next time.
    window->move(200, 150);
    messages.queueAnswer(MsgBox::Yes);
    window->close();
    EXPECT_EQ(GetValue("x", "zvbSysWindowPositions", "formName='frmMain'").toInt(), 200);
    EXPECT_EQ(GetValue("y", "zvbSysWindowPositions", "formName='frmMain'").toInt(), 150);
    setting("APP_Language", "DE");
    ReloadLanguage();
}

} // namespace
