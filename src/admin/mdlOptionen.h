// SPDX-License-Identifier: Apache-2.0
// The procedures behind the options dialog: the choices its lists offer (languages, states, hot
// keys, form fields), the rule against doubly assigned hot keys, the colour notation of the settings
// and the one write of all edited settings into the zvbSys row.
#pragma once

#include "app/Settings.h"

#include <QList>
#include <QString>
#include <QVariant>
#include <utility>

// One entry of a choice list: the value stored in zvbSys and the text the operator sees.
struct OptionChoice {
    QVariant value;
    QString text;
};

// Pairs of zvbSys column and new value, in the order they are written.
using SettingValues = QList<std::pair<QString, QVariant>>;

// The hot-key settings, in the order the key press handling tries them.
inline constexpr Setting HotkeySettings[] = {Setting::Key_F2, Setting::Key_F3, Setting::Key_F4};

// A colour reference 0x00BBGGRR as stored in the settings: "&H" and upper-case hex digits without
// leading zeros ("&HA0A0FF", "&HFF00").
QString colourText(qint32 ref);

// True when two of the key numbers are the same key; 0 means no key and may repeat.
bool HotkeysAssignedTwice(const QList<int>& keyIds);

// The rows of zvbSysKeys as choices (KeyID, Bezeichnung), by KeyID. Throws VeridonError when the
// table cannot be read.
QList<OptionChoice> HotkeyChoices();
// The languages of sysLanguages (Language_ID, Bezeichnung), in table order.
QList<OptionChoice> LanguageChoices();
// The states of sysStates (State_ID, "State_ID - State_Name"), by State_ID.
QList<OptionChoice> StateChoices();
// The names of the form's fields (ZVBFelder rows with a satznummer above 0), in satznummer order.
QStringList FormFieldNames();

// The settings row as column name -> value (empty when zvbSys has no row). Throws VeridonError
// when the table cannot be read.
QVariantMap ReadSettingsRow();

// Writes values into the zvbSys row in one statement (adding the row when the table is empty).
// Throws VeridonError, and writes nothing, when a column does not exist or the write fails.
void SaveSettings(const SettingValues& values);

// What the options dialog does on OK: refuses doubly assigned hot keys among the Key_F2/F3/F4
// entries of values with "Msg_DoubleHotkey" (nothing is written, false), else writes all values,
// reloads the language so that windows opened afterwards follow it, and returns true. A failing
// write is reported as run-time error "frmOptionen.SaveSettings()" and gives false.
bool SaveOptions(const SettingValues& values);
