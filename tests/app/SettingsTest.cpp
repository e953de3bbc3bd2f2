// SPDX-License-Identifier: Apache-2.0
// The settings table against the zvbSys row of a real home: one entry per column with the column's
// type, the table's defaults for unset settings, and every read going to the row.

#include "app/Settings.h"
#include "HomeTest.h"
#include "app/ColumnInfo.h"
#include "app/Errors.h"
#include "app/mdlDB.h"

#include <QSet>

namespace {

using SettingsTable = HomeTest;

TEST_F(SettingsTable, has_every_column_of_zvbSys_once_with_the_columns_type) {
    const QMap<SettingType, DaoType> columnType{{SettingType::Text, DaoType::Text},
                                                {SettingType::Flag, DaoType::Boolean},
                                                {SettingType::Integer, DaoType::Integer},
                                                {SettingType::Long, DaoType::Long},
                                                {SettingType::DateTime, DaoType::Date}};
    QSet<QString> columns;
    for (const ColumnInfo& column : tableColumns("zvbSys")) {
        columns.insert(column.name.toLower());
        int entries = 0;
        for (const SettingInfo& info : settingTable)
            if (column.name.compare(QLatin1String(info.name), Qt::CaseInsensitive) == 0) {
                ++entries;
                EXPECT_EQ(columnType.value(info.type, DaoType::Binary), column.type)
                    << info.name << " is " << column.declaredType.toStdString();
            }
        EXPECT_EQ(entries, 1) << column.name.toStdString();
    }
    for (const SettingInfo& info : settingTable)
        EXPECT_TRUE(columns.contains(QString::fromLatin1(info.name).toLower())) << info.name << " is no column";
    EXPECT_EQ(columns.size(), qsizetype(std::size(settingTable)));
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
