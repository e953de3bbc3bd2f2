// SPDX-License-Identifier: Apache-2.0
#include "mdlOptionen.h"

#include "app/ColumnInfo.h"
#include "app/Database.h"
#include "app/mdlMessages.h"

#include <QSet>
#include <QSqlRecord>

namespace {

QList<OptionChoice> readChoices(const QString& sql, bool joinKeyAndText) {
    QList<OptionChoice> choices;
    QSqlQuery q = execSql(sql);
    while (q.next()) {
        const QString text = q.value(1).toString();
        choices.append({q.value(0), joinKeyAndText ? q.value(0).toString() + QStringLiteral(" - ") + text : text});
    }
    return choices;
}

bool isHotkeyColumn(const QString& column) {
    for (Setting hotKey : HotkeySettings)
        if (column.compare(settingName(hotKey), Qt::CaseInsensitive) == 0)
            return true;
    return false;
}

} // namespace

QString colourText(qint32 ref) {
    return QStringLiteral("&H") + QString::number(quint32(ref), 16).toUpper();
}

bool HotkeysAssignedTwice(const QList<int>& keyIds) {
    QSet<int> seen;
    for (int id : keyIds) {
        if (id == 0)
            continue;
        if (seen.contains(id))
            return true;
        seen.insert(id);
    }
    return false;
}

QList<OptionChoice> HotkeyChoices() {
    return readChoices(QStringLiteral("SELECT KeyID, Bezeichnung FROM zvbSysKeys ORDER BY KeyID"), false);
}

QList<OptionChoice> LanguageChoices() {
    return readChoices(QStringLiteral("SELECT Language_ID, Bezeichnung FROM sysLanguages ORDER BY rowid"), false);
}

QList<OptionChoice> StateChoices() {
    return readChoices(QStringLiteral("SELECT State_ID, State_Name FROM sysStates ORDER BY State_ID"), true);
}

QStringList FormFieldNames() {
    QStringList names;
    QSqlQuery q = execSql(QStringLiteral("SELECT VarName FROM ZVBFelder WHERE satznummer>0 ORDER BY satznummer"));
    while (q.next())
        names << q.value(0).toString();
    return names;
}

QVariantMap ReadSettingsRow() {
    QVariantMap row;
    QSqlQuery q = execSql(QStringLiteral("SELECT * FROM zvbSys ORDER BY rowid LIMIT 1"));
    if (q.next()) {
        const QSqlRecord record = q.record();
        for (int i = 0; i < record.count(); ++i)
            row.insert(record.fieldName(i), q.value(i));
    }
    return row;
}

void SaveSettings(const SettingValues& values) {
    if (values.isEmpty())
        return;
    const QVector<ColumnInfo> columns = tableColumns(QStringLiteral("zvbSys"));
    QStringList names;
    QVariantList binds;
    for (const auto& [column, value] : values) {
        const int index = indexOfColumn(columns, column);
        if (index < 0)
            requireColumn(QStringLiteral("zvbSys"), column); // throws with the telling message
        names << columns[index].name;
        binds << value;
    }
    Transaction transaction;
    QSqlQuery count = execSql(QStringLiteral("SELECT COUNT(*) FROM zvbSys"));
    const bool hasRow = count.next() && count.value(0).toInt() > 0;
    count.finish();
    if (hasRow) {
        QStringList assignments;
        for (const QString& name : std::as_const(names))
            assignments << QStringLiteral("[%1]=?").arg(name);
        execSql(QStringLiteral("UPDATE zvbSys SET ") + assignments.join(QStringLiteral(", ")), binds);
    } else {
        QStringList marks;
        for (qsizetype i = 0; i < names.size(); ++i)
            marks << QStringLiteral("?");
        execSql(QStringLiteral("INSERT INTO zvbSys ([%1]) VALUES (%2)")
                    .arg(names.join(QStringLiteral("], [")), marks.join(QStringLiteral(","))),
                binds);
    }
    transaction.commit();
}

bool SaveOptions(const SettingValues& values) {
    QList<int> keys;
    for (const auto& [column, value] : values)
        if (isHotkeyColumn(column))
            keys << value.toInt();
    if (HotkeysAssignedTwice(keys)) {
        ShowMessage(Msg::DoubleHotkey, MsgBox::Exclamation);
        return false;
    }
    if (!RunReported(QStringLiteral("frmOptionen.SaveSettings"), [&] { SaveSettings(values); }))
        return false;
    ReloadLanguage();
    return true;
}
