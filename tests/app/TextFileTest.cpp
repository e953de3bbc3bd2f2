// Reading and writing the program's text files.

#include "app/TextFile.h"
#include "TempHome.h"

#include <gtest/gtest.h>

namespace {

TEST(TextFiles, windows_1252_lines_with_crlf_lf_or_a_utf8_mark_read_alike) {
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
}

TEST(TextFiles, written_as_windows_1252_with_crlf) {
    TempHome home(TempHome::Content::Empty);
    ASSERT_TRUE(writeTextLines(home.path("out.txt"), {"Größe €", "x"}));
    EXPECT_EQ(home.readFile("out.txt"), QByteArray("Gr\xF6\xDF"
                                                   "e \x80\r\nx\r\n"));
    ASSERT_TRUE(writeTextFile(home.path("t.txt"), "a\nb\r\nc"));
    EXPECT_EQ(home.readFile("t.txt"), QByteArray("a\r\nb\r\nc"));
}

TEST(TextFiles, characters_outside_windows_1252_become_question_marks) {
    EXPECT_EQ(encodeText("Łukasz Ωmega"), QByteArray("?ukasz ?mega"));
}

TEST(TextFiles, missing_file_reports_false) {
    QStringList lines{"alt"};
    EXPECT_FALSE(readTextLines("/nonexistent/x.txt", lines));
    EXPECT_TRUE(lines.isEmpty());
}

} // namespace
