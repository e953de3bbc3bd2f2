// SPDX-License-Identifier: Apache-2.0
// The error list, the test-copy dialog and the about window as the operator uses them.

#include "WindowTexts.h"
#include "admin/ProgramInfo.h"
#include "ui/frmAbout.h"
#include "ui/frmFehler.h"
#include "ui/frmTestNotiz.h"

#include <QApplication>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>

namespace {

class SmallWindows : public WindowTest {};

TEST_F(SmallWindows, the_error_list_shows_the_records_error_text_read_only) {
    frmFehler errors;
    errors.setErrorText("Im Feld 'GEBDAT' befindet sich noch ein ?\r\nFeld 'STATE': unbekannter Staat");
    auto* box = errors.findChild<QPlainTextEdit*>("txtFehler");
    ASSERT_NE(box, nullptr);
    EXPECT_TRUE(box->isReadOnly());
    EXPECT_EQ(box->toPlainText(), "Im Feld 'GEBDAT' befindet sich noch ein ?\nFeld 'STATE': unbekannter Staat");
    errors.setErrorText(QString());
    EXPECT_EQ(box->toPlainText(), QString());
}

// The note is typed at once and filed beside the image; Escape files nothing, and a missing image
// closes the dialog with a message.
TEST_F(SmallWindows, the_test_copy_dialog_files_the_image_with_the_typed_note) {
    const QByteArray image = QByteArray("II*\0", 4) + QByteArray(500, 'x');
    home.writeFile("images/26319010004.tif", image);
    for (const bool ok : {false, true}) {
        frmTestNotiz dialog;
        dialog.setImageName("26319010004.tif");
        dialog.show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&dialog));
        auto* note = dialog.findChild<QPlainTextEdit*>("txtNotiz");
        EXPECT_EQ(QApplication::focusWidget(), note) << "the note is typed at once";
        EXPECT_EQ(dialog.findChild<QLineEdit*>("txtBildname")->text(), "26319010004.tif");
        QTest::keyClicks(note, "Vorname abgeschnitten");
        QTest::keyClick(note, Qt::Key_Return);
        QTest::keyClicks(note, "Seite 2 fehlt");
        ok ? dialog.findChild<QPushButton*>("cmdOK")->click() : QTest::keyClick(&dialog, Qt::Key_Escape);
        EXPECT_FALSE(dialog.isVisible());
        EXPECT_EQ(QFileInfo::exists(home.path("test/26319010004.tif")), ok);
    }
    EXPECT_EQ(home.readFile("test/26319010004.tif"), image);
    EXPECT_EQ(home.readFile("test/26319010004.txt"), QByteArray("Vorname abgeschnitten\r\nSeite 2 fehlt\r\n"));
    EXPECT_TRUE(messages.saw("Der Beleg wurde erfolgreich zum Test abgelegt"));

    frmTestNotiz missing;
    missing.setImageName("weg.tif");
    missing.show();
    missing.findChild<QPushButton*>("cmdOK")->click();
    EXPECT_EQ(messages.prompts().last(), "Bilddatei kann nicht gefunden werden!");
    EXPECT_FALSE(missing.isVisible());
}

TEST_F(SmallWindows, the_about_window_names_version_home_and_database) {
    frmAbout about;
    const QStringList texts = visibleTexts(&about);
    for (const QString& shown : {QStringLiteral("Veridon"), programVersion(), home.dir(), home.path("data.mdb")})
        EXPECT_TRUE(texts.contains(shown)) << shown.toStdString();
    EXPECT_EQ(about.windowTitle(), "Info");
}

} // namespace
