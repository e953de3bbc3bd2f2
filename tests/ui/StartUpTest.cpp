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

// Answers the next message box by pressing the button with the given text; notes what it saw.
struct BoxAnswerer {
    explicit BoxAnswerer(const QString& text) : buttonText(text) {}
    QString buttonText;
    QStringList seenButtons;
    QString seenText;
    bool cursorLifted = false;

    void arm() {
        QTimer::singleShot(50, [this] {
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            if (!box)
                return arm();
            seenText = box->text();
            cursorLifted = QApplication::overrideCursor() == nullptr;
            for (QAbstractButton* b : box->buttons())
                seenButtons << b->text();
            for (QAbstractButton* b : box->buttons())
                if (b->text() == buttonText)
                    b->click();
        });
    }
};

TEST(MessageBoxes, questions_have_german_buttons_and_the_busy_cursor_waits_outside) {
    QtMessagePresenter presenter;
    QApplication::setOverrideCursor(Qt::WaitCursor);
    BoxAnswerer answerer("Nein");
    answerer.arm();
    const int answer =
        zvMsgBox("Wollen Sie wirklich den aktuellen Datensatz verwerfen?", MsgBox::YesNo + MsgBox::Question);
    EXPECT_EQ(answer, MsgBox::No);
    EXPECT_EQ(answerer.seenText, "Wollen Sie wirklich den aktuellen Datensatz verwerfen?");
    EXPECT_TRUE(answerer.seenButtons.contains("Ja"));
    EXPECT_TRUE(answerer.seenButtons.contains("Nein"));
    EXPECT_TRUE(answerer.cursorLifted);
    ASSERT_NE(QApplication::overrideCursor(), nullptr);
    EXPECT_EQ(QApplication::overrideCursor()->shape(), Qt::WaitCursor);
    QApplication::restoreOverrideCursor();

    BoxAnswerer ok("OK");
    ok.arm();
    EXPECT_EQ(zvMsgBox("Zeile 1\nZeile 2", MsgBox::Information), MsgBox::OK);
    EXPECT_EQ(ok.seenText, "Zeile 1\nZeile 2");
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
