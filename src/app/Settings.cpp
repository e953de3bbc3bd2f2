// SPDX-License-Identifier: Apache-2.0
// The typed readers and the writer of the settings table (see Settings.h).

#include "Settings.h"

#include "mdlDB.h"

namespace {

// Each enumerator is the row of its own column: the table and the enumeration are made from one
// list, and this holds them to it.
constexpr bool tableFollowsEnumeration() {
    for (int i = 0; i < int(std::size(settingTable)); ++i)
        if (static_cast<int>(settingTable[i].setting) != i)
            return false;
    return true;
}
static_assert(tableFollowsEnumeration());

} // namespace

QVariant settingDefault(Setting s) {
    const SettingInfo& info = settingInfo(s);
    if (!info.defaultText)
        return QVariant();
    const QString text = QLatin1String(info.defaultText);
    switch (info.type) {
    case SettingType::Flag:
        return ToFlag(text, false);
    case SettingType::Integer:
    case SettingType::Long:
        return text.toInt();
    default:
        return text;
    }
}

QVariant storedSetting(Setting s) {
    return GetSysValue(settingName(s));
}

QString readTextSetting(Setting s) {
    return GetSysText(settingName(s), settingDefault(s).toString());
}

bool readFlagSetting(Setting s) {
    return GetSysFlag(settingName(s), settingDefault(s).toBool());
}

qint16 readIntegerSetting(Setting s) {
    return ToInteger(Nz(storedSetting(s), settingDefault(s)));
}

qint32 readLongSetting(Setting s) {
    return ToLong(Nz(storedSetting(s), settingDefault(s)));
}

QDateTime readDateTimeSetting(Setting s) {
    return ToDateTime(storedSetting(s));
}

void writeSetting(Setting s, const QVariant& value) {
    SetSysValue(settingName(s), value);
}
