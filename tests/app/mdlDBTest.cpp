// The look-up helpers, the settings row and tarnvel.ini on a real home.

#include "app/mdlDB.h"
#include "HomeTest.h"
#include "app/Database.h"

namespace {

class DatabaseHelpers : public HomeTest {};

TEST_F(DatabaseHelpers, get_value_answers_null_where_nothing_is_found) {
    execSql(QStringLiteral("DELETE FROM zvbSys"));
    EXPECT_TRUE(GetValue(QStringLiteral("APP_Language"), QStringLiteral("zvbSys"), QString()).isNull());
    EXPECT_TRUE(
        GetValue(QStringLiteral("State_Name"), QStringLiteral("sysStates"), QStringLiteral("State_ID='XX'")).isNull());
    EXPECT_TRUE(GetValue(QStringLiteral("Gibtsnicht"), QStringLiteral("sysStates"), QString()).isNull());
    EXPECT_TRUE(messages.messages().isEmpty());
    EXPECT_THROW(GetValue(QStringLiteral("x"), QStringLiteral("Gibtsnicht"), QString()), VeridonError)
        << "a missing table is an error for the caller";
}

TEST_F(DatabaseHelpers, get_value_takes_the_first_matching_row_in_table_order) {
    EXPECT_EQ(GetValue(QStringLiteral("State_ID"), QStringLiteral("sysStates"), QString()).toString(),
              QStringLiteral("AT"));
    EXPECT_EQ(GetValue(QStringLiteral("State_ID"), QStringLiteral("sysStates"), QStringLiteral("State_XmlType='2'"))
                  .toString(),
              QStringLiteral("IS"));
}

TEST_F(DatabaseHelpers, count_rows_counts_all_matches) {
    EXPECT_EQ(CountRows(QStringLiteral("State_ID"), QStringLiteral("sysStates"), QStringLiteral("State_ID='XX'")), 0);
    EXPECT_EQ(CountRows(QStringLiteral("State_ID"), QStringLiteral("sysStates"), QStringLiteral("State_XmlType='2'")),
              3);
    EXPECT_EQ(CountRows(QStringLiteral("*"), QStringLiteral("sysLanguages"), QString()), 2);
    EXPECT_THROW(CountRows(QStringLiteral("*"), QStringLiteral("sysStates"), QStringLiteral("Unsinn ==")),
                 VeridonError);
}

TEST_F(DatabaseHelpers, conversions_treat_null_and_empty_as_zero) {
    EXPECT_EQ(Nz(QVariant(), QStringLiteral("EN")).toString(), QStringLiteral("EN"));
    EXPECT_EQ(Nz(QStringLiteral(""), QStringLiteral("EN")).toString(), QString());
    EXPECT_EQ(ToLong(QVariant()), 0);
    EXPECT_EQ(ToLong(QStringLiteral("")), 0);
    EXPECT_EQ(ToLong(QStringLiteral(" 4711 ")), 4711);
    EXPECT_EQ(ToLong(QStringLiteral("2,5")), 2); // halves go to the even neighbour
    EXPECT_EQ(ToLong(QStringLiteral("3.5")), 4);
    EXPECT_EQ(ToLong(true), -1);
    EXPECT_EQ(ToInteger(QStringLiteral("-32768")), -32768);
    EXPECT_THROW(ToInteger(QStringLiteral("40000")), VeridonError);
    EXPECT_THROW(ToLong(QStringLiteral("12a")), VeridonError);
    EXPECT_EQ(StripNulls(QStringLiteral("ab") + QChar(0) + QStringLiteral("c") + QChar(0)), QStringLiteral("abc"));
}

TEST_F(DatabaseHelpers, workstation_number_comes_from_the_settings) {
    EXPECT_EQ(GetKorrID(), 1);
    SetSysValue(QStringLiteral("APP_KorrID"), QVariant());
    EXPECT_EQ(GetKorrID(), 0);
    SetSysValue(QStringLiteral("APP_KorrID"), 7);
    EXPECT_EQ(GetKorrID(), 7);
}

TEST_F(DatabaseHelpers, settings_writers_store_texts_flags_and_two_columns) {
    const QString path = QStringLiteral("/srv/d'Artagnan/bilder");
    SetSysValue(QStringLiteral("APP_Bildpfad"), path);
    EXPECT_EQ(GetSysText(QStringLiteral("APP_Bildpfad")), path);
    SetSysValue(QStringLiteral("GUI_ToolBarEnabled"), false);
    EXPECT_FALSE(GetSysFlag(QStringLiteral("GUI_ToolBarEnabled"), true));
    SetSysValues(QStringLiteral("Scan_NrDesTages"), 1, QStringLiteral("Scan_TagDesJahres"), 319);
    EXPECT_EQ(ToInteger(GetSysValue(QStringLiteral("Scan_TagDesJahres"))), 319);
    EXPECT_EQ(ToInteger(GetSysValue(QStringLiteral("Scan_NrDesTages"))), 1);
    EXPECT_THROW(SetSysValue(QStringLiteral("Gibtsnicht"), 1), VeridonError);
}

class IniFile : public HomeTest {};

TEST_F(IniFile, reads_keys_without_regard_to_case_cuts_trailing_blanks_and_answers_empty_for_missing_keys) {
    EXPECT_EQ(GetIniValue(QStringLiteral("beleg"), QStringLiteral("TRENNER")), QStringLiteral(";"));
    home.writeFile(QStringLiteral("tarnvel.ini"),
                   "[Andere]\r\nTrenner=|\r\n[Beleg]\r\n; Kommentar\r\nTrenner =  ||   \r\nLeer=\r\n");
    EXPECT_EQ(GetIniValue(QStringLiteral("Beleg"), QStringLiteral("Trenner")), QStringLiteral("||"));
    EXPECT_EQ(GetIniValue(QStringLiteral("Andere"), QStringLiteral("Trenner")), QStringLiteral("|"));
    for (const auto& [section, key] :
         {std::pair{"Beleg", "Leer"}, std::pair{"Beleg", "Fehlt"}, std::pair{"Fehlt", "Trenner"}})
        EXPECT_EQ(GetIniValue(QLatin1String(section), QLatin1String(key)), QString()) << section << '/' << key;
    QFile::remove(home.path(QStringLiteral("tarnvel.ini")));
    EXPECT_EQ(GetIniValue(QStringLiteral("Beleg"), QStringLiteral("Trenner")), QString()) << "no file";
}

} // namespace
