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
        execSql(QStringLiteral("DELETE FROM sysTexts WHERE Language_ID=? AND Name=?"), {language, id});
        execSql(QStringLiteral("INSERT INTO sysTexts (Language_ID, Name, Text) VALUES (?,?,?)"), {language, id, text});
    }
};

TEST_F(Messages, text_is_looked_up_in_the_current_language) {
    EXPECT_EQ(GetLanguage(), QStringLiteral("DE"));
    EXPECT_EQ(GetText(Msg::AskDelete), QString::fromUtf8("Wollen Sie wirklich den aktuellen Datensatz verwerfen?"));
    SetSysValue(QStringLiteral("APP_Language"), QStringLiteral("EN"));
    EXPECT_EQ(GetLanguage(), QStringLiteral("DE")) << "kept until reloaded";
    ReloadLanguage();
    EXPECT_EQ(GetText(Msg::AskDelete), QStringLiteral("Do you really want to discard the current record?"));
}

TEST_F(Messages, language_falls_back_to_english_when_unset) {
    SetSysValue(QStringLiteral("APP_Language"), QVariant());
    EXPECT_EQ(GetLanguage(true), QStringLiteral("EN"));
    execSql(QStringLiteral("DELETE FROM zvbSys"));
    EXPECT_EQ(GetLanguage(true), QStringLiteral("EN"));
}

TEST_F(Messages, only_a_null_falls_back_to_the_default) {
    storeText(QStringLiteral("DE"), QStringLiteral("Msg_Leer"), QStringLiteral(""));
    storeText(QStringLiteral("DE"), QStringLiteral("Msg_Null"), QVariant());
    EXPECT_EQ(GetText(QStringLiteral("Msg_Leer"), QStringLiteral("Vorgabe")), QString());
    EXPECT_EQ(GetText(QStringLiteral("Msg_Null"), QStringLiteral("Vorgabe")), QStringLiteral("Vorgabe"));
    EXPECT_EQ(GetText(QStringLiteral("Msg_Fehlt"), QStringLiteral("Vorgabe")), QStringLiteral("Vorgabe"));
}

TEST_F(Messages, placeholders_fill_in_rising_order_so_the_tenth_shows_the_first_and_a_zero) {
    QVariantList values;
    for (const char* v : {"a", "b", "c", "d", "e", "f", "g", "h", "i", "j"})
        values << QString::fromLatin1(v);
    EXPECT_EQ(GetText(QStringLiteral("Msg_X"), QStringLiteral("%1-%2-%9-%10-%1"), values),
              QStringLiteral("a-b-i-a0-a"));
    EXPECT_EQ(GetText(QStringLiteral("Msg_X"), QStringLiteral("%1 und %2")), QStringLiteral("%1 und %2"));
    EXPECT_EQ(GetText(QStringLiteral("Msg_X"), QStringLiteral("%1 von %2"), {12, QStringLiteral("Stapel")}),
              QStringLiteral("12 von Stapel"));
}

TEST_F(Messages, backslash_n_becomes_a_line_break) {
    EXPECT_EQ(
        GetText(Msg::FelderArrayNoEntry, {QStringLiteral("nachname")}),
        QStringLiteral(
            "Problem beim Auslesen des zvbFelderArrays!\r\nDer gesuchte Eintrag 'nachname' ist nicht vorhanden."));
}

TEST_F(Messages, unreadable_database_gives_the_default_texts) {
    closeDatabase();
    QFile::remove(home.path(QStringLiteral("data.mdb")));
    EXPECT_EQ(GetText(Msg::AskDelete), Msg::AskDelete.text());
    EXPECT_EQ(GetLanguage(true), QStringLiteral("EN"));
}

TEST_F(Messages, caption_prefers_a_non_empty_translation) {
    storeText(QStringLiteral("DE"), QStringLiteral("frmMain_Caption"), QStringLiteral("Beleg-Erfassung"));
    storeText(QStringLiteral("DE"), QStringLiteral("frmMain_buttonOK_Caption"), QStringLiteral(""));
    EXPECT_EQ(GetCaption(QStringLiteral("Main"), QStringLiteral("frmMain_Caption")), QStringLiteral("Beleg-Erfassung"));
    EXPECT_EQ(GetCaption(QStringLiteral("OK"), QStringLiteral("frmMain_buttonOK_Caption")), QStringLiteral("OK"));
    EXPECT_EQ(GetCaption(QStringLiteral("\\n bleibt"), QStringLiteral("frmMain_Fehlt")), QStringLiteral("\\n bleibt"));
}

TEST_F(Messages, message_box_shows_product_name_and_returns_the_answer) {
    messages.queueAnswer(MsgBox::Yes);
    EXPECT_EQ(zvMsgBox(QStringLiteral("Frage?"), MsgBox::YesNo + MsgBox::Question), MsgBox::Yes);
    ASSERT_EQ(messages.messages().size(), 1);
    EXPECT_EQ(messages.messages()[0].title, QStringLiteral("Veridon"));
    EXPECT_EQ(messages.messages()[0].buttons, 36);
}

// The log is appended to, never shortened; a prompt's "\n" spread it over several lines.
TEST_F(Messages, log_lines_have_the_exact_format_and_encoding) {
    home.writeFile(QStringLiteral("zvMsgLog.txt"), "alt;eintrag;01.01.2026 08:00:00\r\n");
    zvMsgBox(QStringLiteral("Datei für Müller\\nzweite\\ndritte"), 64, QString());
    WriteLog(QStringLiteral("ImportZVBWerte()"), QStringLiteral("TARNVEL.INI ohne Eintrag"));
    const QByteArray expected = "alt;eintrag;01.01.2026 08:00:00\r\n"
                                "zvMsgBox;Datei f\xFCr M\xFCller\r\nzweite\r\ndritte#64#Veridon;15.11.2026 10:30:00\r\n"
                                "ImportZVBWerte();TARNVEL.INI ohne Eintrag;15.11.2026 10:30:00\r\n";
    EXPECT_EQ(home.readFile(QStringLiteral("zvMsgLog.txt")), expected);
}

TEST_F(Messages, unwritable_log_does_not_stop_the_message) {
    QDir().mkpath(home.path(QStringLiteral("zvMsgLog.txt"))); // a folder where the file should be
    EXPECT_FALSE(WriteLog(QStringLiteral("x"), QStringLiteral("y")));
    EXPECT_EQ(zvMsgBox(QStringLiteral("trotzdem"), 0), MsgBox::OK);
    EXPECT_TRUE(messages.saw(QStringLiteral("trotzdem")));
}

TEST_F(Messages, runtime_error_report_names_the_procedure) {
    const bool ok = RunReported(QStringLiteral("zvbFelderArray.GetX"),
                                [] { throw VeridonError(3265, QStringLiteral("Element nicht gefunden")); });
    EXPECT_FALSE(ok);
    ASSERT_EQ(messages.messages().size(), 1);
    EXPECT_EQ(messages.messages()[0].prompt,
              QStringLiteral("Laufzeitfehler in Funktion 'zvbFelderArray.GetX()'!\r\n#3265: Element nicht gefunden"));
    EXPECT_EQ(messages.messages()[0].buttons, MsgBox::Critical);
}

// The check engine's texts are looked up like every other message.
TEST_F(Messages, every_message_id_is_translated_in_both_languages) {
    QVector<MessageText> texts = allMessageTexts();
    for (const MessageText& m : CheckMsg::all)
        texts << m;
    for (const MessageText& m : texts) {
        for (const char* language : {"DE", "EN"}) {
            const QString condition =
                QStringLiteral("Language_ID='%1' AND Name=%2").arg(QLatin1String(language), sqlQuote(m.idText()));
            EXPECT_EQ(CountRows(QStringLiteral("Text"), QStringLiteral("sysTexts"), condition), 1)
                << m.id << " " << language;
        }
        const QString german = GetValue(QStringLiteral("Text"), QStringLiteral("sysTexts"),
                                        QStringLiteral("Language_ID='DE' AND Name=%1").arg(sqlQuote(m.idText())))
                                   .toString();
        EXPECT_EQ(german, m.text()) << m.id;
    }
}

} // namespace
