// SPDX-License-Identifier: Apache-2.0
// The text rules of the hand-over that a whole export does not reach easily.

#include "export/ExportTemplate.h"
#include "QtPrinters.h"

#include <gtest/gtest.h>

namespace {

TEST(ExportText, only_lines_of_blanks_are_removed_and_a_last_piece_of_two_characters_goes_too) {
    EXPECT_EQ(RemoveEmptyLines("a\r\n   \r\n\r\nb\r\n"), "a\r\nb\r\n");
    EXPECT_EQ(RemoveEmptyLines("a\r\n \t \r\n"), "a\r\n \t \r\n") << "a tab is no blank";
    EXPECT_EQ(RemoveEmptyLines("x\r\nab"), "x\r\n") << "two characters without a line end count as a blank line";
    EXPECT_EQ(RemoveEmptyLines("x\r\nabc"), "x\r\nabc");
    EXPECT_EQ(RemoveEmptyLines("a\nb\r\n"), "a\nb\r\n") << "a lone LF does not end a piece";
    EXPECT_EQ(RemoveEmptyLines(""), "");
}

TEST(ExportText, characters_beyond_windows_1252_become_one_reference_each) {
    QString dropped;
    EXPECT_EQ(XmlSafeText(QString::fromUtf8("Ł\U0001D11E\u0085\u20AC\uFFFF"), &dropped), "&#321;&#119070;&#133;\u20AC")
        << "a pair of surrogates is one character; the euro sign is Windows-1252";
    EXPECT_EQ(dropped, "U+FFFF");
}

} // namespace
