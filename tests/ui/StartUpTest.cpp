// SPDX-License-Identifier: Apache-2.0
// The pieces of the windows program's start: the database check of the start-up window, one copy
// per home, the message boxes and the progress in the status bar.

#include "HomeTest.h"
#include "app/mdlDB.h"
#include "app/mdlMessages.h"
#include "ui/QtMessagePresenter.h"
#include "ui/SingleInstance.h"
#include "ui/StatusBarProgress.h"
#include "ui/frmInit.h"

#include <QApplication>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QProgressBar>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>

namespace {

class DatabaseCheck : public HomeTest {};

TEST_F(DatabaseCheck, a_reachable_central_database_passes_without_a_word) {
    ASSERT_EQ(GetSysText("APP_ServerDB"), home.path("data.mdb"));
    frmInit init;
    init.show();
    EXPECT_TRUE(init.checkDatabase());
    EXPECT_FALSE(init.isVisible());
    EXPECT_TRUE(messages.messages().isEmpty());
}

TEST_F(DatabaseCheck, a_folder_instead_of_a_file_asks_for_the_database_and_stores_the_choice) {
    const QString elsewhere = home.writeFile("zentral/data.mdb", "SQLite format 3");
    SetSysValue("APP_ServerDB", home.path("zentral"));
    frmInit init;
    QString startFolder;
    QObject::connect(&init, &frmInit::fileDialogOpened, [&](QFileDialog* dialog) {
        startFolder = dialog->directory().absolutePath();
        QTimer::singleShot(0, dialog, [dialog, elsewhere] {
            dialog->selectFile(elsewhere);
            static_cast<QDialog*>(dialog)->accept(); // through QDialog, where accept() is public
        });
    });
    init.show();
    EXPECT_TRUE(init.checkDatabase());
    ASSERT_EQ(messages.messages().size(), 1);
    EXPECT_TRUE(messages.saw(QString("Der aktuell eingestellte Zugriffspfad lautet: '%1'").arg(home.path("zentral"))));
    EXPECT_EQ(messages.messages().first().buttons, MsgBox::Critical);
    EXPECT_EQ(startFolder, QDir(home.dir()).absolutePath());
    EXPECT_EQ(GetSysText("APP_ServerDB"), elsewhere);
}

TEST_F(DatabaseCheck, cancelling_the_dialog_ends_the_program_with_a_message) {
    SetSysValue("APP_ServerDB", QVariant());
    frmInit init;
    QObject::connect(&init, &frmInit::fileDialogOpened,
                     [](QFileDialog* dialog) { QTimer::singleShot(0, dialog, &QFileDialog::reject); });
    init.show();
    EXPECT_FALSE(init.checkDatabase());
    EXPECT_TRUE(messages.saw("lautet: ''"));
    EXPECT_TRUE(messages.saw("Ohne zentrale Programmdatenbank kann die Anwendung nicht arbeiten."));
    EXPECT_EQ(GetSysText("APP_ServerDB", "(null)"), "(null)");
}

TEST_F(DatabaseCheck, a_pool_server_that_does_not_answer_asks_again_and_takes_a_typed_address) {
    const QString silent = "postgresql://veridon@127.0.0.1:1/pool";
    const QString other = "postgresql://veridon@127.0.0.1:2/pool";
    SetSysValue("APP_ServerDB", silent);
    frmInit init;
    QObject::connect(&init, &frmInit::fileDialogOpened, [&](QFileDialog* dialog) {
        QTimer::singleShot(0, dialog, [dialog, other] {
            dialog->findChild<QLineEdit*>("fileNameEdit")->setText(other);
            static_cast<QDialog*>(dialog)->accept();
        });
    });
    init.show();
    EXPECT_TRUE(init.checkDatabase());
    EXPECT_TRUE(messages.saw(QString("Der aktuell eingestellte Zugriffspfad lautet: '%1'").arg(silent)));
    EXPECT_EQ(GetSysText("APP_ServerDB"), other);
}

TEST(SingleInstanceGuard, a_second_start_on_the_same_home_brings_the_first_forward) {
    QTemporaryDir homeA, homeB;
    SingleInstance first(homeA.path());
    EXPECT_FALSE(first.activateRunning());
    ASSERT_TRUE(first.listen());
    QSignalSpy asked(&first, &SingleInstance::activationRequested);

    SingleInstance second(homeA.path());
    EXPECT_TRUE(second.activateRunning());
    EXPECT_TRUE(asked.wait(3000));

    SingleInstance other(homeB.path());
    EXPECT_FALSE(other.activateRunning());
}

// Answers the next message box with a key, as the operator would; notes what it saw.
struct BoxAnswerer {
    explicit BoxAnswerer(int k) : key(k) {}
    int key;
    QStringList seenButtons;
    QString seenText;
    QString focused;
    bool cursorLifted = false;

    void arm() {
        QTimer::singleShot(50, [this] {
            // The operator answers once the box has the keyboard.
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            const QWidget* focus = QApplication::focusWidget();
            if (!box || !focus || focus->window() != box)
                return arm();
            seenText = box->text();
            cursorLifted = QApplication::overrideCursor() == nullptr;
            for (QAbstractButton* b : box->buttons())
                seenButtons << b->text();
            if (QWidget* f = QApplication::focusWidget())
                focused = qobject_cast<QAbstractButton*>(f) ? static_cast<QAbstractButton*>(f)->text() : QString();
            QTest::keyClick(box, Qt::Key(key));
        });
    }
};

class MessageBoxes : public HomeTest {
protected:
    ~MessageBoxes() override {
        SetSysValue("APP_Language", "DE");
        ReloadLanguage();
    }
};

// Every button has its letter, the captions follow the language, and a question that deletes
// defaults to No: a hasty Enter keeps the record.
TEST_F(MessageBoxes, answers_by_key_in_the_operators_language_with_no_as_the_safe_default) {
    const QString question = "Wollen Sie wirklich den aktuellen Datensatz verwerfen?";
    const int askDelete = MsgBox::YesNo + MsgBox::Question + MsgBox::DefaultButton2;
    const struct {
        const char* language;
        int key;
        int expected;
        QStringList buttons;
    } cases[] = {
        {"DE", Qt::Key_Return, MsgBox::No, {"&Ja", "&Nein"}}, {"DE", Qt::Key_J, MsgBox::Yes, {"&Ja", "&Nein"}},
        {"DE", Qt::Key_Escape, MsgBox::No, {"&Ja", "&Nein"}}, {"EN", Qt::Key_Y, MsgBox::Yes, {"&Yes", "&No"}},
        {"EN", Qt::Key_Return, MsgBox::No, {"&Yes", "&No"}},
    };
    for (const auto& c : cases) {
        SetSysValue("APP_Language", c.language);
        ReloadLanguage();
        QtMessagePresenter presenter;
        BoxAnswerer answerer(c.key);
        answerer.arm();
        EXPECT_EQ(zvMsgBox(question, askDelete), c.expected) << c.language << " key " << c.key;
        EXPECT_EQ(answerer.seenButtons, c.buttons);
        EXPECT_EQ(answerer.focused, c.buttons.last()) << "the default button has the focus";
    }
}

TEST_F(MessageBoxes, the_busy_cursor_waits_outside_and_a_message_closes_with_enter) {
    QtMessagePresenter presenter;
    QApplication::setOverrideCursor(Qt::WaitCursor);
    BoxAnswerer ok(Qt::Key_Return);
    ok.arm();
    EXPECT_EQ(zvMsgBox("Zeile 1\nZeile 2", MsgBox::Information), MsgBox::OK);
    EXPECT_EQ(ok.seenText, "Zeile 1\nZeile 2");
    EXPECT_EQ(ok.seenButtons, QStringList{"&OK"});
    EXPECT_TRUE(ok.cursorLifted);
    ASSERT_NE(QApplication::overrideCursor(), nullptr);
    EXPECT_EQ(QApplication::overrideCursor()->shape(), Qt::WaitCursor);
    QApplication::restoreOverrideCursor();
}

TEST(StatusBarProgressDisplay, shows_text_and_bar_while_a_batch_runs) {
    QLabel label;
    QProgressBar bar;
    {
        StatusBarProgress progress(&label, &bar);
        appProgress().status("Export von korrigierten Daten: 3");
        appProgress().progress(3, 8);
        EXPECT_EQ(label.text(), "Export von korrigierten Daten: 3");
        EXPECT_FALSE(bar.isHidden());
        EXPECT_EQ(bar.value(), 37);
        appProgress().finished();
        EXPECT_TRUE(bar.isHidden());
        EXPECT_EQ(label.text(), "");
    }
    // Gone with the window: the batch reports into the void again.
    EXPECT_EQ(dynamic_cast<StatusBarProgress*>(&appProgress()), nullptr);
}

} // namespace
