// SPDX-License-Identifier: Apache-2.0
// Translation of windows: the keys of captions, text boxes, control arrays, tab pages, list entries
// and tool tips, the design texts where no translation exists, and one statement per window.

#include "lang/TranslateForm.h"
#include "WindowTexts.h"
#include "app/Database.h"
#include "app/mdlDB.h"
#include "ui/frmAbout.h"
#include "ui/frmFehler.h"
#include "ui/frmOptionen.h"
#include "ui/frmTestNotiz.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QSqlDriver>
#include <QTabWidget>
#include <QVBoxLayout>
#include <memory>
#include <sqlite3.h>

namespace {

template <class W> W* add(QWidget* parent, const QString& name, int index = -1) {
    auto* w = new W(parent);
    w->setObjectName(name);
    if (index >= 0)
        w->setProperty("index", index);
    parent->layout()->addWidget(w);
    return w;
}

// A window with one control of every kind, its German design texts set as a form designer would,
// and another window it owns ("frmB"), which translates itself when it loads.
std::unique_ptr<QWidget> sampleForm() {
    auto form = std::make_unique<QWidget>();
    form->setObjectName("frmA");
    form->setWindowTitle("Testfenster");
    new QVBoxLayout(form.get());
    QMenu* menu = add<QMenuBar>(form.get(), "menuBar")->addMenu("&Datei");
    menu->setObjectName("mnuDatei");
    menu->addAction("&Beenden")->setObjectName("mpEnde");
    add<QLabel>(form.get(), "lblName")->setText("Name:");
    add<QLineEdit>(form.get(), "txtName")->setText("Vorgabe");
    add<QPushButton>(form.get(), "cmdX", 0)->setText("Null");
    add<QPushButton>(form.get(), "cmdX", 2)->setText("Knopf");
    auto* tabs = add<QTabWidget>(form.get(), "tabMain");
    tabs->addTab(new QWidget, "Erste");
    tabs->addTab(new QWidget, "Zweite");
    auto* combo = add<QComboBox>(form.get(), "cboWahl");
    combo->addItems({"null", "eins", "zwei"});
    combo->setCurrentIndex(2);
    auto* list = add<QListWidget>(form.get(), "lstA");
    list->addItems({"a", "b"});
    list->setCurrentRow(1);
    add<QGroupBox>(form.get(), "fraRahmen")->setTitle("Rahmen");
    auto* untranslated = add<QCheckBox>(form.get(), "chkOhne");
    untranslated->setText("ohne Übersetzung");
    untranslated->setToolTip("bleibt");
    auto* child = new QDialog(form.get());
    child->setObjectName("frmB");
    (new QLabel("Kind", child))->setObjectName("lblName");
    return form;
}

using TranslateFormTest = WindowTest;

// Every key form reaches its control, all read with one statement: captions, tool tips, text
// boxes, menus, control arrays (key case aside), tab pages counted from 1 and list entries from 0,
// keeping the selection; a null or empty text and a missing row keep the design text; the owned
// window is left to itself.
TEST_F(TranslateFormTest, every_key_form_reaches_its_control) {
    const char* rows[][3] = {
        {"EN", "frmA_Caption", "Test window"},
        {"EN", "frmA_lblName_Caption", "Customer:"},
        {"EN", "frmA_lblName_ToolTipText", "Name of the customer"},
        {"EN", "frmA_txtName_Text", "Default"},
        {"EN", "frmA_cmdX(2)_Caption", "Button two"},
        {"EN", "frmA_cmdX_Caption", "not for array members"},
        {"EN", "FRMA_CMDX(0)_caption", "Button zero"},
        {"EN", "frmA_tabMain(1)_Caption", "First"},
        {"EN", "frmA_tabMain(2)_Caption", "Second"},
        {"EN", "frmA_tabMain(2)_ToolTipText", "The second page"},
        {"EN", "frmA_cboWahl_List(0)", "zero"},
        {"EN", "frmA_cboWahl_List(2)", "two"},
        {"EN", "frmA_lstA_List(1)", "bee"},
        {"EN", "frmA_fraRahmen_Caption", ""},
        {"EN", "frmA_mnuDatei_Caption", "&File"},
        {"EN", "frmA_mpEnde_Caption", "E&xit"},
        {"EN", "frmA_mpEnde_ToolTipText", "Quit the program"},
        {"EN", "frmB_lblName_Caption", "Child"},
        {"DE", "frmA_lblName_Caption", "Kundenname:"},
    };
    for (const auto& row : rows)
        execSql("INSERT INTO sysTexts (Language_ID, Name, Text) VALUES (?,?,?)",
                {QString::fromUtf8(row[0]), QString::fromUtf8(row[1]), QString::fromUtf8(row[2])});
    execSql("INSERT INTO sysTexts (Language_ID, Name, Text) VALUES ('EN', 'frmA_chkOhne_Caption', NULL)");
    useLanguage("EN");
    const auto form = sampleForm();
    int statements = 0;
    sqlite3* db = *static_cast<sqlite3* const*>(database().driver()->handle().constData());
    sqlite3_trace_v2(
        db, SQLITE_TRACE_STMT,
        [](unsigned, void* count, void*, void*) {
            ++*static_cast<int*>(count);
            return 0;
        },
        &statements);
    TranslateForm(form.get());
    sqlite3_trace_v2(db, 0, nullptr, nullptr);
    EXPECT_EQ(statements, 1) << "a window's texts come with one statement";
    const QStringList shown{
        "Test window",
        "&File",
        "Name of the customer",
        "Customer:",
        "Default",
        "Button zero",
        "Button two",
        "First",
        "Second",
        "The second page",
        "zero",
        "eins",
        "two",
        "a",
        "bee",
        "Rahmen",
        "bleibt",
        "ohne Übersetzung",
        "Kind",
        "&File",
        "File",
        "E&xit",
        "Quit the program",
    };
    EXPECT_EQ(visibleTexts(form.get()), shown);
    EXPECT_EQ(form->findChild<QComboBox*>()->currentIndex(), 2);
    EXPECT_EQ(form->findChild<QListWidget*>()->currentRow(), 1);
    EXPECT_TRUE(messages.messages().isEmpty());
    auto* child = form->findChild<QDialog*>();
    TranslateForm(child);
    EXPECT_EQ(child->findChild<QLabel*>()->text(), "Child") << "a child window translates itself when it loads";

    // A text table that cannot be read is a runtime error and keeps every design text.
    const QStringList design = visibleTexts(sampleForm().get());
    execSql("DROP TABLE sysTexts");
    const auto untranslated = sampleForm();
    TranslateForm(untranslated.get());
    EXPECT_EQ(visibleTexts(untranslated.get()), design);
    EXPECT_TRUE(messages.saw("Laufzeitfehler in Funktion 'TranslateForm()'"))
        << messages.prompts().join('\n').toStdString();
}

// The shipped texts: every window text exists in both languages, every English text of a small
// window reaches a control, so no key is misspelt, and the German rows repeat the design texts
// exactly.
template <class Window> void expectComplete(const QString& form) {
    useLanguage("DE");
    const QStringList german = visibleTexts(std::make_unique<Window>().get());
    execSql("DELETE FROM sysTexts WHERE Language_ID='DE' AND substr(Name, 1, ?)=?",
            {form.size() + 1, form + QLatin1Char('_')});
    EXPECT_EQ(visibleTexts(std::make_unique<Window>().get()), german) << form.toStdString() << " design texts";
    useLanguage("EN");
    const QStringList english = visibleTexts(std::make_unique<Window>().get());
    int stored = 0;
    for (QSqlQuery q = execSql("SELECT Text FROM sysTexts WHERE Language_ID='EN' AND substr(Name, 1, ?)=?",
                               {form.size() + 1, form + QLatin1Char('_')});
         q.next(); ++stored)
        EXPECT_TRUE(english.contains(q.value(0).toString()))
            << form.toStdString() << ": " << q.value(0).toString().toStdString();
    EXPECT_GE(stored, 2);
}

TEST_F(TranslateFormTest, every_window_text_exists_in_both_languages_and_reaches_its_control) {
    QStringList lonely;
    for (QSqlQuery q =
             execSql("SELECT Name FROM sysTexts a WHERE (Name LIKE 'frm*' OR Name LIKE 'Caption_*') AND NOT EXISTS "
                     "(SELECT 1 FROM sysTexts b WHERE b.Name=a.Name AND b.Language_ID<>a.Language_ID)");
         q.next();)
        lonely << q.value(0).toString();
    EXPECT_TRUE(lonely.isEmpty()) << lonely.join(' ').toStdString();
    EXPECT_GT(CountRows("*", "sysTexts", "Name LIKE 'frmMain_*'"), 100);
    expectComplete<frmFehler>("frmFehler");
    expectComplete<frmTestNotiz>("frmTestNotiz");
    expectComplete<frmAbout>("frmAbout");
    expectComplete<frmOptionen>("frmOptionen");
}

} // namespace
