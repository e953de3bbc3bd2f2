// SPDX-License-Identifier: Apache-2.0
// The key for the reader's candidates, as the operator uses it: a card imported with its
// alternatives file, F2 to the doubtful character, the key until the right letter shows, Enter.

#include "MainWindowFixture.h"

#include "admin/OperatorStats.h"
#include "app/TextFile.h"
#include "import/mdlImport.h"

#include <QStatusBar>

namespace {

using AlternativeKeyWindow = MainWindowTest;

TEST_F(AlternativeKeyWindow, the_key_pages_through_the_candidates_and_enter_takes_the_one_shown) {
    // Mrs Huber's card with the b of her name unreadable; the reader thought of h first, then b.
    home.writeFile("tarnvel.ini", encodeText("[Beleg]\nTrenner=;\n"));
    home.writeFile("import/zvscan.txt",
                   encodeText("31901001.tif;15.11.2026;5;0;0;;;;;;;EHIC  DE;DE;Hu\\fer;Maria;"
                              "03/07/1961     1236030761;AOK Bayern;80276000001234567890     31/12/2029\n"));
    home.writeFile("import/zvscan.alt", "31901001.tif\tT5_L3\t1\thb\r\n");
    ASSERT_EQ(ImportZVBWerte(home.path("import/zvscan.txt")), 1);
    writeImage("31901001.tif");
    SetSysValue("Cursor_F2", true);
    SetSysValue("Key_EnterLikeTab", true);
    open();
    EXPECT_EQ(background("NACHNAME"), errorColour);

    key(Qt::Key_F2);
    ASSERT_EQ(focusedName(), "NACHNAME");
    ASSERT_EQ(field("NACHNAME")->selectedText(), "?");
    EXPECT_EQ(window->statusBar()->currentMessage(),
              "Lesevorschläge: h, b (angezeigt: ?) - F6 zeigt den nächsten, Enter übernimmt.");

    const struct {
        const char* text;
        const char* selected;
    } pages[] = {{"Huher", "h"}, {"Huber", "b"}, {"Hu?er", "?"}, {"Huher", "h"}, {"Huber", "b"}};
    for (const auto& page : pages) {
        key(Qt::Key_F6);
        EXPECT_EQ(field("NACHNAME")->text(), page.text);
        EXPECT_EQ(field("NACHNAME")->selectedText(), page.selected);
        EXPECT_EQ(field("NACHNAME")->selectionStart(), 2);
    }
    EXPECT_EQ(window->statusBar()->currentMessage(),
              "Lesevorschläge: h, b (angezeigt: b) - F6 zeigt den nächsten, Enter übernimmt.");

    key(Qt::Key_Return);
    EXPECT_EQ(focusedName(), "VORNAME");
    EXPECT_EQ(field("NACHNAME")->text(), "Huber");
    EXPECT_EQ(background("NACHNAME"), okColour);
    EXPECT_EQ(recordWork().keystrokes, 7) << "F2, five times the key and Enter are the operator's work";

    // On a character the reader was sure of, the key does nothing.
    key(Qt::Key_F6);
    EXPECT_EQ(field("VORNAME")->text(), "Maria");
}

} // namespace
