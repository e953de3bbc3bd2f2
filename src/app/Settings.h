// SPDX-License-Identifier: Apache-2.0
// The settings row zvbSys as one table: every column with its type and the default a reader takes
// when the column is null. A setting is named by its enumerator (`Setting::Backup_Enabled`), never
// by a text, and read with the type of its column:
//
//   const bool images = setting<Setting::Backup_Bilder>();          // yes/no column -> bool
//   const qint16 days = setting<Setting::Backup_HistoryDays>();     // integer column -> qint16
//   setSetting<Setting::GUI_StatusBarEnabled>(true);
//
// Every read goes to the row (nothing is kept in memory), so a setting changed by the options
// dialog or by another workstation on a shared pool counts from the next read on. A read that fails
// (no database, no such column) gives the default, as an unset setting does.
#pragma once

#include <QDateTime>
#include <QString>
#include <QVariant>
#include <string_view>

// The kinds of column of zvbSys, as the schema declares them.
enum class SettingType {
    Text,    // VARCHAR(n)
    Flag,    // BOOLEAN
    Integer, // SMALLINT, a 16-bit integer
    Long,    // INTEGER, a 32-bit integer
    DateTime // DATETIME
};

// X(name, type, default): the default is the stored text a reader takes for null ("1"/"0" for a
// flag), nullptr where null stays null (an empty text, false, 0, an invalid date).
#define VERIDON_SETTINGS(X)                                                                                            \
    X(APP_ServerDB, Text, "")                                                                                          \
    X(APP_LastOpened, DateTime, nullptr)                                                                               \
    X(APP_Language, Text, "EN")                                                                                        \
    X(APP_State, Text, "DE")                                                                                           \
    X(APP_KorrID, Integer, nullptr)                                                                                    \
    X(APP_Bildpfad, Text, nullptr)                                                                                     \
    X(APP_TestBildpfad, Text, nullptr)                                                                                 \
    X(Color_OK, Text, "&HFF00")                                                                                        \
    X(Color_NoCheck, Text, "&HFFFFFF")                                                                                 \
    X(Color_Syntaxok, Text, "&HE0FFE0")                                                                                \
    X(Color_Fehler, Text, "&HA0A0FF")                                                                                  \
    X(Color_Ausgegraut, Text, "&HC0C0C0")                                                                              \
    X(Color_Warnung, Text, "&H80FFFF")                                                                                 \
    X(Cursor_allg, Integer, nullptr)                                                                                   \
    X(Cursor_F2, Flag, nullptr)                                                                                        \
    X(F2_WasSuchen, Integer, nullptr)                                                                                  \
    X(F2_WieWeitSuchen, Integer, nullptr)                                                                              \
    X(GUI_FocusField, Text, "BARCODE")                                                                                 \
    X(GUI_BildanzeigeEnabled, Flag, "1")                                                                               \
    X(GUI_StatusBarEnabled, Flag, "1")                                                                                 \
    X(GUI_ToolBarEnabled, Flag, "1")                                                                                   \
    X(GUI_VollbildEnabled, Flag, "1")                                                                                  \
    X(Key_EnterLikeTab, Flag, nullptr)                                                                                 \
    X(Key_NUMKommaGleichEntf, Flag, nullptr)                                                                           \
    X(Key_F2, Long, "0")                                                                                               \
    X(Key_F3, Long, "0")                                                                                               \
    X(Key_F4, Long, "0")                                                                                               \
    X(Key_OK, Text, "F10")                                                                                             \
    X(Key_Verwerfen, Text, "F8")                                                                                       \
    X(Scan_Pfad, Text, nullptr)                                                                                        \
    X(Scan_RechnerId, Text, "1")                                                                                       \
    X(Scan_NrDesTages, Integer, "1")                                                                                   \
    X(Scan_TagDesJahres, Integer, "1")                                                                                 \
    X(Import_Datei, Text, nullptr)                                                                                     \
    X(Export_Pfad, Text, nullptr)                                                                                      \
    X(Backup_Enabled, Text, "0")                                                                                       \
    X(Backup_Bilder, Flag, "0")                                                                                        \
    X(Backup_Pfad, Text, nullptr)                                                                                      \
    X(Backup_HistoryDays, Integer, "0")                                                                                \
    X(Report_Ambrix_Country, Integer, nullptr)                                                                         \
    X(Report_Other_Country, Integer, nullptr)                                                                          \
    X(Report_Pfad, Text, nullptr)                                                                                      \
    X(Report_FontName, Text, "Courier New")                                                                            \
    X(Report_PrinterUseDefault, Flag, "1")                                                                             \
    X(Report_PrinterName, Text, "")                                                                                    \
    X(Scan_Geraet, Text, nullptr)

// One enumerator per column of zvbSys, named as the column.
enum class Setting {
#define VERIDON_SETTING_ENUM(name, type, defaultText) name,
    VERIDON_SETTINGS(VERIDON_SETTING_ENUM)
#undef VERIDON_SETTING_ENUM
};

struct SettingInfo {
    Setting setting;
    const char* name; // the zvbSys column
    SettingType type;
    const char* defaultText; // nullptr: none
};

// The table, in the order of the columns.
inline constexpr SettingInfo settingTable[] = {
#define VERIDON_SETTING_INFO(name, type, defaultText) {Setting::name, #name, SettingType::type, defaultText},
    VERIDON_SETTINGS(VERIDON_SETTING_INFO)
#undef VERIDON_SETTING_INFO
};

constexpr const SettingInfo& settingInfo(Setting s) {
    return settingTable[static_cast<int>(s)];
}

// The zvbSys column of s, for statements and maps that name columns (the options dialog's row).
inline QString settingName(Setting s) {
    return QLatin1String(settingInfo(s).name);
}

// The default of s as its stored text; nullptr when it has none.
constexpr const char* settingDefaultText(Setting s) {
    return settingInfo(s).defaultText;
}

// The default of s as a value of its type (bool, int, text); null when it has none.
QVariant settingDefault(Setting s);

// The column as a stored value, null when unset or unreadable (no default applied).
QVariant storedSetting(Setting s);

// The readers of each type; setting<S>() picks the one of S's type.
QString readTextSetting(Setting s);
bool readFlagSetting(Setting s);
qint16 readIntegerSetting(Setting s); // throws VeridonError for a stored text that is no number
qint32 readLongSetting(Setting s);    // throws VeridonError for a stored text that is no number
QDateTime readDateTimeSetting(Setting s);

// Writes value into the column of s (null writes NULL). Throws VeridonError when the home's table
// has no such column or the write fails.
void writeSetting(Setting s, const QVariant& value);

// The value of S with the type of its column, its default when the column is null.
template <Setting S> auto setting() {
    constexpr SettingType type = settingInfo(S).type;
    if constexpr (type == SettingType::Text)
        return readTextSetting(S);
    else if constexpr (type == SettingType::Flag)
        return readFlagSetting(S);
    else if constexpr (type == SettingType::Integer)
        return readIntegerSetting(S);
    else if constexpr (type == SettingType::Long)
        return readLongSetting(S);
    else
        return readDateTimeSetting(S);
}

// Writes value, of S's type, into the column of S.
template <Setting S> void setSetting(const decltype(setting<S>())& value) {
    writeSetting(S, QVariant::fromValue(value));
}
