// SPDX-License-Identifier: Apache-2.0
// Putting a form aside for testing: the image and the note in the test folder, and the messages.

#include "HomeTest.h"
#include "admin/mdlTestCopy.h"
#include "app/mdlDB.h"

#include <QDir>
#include <QFile>

namespace {

class TestCopy : public HomeTest {
protected:
    void SetUp() override {
        image = QByteArray("II*\0", 4) + QByteArray(2000, 'b');
        home.writeFile("images/26319010001.tif", image);
    }

    bool has(const QString& relative) const { return QFileInfo::exists(home.path(relative)); }

    QByteArray image;
};

// The note keeps its lines and umlauts as Windows text.
TEST_F(TestCopy, a_bare_name_is_copied_from_the_image_folder_with_its_note) {
    EXPECT_EQ(BelegZumTest("26319010001.tif", "Müller statt Muller\nGeburtsdatum fehlt"), TestCopyResult::Done);
    EXPECT_EQ(home.readFile("test/26319010001.tif"), image);
    EXPECT_EQ(home.readFile("test/26319010001.txt"), QByteArray("M\xfcller statt Muller\r\nGeburtsdatum fehlt\r\n"));
    ASSERT_EQ(messages.messages().size(), 1);
    EXPECT_EQ(messages.messages()[0].prompt, QString("Der Beleg wurde erfolgreich zum Test abgelegt: Dateiname '%1'")
                                                 .arg(home.path("test/26319010001.tif")));
    EXPECT_TRUE(has("images/26319010001.tif")) << "the record's image stays";
}

TEST_F(TestCopy, a_name_with_a_path_is_copied_from_that_path) {
    const QByteArray other("andere Aufnahme");
    home.writeFile("archiv/2026/26319010001.tif", other);
    EXPECT_EQ(BelegZumTest(home.path("archiv/2026/26319010001.tif"), "x"), TestCopyResult::Done);
    EXPECT_EQ(home.readFile("test/26319010001.tif"), other);
}

// The second note is empty: it still writes a line break.
TEST_F(TestCopy, putting_a_form_aside_twice_replaces_both_files) {
    BelegZumTest("26319010001.tif", "erste Notiz, etwas länger");
    home.writeFile("images/26319010001.tif", "neu gescannt");
    EXPECT_EQ(BelegZumTest("26319010001.tif", QString()), TestCopyResult::Done);
    EXPECT_EQ(home.readFile("test/26319010001.tif"), QByteArray("neu gescannt"));
    EXPECT_EQ(home.readFile("test/26319010001.txt"), QByteArray("\r\n"));
}

TEST_F(TestCopy, a_name_with_dots_keeps_all_but_the_last_part_for_the_note) {
    home.writeFile("images/beleg.v2.tif", "x");
    BelegZumTest("beleg.v2.tif", "n");
    EXPECT_TRUE(has("test/beleg.v2.txt"));
}

TEST_F(TestCopy, a_missing_or_empty_image_name_shows_no_image_and_writes_nothing) {
    EXPECT_EQ(BelegZumTest("fehlt.tif", "n"), TestCopyResult::NoImage);
    EXPECT_EQ(BelegZumTest(QString(), "n"), TestCopyResult::NoImage);
    // A path of the other platform's kind is a path too, not a name in the image folder.
    EXPECT_EQ(BelegZumTest("C:\\scans\\26319010001.tif", "n"), TestCopyResult::NoImage);
    EXPECT_EQ(messages.prompts(), QStringList(3, "Bilddatei kann nicht gefunden werden!"));
    EXPECT_TRUE(QDir(home.path("test")).isEmpty());
}

TEST_F(TestCopy, a_missing_test_folder_is_a_runtime_error_and_leaves_no_note) {
    SetSysValue("APP_TestBildpfad", home.path("gibtsnicht"));
    EXPECT_EQ(BelegZumTest("26319010001.tif", "n"), TestCopyResult::Failed);
    ASSERT_EQ(messages.messages().size(), 1);
    EXPECT_TRUE(messages.messages()[0].prompt.startsWith(
        "Laufzeitfehler in Funktion 'actionBelegZumTest()'!\r\n#76: Pfad nicht gefunden"))
        << messages.messages()[0].prompt.toStdString();
    EXPECT_EQ(messages.messages()[0].buttons, MsgBox::Critical);
    EXPECT_FALSE(has("gibtsnicht"));
}

TEST_F(TestCopy, the_test_folder_setting_gets_a_slash_and_an_unset_one_means_the_root) {
    EXPECT_EQ(testCopyFolder(), home.path("test/"));
    SetSysValue("APP_TestBildpfad", home.path("test/"));
    EXPECT_EQ(testCopyFolder(), home.path("test/"));
    SetSysValue("APP_TestBildpfad", QVariant());
    EXPECT_EQ(testCopyFolder(), "/");
}

TEST_F(TestCopy, the_image_folder_itself_as_test_folder_keeps_the_image) {
    SetSysValue("APP_TestBildpfad", home.path("images"));
    EXPECT_EQ(BelegZumTest("26319010001.tif", "n"), TestCopyResult::Done);
    EXPECT_EQ(home.readFile("images/26319010001.tif"), image);
    EXPECT_EQ(home.readFile("images/26319010001.txt"), QByteArray("n\r\n"));
}

} // namespace
