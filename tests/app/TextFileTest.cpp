// SPDX-License-Identifier: Apache-2.0
// Reading and writing the program's text files.

#include "app/TextFile.h"
#include "TempHome.h"
#include "app/CheckedFile.h"
#include "app/Errors.h"

#include <QDir>
#include <gtest/gtest.h>

namespace {

TEST(TextFiles, windows_1252_lines_with_crlf_lf_or_a_utf8_mark_read_alike_and_are_written_with_crlf) {
    TempHome home(TempHome::Content::Empty);
    const QStringList expected{"Müller;Jürgen", "", "Straße"};
    for (const QByteArray& bytes : {QByteArray("M\xFCller;J\xFCrgen\r\n\r\nStra\xDF"
                                               "e\r\n"),
                                    QByteArray("M\xFCller;J\xFCrgen\n\nStra\xDF"
                                               "e"),
                                    QByteArray("\xEF\xBB\xBFM\xC3\xBCller;J\xC3\xBCrgen\r\n\r\nStra\xC3\x9F"
                                               "e\r\n")}) {
        QStringList lines;
        ASSERT_TRUE(readTextLines(home.writeFile("in.txt", bytes), lines));
        EXPECT_EQ(lines, expected);
    }
    QStringList lines{"alt"};
    EXPECT_FALSE(readTextLines(home.path("fehlt.txt"), lines));
    EXPECT_TRUE(lines.isEmpty()) << "a missing file reads as no lines";

    // Written as Windows-1252 with CR LF; characters outside Windows-1252 become question marks.
    ASSERT_TRUE(writeTextLines(home.path("out.txt"), {"Größe €", "x"}));
    EXPECT_EQ(home.readFile("out.txt"), QByteArray("Gr\xF6\xDF"
                                                   "e \x80\r\nx\r\n"));
    ASSERT_TRUE(writeTextFile(home.path("t.txt"), "a\nb\r\nc"));
    EXPECT_EQ(home.readFile("t.txt"), QByteArray("a\r\nb\r\nc"));
    EXPECT_EQ(encodeText("Łukasz Ωmega"), QByteArray("?ukasz ?mega"));
}

// A write that fails part-way (here: the disk filling up after a few bytes) is an error with the
// cause in its text, and leaves the file as it was: no half file, no half line, no temporary file.
TEST(TextFiles, a_failed_write_or_append_leaves_the_file_as_it_was) {
    TempHome home(TempHome::Content::Empty);
    const QString xml = home.writeFile("out/a.xml", "<alt/>\r\n");
    const QString log = home.writeFile("out/log.txt", "Zeile 1\r\n");
    const auto expectDiskFull = [](const char* name, const auto& write) {
        setWriteBudgetForTesting(3);
        try {
            write();
            ADD_FAILURE() << name << ": no error";
        } catch (const VeridonError& e) {
            EXPECT_EQ(e.number(), ErrorNumber::DiskFull) << name;
            EXPECT_TRUE(e.description().contains("kein Platz mehr")) << name << ": " << e.description().toStdString();
        }
        setWriteBudgetForTesting(-1);
    };
    expectDiskFull("replace", [&] { writeFileChecked(xml, QByteArray(5000, 'x')); });
    expectDiskFull("new file", [&] { writeNewFileChecked(home.path("out/b.xml"), QByteArray(5000, 'x')); });
    expectDiskFull("append", [&] { appendFileChecked(log, QByteArray("Zeile 2 ist lang genug\r\n")); });
    expectDiskFull("copy", [&] { copyFileChecked(log, home.path("out/c.txt")); });
    EXPECT_EQ(home.readFile("out/a.xml"), QByteArray("<alt/>\r\n"));
    EXPECT_EQ(home.readFile("out/log.txt"), QByteArray("Zeile 1\r\n"));
    EXPECT_EQ(QDir(home.path("out")).entryList(QDir::Files | QDir::Hidden), QStringList({"a.xml", "log.txt"}));
    setWriteBudgetForTesting(3);
    EXPECT_FALSE(appendTextLine(log, "Zeile 2"));
    setWriteBudgetForTesting(-1);
    EXPECT_TRUE(appendTextLine(log, "Zeile 2"));
    EXPECT_EQ(home.readFile("out/log.txt"), QByteArray("Zeile 1\r\nZeile 2\r\n"));
}

} // namespace
