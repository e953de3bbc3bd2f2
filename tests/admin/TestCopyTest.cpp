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
    void SetUp() override { home.writeFile("images/26319010001.tif", image); }

    const QByteArray image = QByteArray("II*\0", 4) + QByteArray(2000, 'b');
};

// A bare name is copied from the image folder and its note written beside it as Windows text; the
// record's image stays. Putting a form aside again replaces both files (an empty note still writes a
// line break); a name with a path is copied from there; a dotted name keeps all but its last part;
// a test folder that is the image folder itself keeps the image.
TEST_F(TestCopy, the_image_is_copied_with_its_note_into_the_test_folder) {
    EXPECT_EQ(testCopyFolder(), home.path("test/"));
    EXPECT_EQ(BelegZumTest("26319010001.tif", "Müller statt Muller\nGeburtsdatum fehlt"), TestCopyResult::Done);
    EXPECT_EQ(home.readFile("test/26319010001.tif"), image);
    EXPECT_EQ(home.readFile("test/26319010001.txt"), QByteArray("M\xfcller statt Muller\r\nGeburtsdatum fehlt\r\n"));
    EXPECT_EQ(messages.prompts(), QStringList{QString("Der Beleg wurde erfolgreich zum Test abgelegt: Dateiname '%1'")
                                                  .arg(home.path("test/26319010001.tif"))});
    EXPECT_EQ(home.readFile("images/26319010001.tif"), image);

    home.writeFile("archiv/2026/26319010001.tif", "andere Aufnahme");
    EXPECT_EQ(BelegZumTest(home.path("archiv/2026/26319010001.tif"), QString()), TestCopyResult::Done);
    EXPECT_EQ(home.readFile("test/26319010001.tif"), QByteArray("andere Aufnahme"));
    EXPECT_EQ(home.readFile("test/26319010001.txt"), QByteArray("\r\n"));
    home.writeFile("images/beleg.v2.tif", "x");
    BelegZumTest("beleg.v2.tif", "n");
    EXPECT_TRUE(QFileInfo::exists(home.path("test/beleg.v2.txt")));

    SetSysValue("APP_TestBildpfad", home.path("images"));
    EXPECT_EQ(BelegZumTest("26319010001.tif", "n"), TestCopyResult::Done);
    EXPECT_EQ(home.readFile("images/26319010001.tif"), image);
    EXPECT_EQ(home.readFile("images/26319010001.txt"), QByteArray("n\r\n"));
    SetSysValue("APP_TestBildpfad", QVariant());
    EXPECT_EQ(testCopyFolder(), "/") << "an unset test folder is the root";
}

// A missing or empty name, or a path of the other platform's kind (a path too, not a name in the
// image folder), shows no image and writes nothing; a missing test folder is a run-time error.
TEST_F(TestCopy, without_an_image_or_a_test_folder_nothing_is_written) {
    for (const QString& name : {QString("fehlt.tif"), QString(), QString("C:\\scans\\26319010001.tif")})
        EXPECT_EQ(BelegZumTest(name, "n"), TestCopyResult::NoImage) << name.toStdString();
    EXPECT_EQ(messages.prompts(), QStringList(3, "Bilddatei kann nicht gefunden werden!"));
    EXPECT_TRUE(QDir(home.path("test")).isEmpty());

    messages.clear();
    SetSysValue("APP_TestBildpfad", home.path("gibtsnicht"));
    EXPECT_EQ(BelegZumTest("26319010001.tif", "n"), TestCopyResult::Failed);
    ASSERT_EQ(messages.messages().size(), 1);
    EXPECT_TRUE(messages.messages()[0].prompt.startsWith(
        "Laufzeitfehler in Funktion 'actionBelegZumTest()'!\r\n#76: Pfad nicht gefunden"))
        << messages.messages()[0].prompt.toStdString();
    EXPECT_EQ(messages.messages()[0].buttons, MsgBox::Critical);
    EXPECT_FALSE(QFileInfo::exists(home.path("gibtsnicht")));
}

} // namespace
