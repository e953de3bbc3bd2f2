// SPDX-License-Identifier: Apache-2.0
// The look-up helpers, the settings row and tarnvel.ini on a real home.

#include "app/mdlDB.h"
#include "HomeTest.h"
#include "app/Database.h"
#include "app/PoolRouting.h"

namespace {

using DatabaseHelpers = HomeTest;

// GetValue answers the first matching row in table order, null where nothing is found; a missing
// table is an error for the caller. CountRows counts them all.
TEST_F(DatabaseHelpers, get_value_takes_the_first_matching_row_or_null_and_count_rows_counts_all) {
    EXPECT_EQ(GetValue("State_ID", "sysStates", QString()).toString(), "AT");
    EXPECT_EQ(GetValue("State_ID", "sysStates", "State_XmlType='2'").toString(), "IS");
    EXPECT_TRUE(GetValue("State_Name", "sysStates", "State_ID='XX'").isNull());
    EXPECT_TRUE(GetValue("Gibtsnicht", "sysStates", QString()).isNull());
    EXPECT_THROW(GetValue("x", "Gibtsnicht", QString()), VeridonError);
    EXPECT_EQ(CountRows("State_ID", "sysStates", "State_ID='XX'"), 0);
    EXPECT_EQ(CountRows("State_ID", "sysStates", "State_XmlType='2'"), 3);
    EXPECT_THROW(CountRows("*", "sysStates", "Unsinn =="), VeridonError);
    execSql("DELETE FROM zvbSys");
    EXPECT_TRUE(GetValue("APP_Language", "zvbSys", QString()).isNull());
    EXPECT_TRUE(messages.messages().isEmpty());
}

TEST_F(DatabaseHelpers, conversions_treat_null_and_empty_as_zero) {
    EXPECT_EQ(Nz(QVariant(), "EN").toString(), "EN");
    EXPECT_EQ(Nz("", "EN").toString(), QString());
    EXPECT_EQ(ToLong(QVariant()), 0);
    EXPECT_EQ(ToLong(""), 0);
    EXPECT_EQ(ToLong(" 4711 "), 4711);
    EXPECT_EQ(ToLong("2,5"), 2); // halves go to the even neighbour
    EXPECT_EQ(ToLong("3.5"), 4);
    EXPECT_EQ(ToLong(true), -1);
    EXPECT_EQ(ToInteger("-32768"), -32768);
    EXPECT_THROW(ToInteger("40000"), VeridonError);
    EXPECT_THROW(ToLong("12a"), VeridonError);
    EXPECT_EQ(StripNulls(QString("ab") + QChar(0) + "c" + QChar(0)), "abc");
}

TEST_F(DatabaseHelpers, a_statement_joining_workstation_and_pool_tables_is_refused_on_every_workstation) {
    try {
        execSql("SELECT APP_KorrID, LfdNr FROM zvbSys, zvbWerte");
        FAIL() << "no database of a pool workstation holds both";
    } catch (const VeridonError& e) {
        EXPECT_EQ(e.number(), MixedStatementError);
        EXPECT_TRUE(e.description().startsWith("Programmfehler")) << e.description().toStdString();
    }
    EXPECT_EQ(CountRows("*", "zvbSys", "APP_Language <> 'zvbWerte'"), 1) << "a name inside a text is no table";
}

using IniFile = HomeTest;

TEST_F(IniFile, reads_keys_without_regard_to_case_cuts_trailing_blanks_and_answers_empty_for_missing_keys) {
    EXPECT_EQ(GetIniValue("beleg", "TRENNER"), ";");
    home.writeFile("tarnvel.ini", "[Andere]\r\nTrenner=|\r\n[Beleg]\r\n; Kommentar\r\nTrenner =  ||   \r\nLeer=\r\n");
    EXPECT_EQ(GetIniValue("Beleg", "Trenner"), "||");
    EXPECT_EQ(GetIniValue("Andere", "Trenner"), "|");
    for (const auto& [section, key] :
         {std::pair{"Beleg", "Leer"}, std::pair{"Beleg", "Fehlt"}, std::pair{"Fehlt", "Trenner"}})
        EXPECT_EQ(GetIniValue(QLatin1String(section), QLatin1String(key)), QString()) << section << '/' << key;
    QFile::remove(home.path("tarnvel.ini"));
    EXPECT_EQ(GetIniValue("Beleg", "Trenner"), QString()) << "no file";
}

} // namespace
