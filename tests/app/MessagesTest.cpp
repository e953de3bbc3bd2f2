// SPDX-License-Identifier: Apache-2.0
// Texts by id and language, the message routine and the exact bytes of the message log.

#include "HomeTest.h"
#include "app/Database.h"
#include "app/mdlDB.h"
#include "app/mdlMessages.h"
#include "check/CheckMessages.h"

namespace {

class Messages : public HomeTest {
protected:
    void SetUp() override { ReloadLanguage(); }
    void TearDown() override { ReloadLanguage(); }

    void storeText(const QString& language, const QString& id, const QVariant& text) {
        execSql("DELETE FROM sysTexts WHERE Language_ID=? AND Name=?", {language, id});
        execSql("INSERT INTO sysTexts (Language_ID, Name, Text) VALUES (?,?,?)", {language, id, text});
    }
};

// Only a null falls back to the default; a caption prefers a non-empty translation; the texts follow
// the current language.
TEST_F(Messages, fallbacks_placeholders_and_the_current_language) {
    storeText("DE", "Msg_Leer", "");
    storeText("DE", "Msg_Null", QVariant());
    EXPECT_EQ(GetText("Msg_Leer", "Vorgabe"), QString());
    EXPECT_EQ(GetText("Msg_Null", "Vorgabe"), "Vorgabe");
    EXPECT_EQ(GetText("Msg_Fehlt", "Vorgabe"), "Vorgabe");
    storeText("DE", "frmMain_Caption", "Beleg-Erfassung");
    storeText("DE", "frmMain_buttonOK_Caption", "");
    EXPECT_EQ(GetCaption("Main", "frmMain_Caption"), "Beleg-Erfassung");
    EXPECT_EQ(GetCaption("OK", "frmMain_buttonOK_Caption"), "OK");
    EXPECT_EQ(GetCaption("\\n bleibt", "frmMain_Fehlt"), "\\n bleibt");

    // Placeholders fill in rising order, so the tenth shows the first and a zero.
    QVariantList values;
    for (const char* v : {"a", "b", "c", "d", "e", "f", "g", "h", "i", "j"})
        values << QString::fromLatin1(v);
    EXPECT_EQ(GetText("Msg_X", "%1-%2-%9-%10-%1", values), "a-b-i-a0-a");
    EXPECT_EQ(GetText("Msg_X", "%1 und %2"), "%1 und %2");
    EXPECT_EQ(GetText("Msg_X", "%1 von %2", {12, "Stapel"}), "12 von Stapel");

    EXPECT_EQ(GetLanguage(), "DE");
    EXPECT_EQ(GetText(Msg::AskDelete), QString::fromUtf8("Wollen Sie wirklich den aktuellen Datensatz verwerfen?"));
    SetSysValue("APP_Language", "EN");
    EXPECT_EQ(GetLanguage(), "DE") << "kept until reloaded";
    ReloadLanguage();
    EXPECT_EQ(GetText(Msg::AskDelete), "Do you really want to discard the current record?");
    // Without a language the texts are English.
    SetSysValue("APP_Language", QVariant());
    EXPECT_EQ(GetLanguage(true), "EN");
    execSql("DELETE FROM zvbSys");
    EXPECT_EQ(GetLanguage(true), "EN");
    // An unreadable database gives the default texts.
    closeDatabase();
    QFile::remove(home.path("data.mdb"));
    EXPECT_EQ(GetText(Msg::AskDelete), Msg::AskDelete.text());
}

// The log is appended to, never shortened; a prompt's "\n" spread it over several lines.
TEST_F(Messages, log_lines_have_the_exact_format_and_an_unwritable_log_does_not_stop_the_message) {
    home.writeFile("zvMsgLog.txt", "alt;eintrag;01.01.2026 08:00:00\r\n");
    zvMsgBox("Datei für Müller\\nzweite\\ndritte", 64, QString());
    WriteLog("ImportZVBWerte()", "TARNVEL.INI ohne Eintrag");
    const QByteArray expected = "alt;eintrag;01.01.2026 08:00:00\r\n"
                                "zvMsgBox;Datei f\xFCr M\xFCller\r\nzweite\r\ndritte#64#Veridon;15.11.2026 10:30:00\r\n"
                                "ImportZVBWerte();TARNVEL.INI ohne Eintrag;15.11.2026 10:30:00\r\n";
    EXPECT_EQ(home.readFile("zvMsgLog.txt"), expected);
    ASSERT_EQ(messages.messages().size(), 1);
    EXPECT_EQ(messages.messages()[0].title, "Veridon") << "the product name when none is given";
    EXPECT_EQ(messages.messages()[0].prompt, "Datei für Müller\r\nzweite\r\ndritte");
    // A log that cannot be written does not stop the message.
    QFile::remove(home.path("zvMsgLog.txt"));
    QDir().mkpath(home.path("zvMsgLog.txt"));
    EXPECT_FALSE(WriteLog("x", "y"));
    EXPECT_EQ(zvMsgBox("trotzdem", 0), MsgBox::OK);
    EXPECT_TRUE(messages.saw("trotzdem"));
}

// The check engine's texts are looked up like every other message.
TEST_F(Messages, every_message_id_is_translated_in_both_languages) {
    QVector<MessageText> texts = allMessageTexts();
    for (const MessageText& m : CheckMsg::all)
        texts << m;
    // One English and one German row each, the German one holding the text the code falls back to.
    for (const MessageText& m : texts) {
        const QString name = "Name=" + sqlQuote(m.idText());
        EXPECT_EQ(CountRows("Text", "sysTexts", name), 2) << m.id;
        EXPECT_EQ(CountRows("Text", "sysTexts", name + " AND Language_ID='EN'"), 1) << m.id;
        EXPECT_EQ(GetValue("Text", "sysTexts", name + " AND Language_ID='DE'").toString(), m.text()) << m.id;
    }
}

} // namespace
