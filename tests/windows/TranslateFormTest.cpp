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
#include <tuple>

namespace {

// Records every statement SQLite runs on this thread's connection while it lives.
class StatementLog {
public:
    StatementLog() {
        const QVariant handle = database().driver()->handle();
        db_ = *static_cast<sqlite3* const*>(handle.constData());
        sqlite3_trace_v2(db_, SQLITE_TRACE_STMT, &StatementLog::traced, this);
    }
    ~StatementLog() { sqlite3_trace_v2(db_, 0, nullptr, nullptr); }

    // The statements that read or write table.
    QStringList on(const QString& table) const { return statements_.filter(table, Qt::CaseInsensitive); }

private:
    static int traced(unsigned, void* context, void*, void* sql) {
        static_cast<StatementLog*>(context)->statements_ << QString::fromUtf8(static_cast<const char*>(sql));
        return 0;
    }
    sqlite3* db_;
    QStringList statements_;
};

template <class W> W* add(QWidget* parent, const QString& name, int index = -1) {
    auto* w = new W(parent);
    w->setObjectName(name);
    if (index >= 0)
        w->setProperty("index", index);
    parent->layout()->addWidget(w);
    return w;
}

// A window with one control of every kind, its German design texts set as a form designer would.
struct SampleForm {
    SampleForm() {
        form.setObjectName("frmA");
        form.setWindowTitle("Testfenster");
        new QVBoxLayout(&form);
        auto* bar = add<QMenuBar>(&form, "menuBar");
        menu = bar->addMenu("&Datei");
        menu->setObjectName("mnuDatei");
        quit = menu->addAction("&Beenden");
        quit->setObjectName("mpEnde");
        save = menu->addAction("&Speichern");
        save->setObjectName("mpSpeichern");
        label = add<QLabel>(&form, "lblName");
        label->setText("Name:");
        edit = add<QLineEdit>(&form, "txtName");
        edit->setText("Vorgabe");
        button0 = add<QPushButton>(&form, "cmdX", 0);
        button0->setText("Null");
        button2 = add<QPushButton>(&form, "cmdX", 2);
        button2->setText("Knopf");
        tabs = add<QTabWidget>(&form, "tabMain");
        tabs->addTab(new QWidget, "Erste");
        tabs->addTab(new QWidget, "Zweite");
        combo = add<QComboBox>(&form, "cboWahl");
        combo->addItems({"null", "eins", "zwei", "drei", "vier"});
        combo->setCurrentIndex(3);
        list = add<QListWidget>(&form, "lstA");
        list->addItems({"a", "b"});
        list->setCurrentRow(1);
        frame = add<QGroupBox>(&form, "fraRahmen");
        frame->setTitle("Rahmen");
        untranslated = add<QCheckBox>(&form, "chkOhne");
        untranslated->setText(QString::fromUtf8("ohne Übersetzung"));
        untranslated->setToolTip("bleibt");
        // Another window owned by this one: it translates itself when it loads.
        child = new QDialog(&form);
        child->setObjectName("frmB");
        childLabel = new QLabel("Kind", child);
        childLabel->setObjectName("lblName");
    }

    QWidget form;
    QMenu* menu;
    QAction* quit;
    QAction* save;
    QLabel* label;
    QLineEdit* edit;
    QPushButton* button0;
    QPushButton* button2;
    QTabWidget* tabs;
    QComboBox* combo;
    QListWidget* list;
    QGroupBox* frame;
    QCheckBox* untranslated;
    QDialog* child;
    QLabel* childLabel;
};

class TranslateFormTest : public WindowTest {
protected:
    void SetUp() override {
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
            {"EN", "frmA_cboWahl_List(3)", "three"},
            {"EN", "frmA_lstA_List(1)", "bee"},
            {"EN", "frmA_fraRahmen_Caption", ""},
            {"EN", "frmA_mnuDatei_Caption", "&File"},
            {"EN", "frmA_mpEnde_Caption", "E&xit"},
            {"EN", "frmA_mpEnde_ToolTipText", "Quit the program"},
            {"EN", "frmA_mpSpeichern_Caption", "&Save"},
            {"EN", "frmB_lblName_Caption", "Child"},
            {"DE", "frmA_lblName_Caption", "Kundenname:"},
        };
        for (const auto& row : rows)
            execSql("INSERT INTO sysTexts (Language_ID, Name, Text) VALUES (?,?,?)",
                    {QString::fromUtf8(row[0]), QString::fromUtf8(row[1]), QString::fromUtf8(row[2])});
        execSql("INSERT INTO sysTexts (Language_ID, Name, Text) VALUES ('EN', 'frmA_chkOhne_Caption', NULL)");
        useLanguage("EN");
    }
};

TEST_F(TranslateFormTest, every_key_form_reaches_its_control) {
    SampleForm s;
    TranslateForm(&s.form);
    const std::tuple<const char*, QString, const char*> shown[] = {
        {"frmA_Caption", s.form.windowTitle(), "Test window"},
        {"control caption", s.label->text(), "Customer:"},
        {"control tool tip", s.label->toolTip(), "Name of the customer"},
        {"text box", s.edit->text(), "Default"},
        {"menu title", s.menu->title(), "&File"},
        {"menu action", s.quit->text(), "E&xit"},
        {"menu action tool tip", s.quit->toolTip(), "Quit the program"},
        {"an action's unset tool tip follows its caption", s.save->toolTip(), "Save"},
        {"control array cmdX(2)", s.button2->text(), "Button two"},
        {"cmdX(0), key in other case", s.button0->text(), "Button zero"},
        {"tab page 1", s.tabs->tabText(0), "First"},
        {"tab page 2", s.tabs->tabText(1), "Second"},
        {"tab page 2 tool tip", s.tabs->tabToolTip(1), "The second page"},
        {"tab page 1 without tool tip", s.tabs->tabToolTip(0), ""},
        {"list entry 0", s.combo->itemText(0), "zero"},
        {"list entry 1 without row", s.combo->itemText(1), "eins"},
        {"selected entry 3", s.combo->currentText(), "three"},
        {"list box entry 1", s.list->item(1)->text(), "bee"},
        {"null text keeps design", s.untranslated->text(), "ohne Übersetzung"},
        {"no row keeps design", s.untranslated->toolTip(), "bleibt"},
        {"empty text keeps design", s.frame->title(), "Rahmen"},
        {"child window untouched", s.childLabel->text(), "Kind"},
    };
    for (const auto& [what, actual, expected] : shown)
        EXPECT_EQ(actual, QString::fromUtf8(expected)) << what;
    EXPECT_EQ(s.combo->currentIndex(), 3);
    EXPECT_EQ(s.list->currentRow(), 1);
    TranslateForm(s.child);
    EXPECT_EQ(s.childLabel->text(), "Child") << "a child window translates itself when it loads";
}

// A language without rows shows every design text, silently; a text table that cannot be read is
// a runtime error and keeps the design too.
TEST_F(TranslateFormTest, without_texts_every_design_text_stays) {
    SampleForm designed;
    const QStringList design = visibleTexts(&designed.form);
    useLanguage("FR");
    SampleForm s;
    TranslateForm(&s.form);
    EXPECT_EQ(visibleTexts(&s.form), design);
    EXPECT_TRUE(messages.messages().isEmpty());

    useLanguage("EN");
    execSql("DROP TABLE sysTexts");
    SampleForm unread;
    TranslateForm(&unread.form);
    EXPECT_EQ(visibleTexts(&unread.form), design);
    ASSERT_EQ(messages.messages().size(), 1);
    EXPECT_TRUE(messages.messages()[0].prompt.startsWith("Laufzeitfehler in Funktion 'TranslateForm()'"))
        << messages.messages()[0].prompt.toStdString();
}

TEST_F(TranslateFormTest, a_window_is_translated_with_one_statement) {
    // The options window has well over a hundred translatable texts.
    frmOptionen options(nullptr, {});
    StatementLog log;
    TranslateForm(&options);
    EXPECT_EQ(log.on("sysTexts").size(), 1) << log.on("sysTexts").join('\n').toStdString();
    EXPECT_EQ(options.windowTitle(), "Options");
}

// The shipped texts: every English text of a window reaches a control, so no key is misspelt, and
// the German rows repeat the design texts exactly.
class ShippedTexts : public WindowTest {
protected:
    template <class Window> void expectComplete(const QString& form) {
        useLanguage("DE");
        const QStringList german = visibleTexts(std::make_unique<Window>().get());
        execSql("DELETE FROM sysTexts WHERE Language_ID='DE' AND substr(Name, 1, ?)=?",
                {form.size() + 1, form + QLatin1Char('_')});
        EXPECT_EQ(visibleTexts(std::make_unique<Window>().get()), german) << form.toStdString() << " design texts";
        useLanguage("EN");
        const QStringList english = visibleTexts(std::make_unique<Window>().get());
        const QStringList stored = storedTexts("EN", form);
        EXPECT_GE(stored.size(), 2);
        for (const QString& text : stored)
            EXPECT_TRUE(english.contains(text)) << form.toStdString() << ": " << text.toStdString();
    }
};

TEST_F(ShippedTexts, every_small_window_is_complete) {
    expectComplete<frmFehler>("frmFehler");
    expectComplete<frmTestNotiz>("frmTestNotiz");
    expectComplete<frmAbout>("frmAbout");
    expectComplete<frmOptionen>("frmOptionen");
}

TEST_F(ShippedTexts, every_window_text_exists_in_both_languages) {
    QSqlQuery q =
        execSql("SELECT Name FROM sysTexts a WHERE (Name LIKE 'frm*' OR Name LIKE 'Caption_*') AND NOT EXISTS "
                "(SELECT 1 FROM sysTexts b WHERE b.Name=a.Name AND b.Language_ID<>a.Language_ID)");
    QStringList lonely;
    while (q.next())
        lonely << q.value(0).toString();
    EXPECT_TRUE(lonely.isEmpty()) << lonely.join(' ').toStdString();
    EXPECT_GT(CountRows("*", "sysTexts", "Name LIKE 'frmMain_*'"), 100);
}

} // namespace
