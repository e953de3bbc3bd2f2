// SPDX-License-Identifier: Apache-2.0
// The windows program's start: the database check of the start-up window, one copy per home (also
// as the whole program, started as the operator starts it), the message boxes and Qt's own dialogs in
// the operator's language, and the progress in the status bar.

#include "../workflow/DemoRecords.h"
#include "CliRun.h"
#include "HomeTest.h"
#include "app/mdlDB.h"
#include "app/mdlMessages.h"
#include "ui/QtMessagePresenter.h"
#include "ui/QtTranslations.h"
#include "ui/SingleInstance.h"
#include "ui/StatusBarProgress.h"
#include "ui/frmInit.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QProcess>
#include <QProgressBar>
#include <QPushButton>
#include <QTest>
#include <QTimer>

namespace {

using DatabaseCheck = HomeTest;

// A central database that is not there (a folder, nothing set, a pool server that does not
// answer) is named in a message and asked for with the file dialog, which starts in the home; the
// choice (a file, a typed address) is stored, and cancelling ends the program. (A reachable one
// passes without a word: the program's start below would wait on a message otherwise.)
TEST_F(DatabaseCheck, asks_for_an_unreachable_database_and_stores_the_choice) {
    const QString file = home.writeFile("zentral/data.mdb", "SQLite format 3");
    const QString other = "postgresql://veridon@127.0.0.1:2/pool";
    const struct {
        QVariant stored;
        QString answer; // empty: cancel
    } cases[] = {{home.path("zentral"), file}, {"postgresql://veridon@127.0.0.1:1/pool", other}, {QVariant(), {}}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.stored.toString().toStdString());
        messages.clear();
        SetSysValue("APP_ServerDB", c.stored);
        frmInit init;
        QString startFolder;
        QObject::connect(&init, &frmInit::fileDialogOpened, [&](QFileDialog* dialog) {
            startFolder = dialog->directory().absolutePath();
            QTimer::singleShot(0, dialog, [dialog, answer = c.answer] {
                if (answer.isEmpty())
                    return dialog->reject();
                if (answer.startsWith("postgresql:"))
                    dialog->findChild<QLineEdit*>("fileNameEdit")->setText(answer);
                else
                    dialog->selectFile(answer);
                static_cast<QDialog*>(dialog)->accept(); // through QDialog, where accept() is public
            });
        });
        init.show();
        const bool passes = !c.answer.isEmpty();
        EXPECT_EQ(init.checkDatabase(), passes);
        EXPECT_EQ(GetSysText("APP_ServerDB", "(null)"), passes ? c.answer : "(null)");
        EXPECT_EQ(messages.messages().first().buttons, MsgBox::Critical);
        EXPECT_TRUE(
            messages.saw(QString("Der aktuell eingestellte Zugriffspfad lautet: '%1'").arg(c.stored.toString())));
        if (c.answer == file) { // the first dialog; later ones start where the last one ended
            EXPECT_EQ(startFolder, QDir(home.dir()).absolutePath());
        }
        EXPECT_EQ(messages.saw("Ohne zentrale Programmdatenbank kann die Anwendung nicht arbeiten."), !passes);
    }
}

// Answers the next message box with key once it has the keyboard, as the operator would; notes its
// text, its captions, the caption with the focus and whether the busy cursor was lifted.
void answerBox(int key, QStringList& seen) {
    QTimer::singleShot(50, [key, &seen] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        const QWidget* focus = QApplication::focusWidget();
        if (!box || !focus || focus->window() != box)
            return answerBox(key, seen);
        QStringList captions;
        for (QAbstractButton* b : box->buttons())
            captions << b->text();
        seen = {box->text(), captions.join(' '), focus->property("text").toString(),
                QApplication::overrideCursor() ? "busy" : "arrow"};
        QTest::keyClick(box, Qt::Key(key));
    });
}

using MessageBoxes = HomeTest;

// Every button has its letter, the captions follow the language, and a question that deletes
// defaults to No (it has the focus): a hasty Enter keeps the record. A message shows its lines and
// closes with Enter; the busy cursor waits outside the box.
TEST_F(MessageBoxes, answers_by_key_in_the_operators_language_with_no_as_the_safe_default) {
    const QString question = "Wollen Sie wirklich den aktuellen Datensatz verwerfen?";
    const int askDelete = MsgBox::YesNo + MsgBox::Question + MsgBox::DefaultButton2;
    const struct {
        const char* language;
        QString text;
        int buttons;
        int key;
        int expected;
        QString captions;
        QString focused;
    } cases[] = {
        {"DE", question, askDelete, Qt::Key_Return, MsgBox::No, "&Ja &Nein", "&Nein"},
        {"DE", question, askDelete, Qt::Key_J, MsgBox::Yes, "&Ja &Nein", "&Nein"},
        {"DE", question, askDelete, Qt::Key_Escape, MsgBox::No, "&Ja &Nein", "&Nein"},
        {"EN", question, askDelete, Qt::Key_Y, MsgBox::Yes, "&Yes &No", "&No"},
        {"EN", question, askDelete, Qt::Key_Return, MsgBox::No, "&Yes &No", "&No"},
        // German again last, as every other test expects.
        {"DE", "Zeile 1\r\nZeile 2", MsgBox::Information, Qt::Key_Return, MsgBox::OK, "&OK", "&OK"},
    };
    QApplication::setOverrideCursor(Qt::WaitCursor);
    for (const auto& c : cases) {
        SetSysValue("APP_Language", c.language);
        ReloadLanguage();
        QtMessagePresenter presenter;
        QStringList seen;
        answerBox(c.key, seen);
        EXPECT_EQ(zvMsgBox(c.text, c.buttons), c.expected) << c.language << " key " << c.key;
        EXPECT_EQ(seen, QStringList({QString(c.text).replace("\r\n", "\n"), c.captions, c.focused, "arrow"}));
    }
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

using Program = HomeTest;

// A second start on the same home ends at once and the first runs on; another home is another
// workstation, which finds no program of its own running. While the windows hold a home, the command line's
// workflow commands refuse: the record on screen is never taken from under the operator. Reading commands still run,
// and once the program has ended (even killed) the commands work again.
TEST_F(Program, one_copy_per_home_and_the_command_lines_workflow_commands_wait_for_it) {
    const QVector<qint32> records = insertDemoRecords(2);
    QProcess program, second;
    program.setProcessChannelMode(QProcess::MergedChannels);
    program.start(QStringLiteral(VERIDON_PROGRAM), {"--home", home.dir()});
    ASSERT_TRUE(program.waitForStarted());
    ASSERT_TRUE(SingleInstance(home.dir()).activateRunning(20000)) << program.readAll().toStdString();
    second.start(QStringLiteral(VERIDON_PROGRAM), {"--home", home.dir()});
    EXPECT_TRUE(second.waitForFinished(10000));
    EXPECT_EQ(second.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(second.exitCode(), 0);
    EXPECT_EQ(program.state(), QProcess::Running);
    const QTemporaryDir otherHome;
    EXPECT_FALSE(SingleInstance(otherHome.path()).activateRunning());

    // The window listens before it takes its first record.
    ASSERT_TRUE(QTest::qWaitFor([&] { return workflowOf(records[0]) == "30/1"; }, 20000));
    ASSERT_EQ(runCli({"--home", home.dir(), "sql", "SELECT Workflow_Status FROM zvbWerte"}).exitCode, 0);
    for (const QStringList& command : {QStringList{"next"}, {"discard", QString::number(records[0])}, {"export"}}) {
        const CliRun refused = runCli(QStringList{"--home", home.dir(), "--yes"} + command);
        EXPECT_EQ(refused.exitCode, 1) << command.join(' ').toStdString();
        EXPECT_TRUE(refused.err.contains("belegt")) << refused.err.toStdString();
    }
    EXPECT_EQ(workflowOf(records[0]), "30/1");
    EXPECT_EQ(workflowOf(records[1]), "10/0");

    program.kill(); // even a program that dies leaves no lock behind
    program.waitForFinished(5000);
    EXPECT_EQ(runCli({"--home", home.dir(), "next"}).exitCode, 0);
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
