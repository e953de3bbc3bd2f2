// SPDX-License-Identifier: Apache-2.0
// The look-up helpers, the settings row and tarnvel.ini on a real home; the settings table against
// the zvbSys row: one entry per column with the column's type, the table's defaults for unset
// settings, and every read going to the row.

#include "app/mdlDB.h"
#include "HomeTest.h"
#include "app/ColumnInfo.h"
#include "app/Database.h"
#include "app/Errors.h"
#include "app/PoolRouting.h"
#include "app/Settings.h"

namespace {

using DatabaseHelpers = HomeTest;

// GetValue answers the first matching row in table order, null where nothing is found; a missing
// table is an error for the caller. CountRows counts them all.
TEST_F(DatabaseHelpers,
       get_value_takes_the_first_matching_row_or_null_count_rows_counts_all_and_null_converts_to_zero) {
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

    // Conversions treat null and empty as zero.
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

using SettingsTable = HomeTest;

TEST_F(SettingsTable, has_every_column_of_zvbSys_once_with_the_columns_type) {
    const QMap<SettingType, DaoType> columnType{{SettingType::Text, DaoType::Text},
                                                {SettingType::Flag, DaoType::Boolean},
                                                {SettingType::Integer, DaoType::Integer},
                                                {SettingType::Long, DaoType::Long},
                                                {SettingType::DateTime, DaoType::Date}};
    // Each side as "name type", sorted: a missing, extra, doubled or mistyped entry shows as a difference.
    QStringList entries, columns;
    for (const SettingInfo& info : settingTable)
        entries << QString("%1 %2")
                       .arg(QString::fromLatin1(info.name).toLower())
                       .arg(int(columnType.value(info.type, DaoType::Binary)));
    for (const ColumnInfo& column : tableColumns("zvbSys"))
        columns << QString("%1 %2").arg(column.name.toLower()).arg(int(column.type));
    entries.sort();
    columns.sort();
    EXPECT_EQ(entries, columns);
}

// An unset setting reads as the table's default, in the setting's type; a written one as written,
// at once (nothing is kept between reads, so a change made elsewhere counts at the next read).
TEST_F(SettingsTable, unset_settings_take_their_default_and_every_read_goes_to_the_row) {
    for (const SettingInfo& info : settingTable)
        SetSysValue(QLatin1String(info.name), QVariant());
    EXPECT_EQ(
        (QVariantList{setting<Setting::APP_Language>(), setting<Setting::GUI_FocusField>(), setting<Setting::Key_OK>(),
                      setting<Setting::Report_FontName>(), setting<Setting::Report_PrinterUseDefault>(),
                      setting<Setting::GUI_StatusBarEnabled>(), setting<Setting::Backup_Bilder>(),
                      setting<Setting::Key_EnterLikeTab>(), setting<Setting::Scan_NrDesTages>(),
                      setting<Setting::F2_WieWeitSuchen>(), setting<Setting::Backup_Enabled>(),
                      setting<Setting::APP_LastOpened>(), setting<Setting::APP_Bildpfad>()}),
        (QVariantList{"EN", "BARCODE", "F10", "Courier New", true, true, false, false, 1, 0, "0", QDateTime(), ""}));

    setSetting<Setting::Report_PrinterUseDefault>(false);
    setSetting<Setting::Scan_NrDesTages>(qint16(26));
    setSetting<Setting::Key_F3>(3);
    setSetting<Setting::Report_FontName>(QStringLiteral("Liberation Mono"));
    EXPECT_EQ((QVariantList{setting<Setting::Report_PrinterUseDefault>(), setting<Setting::Scan_NrDesTages>(),
                            setting<Setting::Key_F3>(), setting<Setting::Report_FontName>()}),
              (QVariantList{false, 26, 3, "Liberation Mono"}));
    // Written past the table (as another workstation or the options dialog does): read at once.
    SetSysValue("Report_FontName", "DejaVu Sans Mono");
    EXPECT_EQ(setting<Setting::Report_FontName>(), "DejaVu Sans Mono");
    // A number column holding text is no number: the reader says so instead of reading 0.
    SetSysValue("Backup_HistoryDays", "viele");
    EXPECT_THROW(setting<Setting::Backup_HistoryDays>(), VeridonError);
}

} // namespace
