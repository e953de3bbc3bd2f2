// SPDX-License-Identifier: Apache-2.0
// The export pass as the receiving side and the operator see it: the XML files it writes from the
// home's template, which records it takes, what it leaves in the day's backup, and what happens when
// it cannot write; and the text rules of the hand-over that a whole export does not reach easily.

#include "ExportFixture.h"
#include "QtPrinters.h"
#include "app/Progress.h"
#include "app/TextFile.h"
#include "export/ExportTemplate.h"

namespace {

class RecordingProgress : public Progress {
public:
    RecordingProgress() { setAppProgress(this); }
    ~RecordingProgress() override { setAppProgress(nullptr); }
    void status(const QString& text) override { texts << text; }
    void progress(qint64 done, qint64 total) override { last = {done, total}; }
    QStringList texts;
    QPair<qint64, qint64> last{-1, -1};
};

using Export = ExportFixture;

// Placeholders in attributes stand bare, the others become elements; lines end in CR LF. The day's
// backup keeps copies of the XML files and images and one text line per record in exp.txt.
TEST_F(Export, every_placeholder_of_the_homes_template_is_filled_and_the_backup_keeps_copies_and_a_line) {
    acceptedForm(0);
    acceptedForm(1, {{"Fehlerhaft", "0000000000"}, {"Korrigiert", 0}});
    EXPECT_TRUE(ExportZVBWerte());
    EXPECT_TRUE(messages.messages().isEmpty()) << messages.prompts().join("|").toStdString();
    EXPECT_EQ(exported("31901001.xml"),
              "<?xml version=\"1.0\" encoding=\"windows-1252\"?>\r\n"
              "<EHIC_Form version=\"2.13\" date=\"2026-11-15\">\r\n"
              "  <Form_identifier>E-111N</Form_identifier>\r\n"
              "  <Issuing_member_state>AT</Issuing_member_state>\r\n"
              "  <Case_Identifier>1</Case_Identifier>\r\n"
              "  <Holder>\r\n"
              "    <Name>Huber</Name>\r\n"
              "    <Given_names>Maria</Given_names>\r\n"
              "    <Date_of_birth>1961-07-03</Date_of_birth>\r\n"
              "    <Personal_identification_number>1236030761</Personal_identification_number>\r\n"
              "  </Holder>\r\n"
              "  <Card>\r\n"
              "    <Identification_number_of_the_institution>1100 - OEGK</Identification_number_of_the_institution>\r\n"
              "    <Identification_number_of_the_card>80040001234567890123</Identification_number_of_the_card>\r\n"
              "    <Expiry_date>2029-12-31</Expiry_date>\r\n"
              "  </Card>\r\n"
              "</EHIC_Form>\r\n"
              "\r\n");
    EXPECT_EQ(records(), 0) << "the exported records are removed";
    EXPECT_FALSE(exists("images/31901001.tif")) << "and their images deleted";

    // Every column in table order but LfdNr and Workflow_*: the 13 raw lines and the two offsets
    // are empty here, Korrigiert and Neuimport are yes/no.
    const QString empty15(15, QLatin1Char(','));
    EXPECT_EQ(QString::fromLatin1(home.readFile(day("exportdata/exp.txt"))),
              "31901001.tif,15.11.2026,4" + empty15 +
                  ",E-111N,AT,Huber,Maria,03.07.1961,1236030761,1100 - OEGK,80040001234567890123,31.12.2029,,Wahr,\r\n"
                  "31901002.tif,15.11.2026,4" +
                  empty15 +
                  ",E-111N,NL,de Vries,Jan Pieter,22.02.1985,123456782,3311 - Zilveren Kruis,80528000012345678901,"
                  "15.06.2028,0000000000,Falsch,\r\n");

    acceptedForm(2);
    ExportZVBWerte();
    EXPECT_EQ(home.readFile(day("exportdata/exp.txt")).count("\r\n"), 3) << "a later pass of the same day appends";
}

TEST_F(Export, empty_and_unknown_values_follow_the_hand_over_format) {
    acceptedForm(1, {{"VORNAME", ""}, {"GEBDAT", QVariant()}, {"STATE", "XX"}, {"SCANDAT", ""}});
    acceptedForm(2, {{"VORNAME", QVariant()}, {"CARD_EXPIRY", ""}, {"STATE", QVariant()}});
    ExportZVBWerte();

    // No Given_names line and no line of blanks in its place, "--" for an empty date, 5 for an unknown
    // or null state, and no element for an empty one.
    const QString first = exported("31901002.xml"), second = exported("31901003.xml");
    for (const char* part :
         {"date=\"--\"", "<Case_Identifier>5</Case_Identifier>", "    <Name>de Vries</Name>\r\n    <Date_of_birth>--<"})
        EXPECT_TRUE(first.contains(part)) << part;
    EXPECT_TRUE(second.contains("<Expiry_date>--</Expiry_date>") && second.contains("<Case_Identifier>5<"));
    EXPECT_FALSE(second.contains("Issuing_member_state"));
    for (const QString& text : {first, second})
        EXPECT_FALSE(text.contains("Given_names") || text.contains("\r\n    \r\n")) << text.toStdString();
}

// A date leaves turned around by its fixed positions; one that cannot be read there would leave
// wrong ("310327" as "0327-32-31"). Such a record waits with its image, named in one message and in
// the log, while the others leave; separators are never looked at and an empty date is "--".
TEST_F(Export, a_record_whose_date_cannot_be_read_waits_and_the_others_leave) {
    const struct {
        const char* column;
        const char* value;
        bool leaves;
    } cases[] = {
        {"CARD_EXPIRY", "310327", false}, {"GEBDAT", "31.02.1961", false},     {"SCANDAT", "1\".11.2026", false},
        {"GEBDAT", "03.07.61", false},    {"CARD_EXPIRY", "31.12.29 ", false}, {"GEBDAT", "03/07/1961", true},
        {"CARD_EXPIRY", "", true},
    };
    for (int i = 0; i < int(std::size(cases)); ++i)
        acceptedForm(i, {{cases[i].column, cases[i].value}});
    ExportZVBWerte();

    ASSERT_EQ(messages.messages().size(), 1) << messages.prompts().join("|").toStdString();
    EXPECT_EQ(messages.messages().first().buttons, MsgBox::Critical);
    EXPECT_TRUE(
        messages.saw("5 Beleg(e) nicht exportiert: ein Datum kann nicht gelesen werden (erwartet TT.MM.JJJJ)."));
    const QString log = decodeText(home.readFile("zvMsgLog.txt"));
    for (int i = 0; i < int(std::size(cases)); ++i) {
        const auto& c = cases[i];
        SCOPED_TRACE(c.value);
        const QString image = QString("3190100%1.tif").arg(i + 1);
        const QString line = QString("Nr. %1 (%2): %3 '%4'").arg(i + 1).arg(image, c.column, c.value);
        EXPECT_EQ(exists("export/" + image.chopped(4) + ".xml"), c.leaves);
        EXPECT_EQ(exists("images/" + image), !c.leaves);
        EXPECT_EQ(CountRows("*", "zvbWerte", QString("LfdNr=%1 AND Workflow_Status=40").arg(i + 1)), c.leaves ? 0 : 1);
        EXPECT_EQ(messages.saw(line), !c.leaves) << messages.prompts()[0].toStdString();
        EXPECT_EQ(log.contains(QString("Beleg #%1 (%2) nicht exportiert").arg(i + 1).arg(image)), !c.leaves);
    }
    EXPECT_TRUE(exported("31901006.xml").contains("<Date_of_birth>1961-07-03</Date_of_birth>"));
    EXPECT_TRUE(exported("31901007.xml").contains("<Expiry_date>--</Expiry_date>"));
}

// Cards come from every EU state: a name Windows-1252 cannot hold leaves as character references
// and reads back exactly; control characters and the bytes Windows-1252 leaves undefined (which a
// scanner's result file can carry) would make the file unreadable, so they are dropped and logged.
TEST_F(Export, names_of_every_alphabet_read_back_exactly_and_forbidden_characters_are_dropped_and_logged) {
    acceptedForm(0, {{"NACHNAME", "Wałęsa"}, {"VORNAME", "Łukasz Żółć"}});
    acceptedForm(1, {{"NACHNAME", "Ørsted"}, {"VORNAME", "Hans\fChristian"}});
    acceptedForm(2, {{"NACHNAME", "Παπαδοπούλου"}, {"VORNAME", "Ελένη"}}); // as typed from the Greek line
    acceptedForm(4, {{"NACHNAME", "Müller & Söhne <GmbH>"}, {"VORNAME", "Jürgen \"Jupp\" O'Neill"}});
    acceptedForm(
        3,
        {{"NACHNAME", "Sch\vmid\x01t\x1b"},
         {"VORNAME", QString("J%1o%2s%3e%4f%5").arg(QChar(0x81), QChar(0x8D), QChar(0x8F), QChar(0x90), QChar(0x9D))}});
    ExportZVBWerte();
    EXPECT_TRUE(messages.messages().isEmpty()) << messages.prompts().join("|").toStdString();

    // Name and Given_names of 31901001.xml to 31901005.xml.
    const QStringList expected[] = {{"Wałęsa", "Łukasz Żółć"},
                                    {"Ørsted", "HansChristian"},
                                    {"Παπαδοπούλου", "Ελένη"},
                                    {"Schmidt", "Josef"},
                                    {"Müller & Söhne <GmbH>", "Jürgen \"Jupp\" O'Neill"}};
    for (int i = 0; i < 5; ++i) {
        const QByteArray bytes = home.readFile(QString("export/3190100%1.xml").arg(i + 1));
        EXPECT_EQ(elementTexts(bytes, "Name") + elementTexts(bytes, "Given_names"), expected[i]) << i + 1;
    }
    EXPECT_TRUE(home.readFile("export/31901001.xml").contains("<Name>Wa&#322;&#281;sa</Name>"));
    EXPECT_TRUE(home.readFile("export/31901002.xml").contains("<Name>\xD8rsted</Name>")) << "Ø is Windows-1252";
    EXPECT_TRUE(home.readFile("export/31901005.xml").contains("<Name>M\xfcller &amp; S\xf6hne &lt;GmbH&gt;</Name>"));
    const QString log = decodeText(home.readFile("zvMsgLog.txt"));
    EXPECT_TRUE(log.contains("Beleg #2 (31901002.xml): in XML unzulässige Zeichen entfernt: U+000C;"))
        << log.toStdString();
    EXPECT_TRUE(log.contains("U+000B, U+0001, U+001B, U+0081, U+008D, U+008F, U+0090, U+009D"));
}

TEST_F(Export,
       records_in_20_or_40_leave_in_running_number_order_one_left_in_41_is_finished_and_names_lose_the_last_dot) {
    RecordingProgress progress;
    acceptedForm(0, {{"Workflow_Status", 10}});
    EXPECT_TRUE(ExportZVBWerte());
    EXPECT_TRUE(QDir(home.path("export")).isEmpty());
    EXPECT_TRUE(progress.texts.isEmpty()) << "nothing ready: nothing written, no progress";
    acceptedForm(1);
    acceptedForm(2, {{"Workflow_Status", 30}});
    acceptedForm(3, {{"Workflow_Status", 20}});
    acceptedForm(4, {{"Workflow_Status", 41}});
    ExportZVBWerte();

    EXPECT_EQ(QDir(home.path("export")).entryList(QDir::Files | QDir::Hidden),
              (QStringList{"31901002.xml", "31901004.xml"}));
    EXPECT_EQ(CountRows("*", "zvbWerte", "Workflow_Status IN (10, 30)"), 2) << "the others stay as they were";
    EXPECT_EQ(records(), 2);
    EXPECT_FALSE(exists("images/31901005.tif"));
    EXPECT_EQ(progress.texts,
              (QStringList{"Export von korrigierten Daten: 0", "Export von korrigierten Daten: 1",
                           "Export von korrigierten Daten: 2", "Export von korrigierten Daten: 3", ""}));
    EXPECT_EQ(progress.last, (QPair<qint64, qint64>{3, 3}));
    EXPECT_TRUE(messages.messages().isEmpty());

    // The same base name from two folders or extensions gives one file, the later record wins; only
    // the last dot of the name is cut.
    acceptedForm(0, {{"BMPName", "links/0815_0001.tif"}, {"NACHNAME", "Erster"}});
    acceptedForm(1, {{"BMPName", "rechts\\0815_0001.bmp"}, {"NACHNAME", "Zweiter"}});
    acceptedForm(2, {{"BMPName", "31901003.v2.tif"}});
    acceptedForm(3, {{"BMPName", "ordner.neu/ohnepunkt"}});
    ExportZVBWerte();
    EXPECT_EQ(elementTexts(home.readFile("export/0815_0001.xml"), "Name"), QStringList{"Zweiter"});
    EXPECT_EQ(QDir(home.path("export")).entryList(QDir::Files),
              (QStringList{"0815_0001.xml", "31901002.xml", "31901003.v2.xml", "31901004.xml", "ohnepunkt.xml"}));
    EXPECT_EQ(records(), 2);
}

// Without the setting nothing is written anywhere; a missing export folder keeps the record in its
// state with its image, named in the message.
TEST_F(Export, a_record_that_cannot_be_written_keeps_its_state_and_image) {
    SetSysValue("Export_Pfad", QVariant());
    acceptedForm(0);
    ExportZVBWerte();
    EXPECT_TRUE(messages.saw("Export_Pfad"));
    SetSysValue("Export_Pfad", home.path("fehlt"));
    messages.clear();
    EXPECT_TRUE(ExportZVBWerte());
    ASSERT_EQ(messages.messages().size(), 1);
    EXPECT_TRUE(messages.saw("ExportRecord_XML()"));
    EXPECT_TRUE(messages.saw(home.path("fehlt/31901001.xml")));
    EXPECT_EQ(messages.messages().first().buttons, MsgBox::Critical);
    EXPECT_EQ(CountRows("*", "zvbWerte", "Workflow_Status=40"), 1);
    EXPECT_TRUE(exists("images/31901001.tif"));
}

// The template is checked once, before any record is touched: a missing, empty or malformed one
// stops the pass with one message, and records and images stay.
TEST_F(Export, an_unusable_template_stops_the_pass_before_any_record_is_touched) {
    const struct {
        const char* name;
        QByteArray bytes; // empty: no file
        const char* reason;
    } cases[] = {
        {"missing", "", "kann nicht gelesen werden"},
        {"empty", "  \r\n\r\n", "Die Vorlage ist leer."},
        {"unclosed element", "<Uebergabe>\r\n  %NACHNAME%\r\n", "kein gültiges XML"},
        {"text only", "%NACHNAME%;%VORNAME%\r\n", "kein gültiges XML"},
        // Parsed with sample values, but a record's values would break them: a name holding "--"
        // in a comment, an empty name leaving no element at all, a date inside a name.
        {"placeholder in a comment", "<Uebergabe>\r\n  <!-- %NACHNAME% -->\r\n</Uebergabe>\r\n",
         "Der Platzhalter %NACHNAME% steht an einer Stelle"},
        {"only a placeholder", "%NACHNAME%\r\n", "kein gültiges XML, wenn Werte leer sind"},
        {"date in a name", "<Uebergabe d%FORM_DATE%=\"1\"/>\r\n", "Der Platzhalter %FORM_DATE%"},
    };
    acceptedForm(0);
    acceptedForm(1);
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        QFile::remove(home.path("default.xml"));
        if (!c.bytes.isEmpty())
            home.writeFile("default.xml", c.bytes);
        messages.clear();
        ExportZVBWerte();
        ASSERT_EQ(messages.messages().size(), 1);
        EXPECT_TRUE(messages.saw("ExportZVBWerte()"));
        EXPECT_TRUE(messages.saw("default.xml"));
        EXPECT_TRUE(messages.saw(c.reason)) << messages.prompts().join("|").toStdString();
        EXPECT_EQ(CountRows("*", "zvbWerte", "Workflow_Status=40"), 2);
        EXPECT_TRUE(QDir(home.path("export")).isEmpty());
        EXPECT_TRUE(exists("images/31901001.tif") && exists("images/31901002.tif"));
    }
}

// Whatever the backup settings keep, the image and the record go, also when the image is missing
// already (it counts as removed, without a message). xmlCopy: the folder of the XML copy ("" the
// home itself, nullptr none).
TEST_F(Export, each_setting_keeps_its_copies_and_image_and_record_always_go) {
    home.writeFile("keinordner", "eine Datei, kein Ordner");
    const struct {
        const char* column;
        QVariant value;
        bool imageMissing;
        const char* xmlCopy;
        bool imageCopy, expLine;
    } cases[] = {
        {"Backup_Enabled", "0", false, nullptr, false, false},
        {"Backup_Bilder", false, false, "backup/261115/exportdata/", false, true},
        {"Backup_Pfad", home.path("keinordner"), false, "", false, false},
        {"Backup_Enabled", "1", true, "backup/261115/exportdata/", false, true},
    };
    for (int i = 0; i < int(std::size(cases)); ++i) {
        const auto& c = cases[i];
        SCOPED_TRACE(c.column);
        const QVariant before = GetSysValue(c.column);
        SetSysValue(c.column, c.value);
        acceptedForm(i);
        const QString image = QString("3190100%1.tif").arg(i + 1);
        const QString xml = image.chopped(4) + ".xml";
        if (c.imageMissing)
            QFile::remove(home.path("images/" + image));
        ExportZVBWerte();
        SetSysValue(c.column, before);
        EXPECT_TRUE(messages.messages().isEmpty()) << messages.prompts().join("|").toStdString();
        EXPECT_TRUE(exists("export/" + xml));
        if (c.xmlCopy) {
            EXPECT_EQ(home.readFile(c.xmlCopy + xml), home.readFile("export/" + xml));
        }
        EXPECT_EQ(exists(day("exportdata/" + xml)), c.xmlCopy && *c.xmlCopy);
        EXPECT_EQ(exists(day("images/" + image)), c.imageCopy);
        EXPECT_EQ(home.readFile(day("exportdata/exp.txt")).contains(image.toLatin1()), c.expLine);
        EXPECT_FALSE(exists("images/" + image));
        EXPECT_EQ(records(), 0);
    }
}

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
