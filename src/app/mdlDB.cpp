// SPDX-License-Identifier: Apache-2.0
#include "mdlDB.h"

#include "ColumnInfo.h"
#include "Database.h"
#include "Home.h"
#include "Settings.h"
#include "TextFile.h"

#include <QFileInfo>
#include <QHash>
#include <cmath>
#include <limits>

QString GetDBPath() {
    return homePath(QStringLiteral("data.mdb"));
}

QVariant GetValue(const QString& column, const QString& table, const QString& condition) {
    const QVector<ColumnInfo> columns = tableColumns(table);
    if (columns.isEmpty()) {
        database(); // a missing database is the more telling error
        requireColumn(table);
    }
    const int index = indexOfColumn(columns, column);
    if (index < 0)
        return QVariant();
    QString sql = QStringLiteral("SELECT [%1] FROM [%2]").arg(columns[index].name, table);
    if (!condition.trimmed().isEmpty())
        sql += QStringLiteral(" WHERE ") + condition;
    sql += QStringLiteral(" ORDER BY rowid LIMIT 1");
    // Settings are read at each use, so the same few look-ups run for every record of a batch:
    // their statements are prepared once per connection and only executed again.
    struct Statements {
        quint64 generation = 0;
        QHash<QString, QSqlQuery> prepared;
    };
    thread_local Statements statements;
    if (statements.generation != connectionGeneration()) {
        statements.prepared.clear();
        statements.generation = connectionGeneration();
    }
    auto it = statements.prepared.find(sql);
    if (it == statements.prepared.end()) {
        if (statements.prepared.size() >= 256) // conditions that carry values vary without end
            statements.prepared.clear();
        it = statements.prepared.insert(sql, prepareSql(sql));
    }
    QSqlQuery& q = it.value();
    execPrepared(q);
    const QVariant value = q.next() ? q.value(0) : QVariant();
    q.finish();
    return value;
}

int CountRows(const QString& column, const QString& table, const QString& condition) {
    QString sql = QStringLiteral("SELECT COUNT(*) FROM (SELECT %1 FROM %2").arg(column, table);
    if (!condition.isEmpty())
        sql += QStringLiteral(" WHERE ") + condition;
    sql += QStringLiteral(") AS counted"); // the pool's server wants every derived table named
    QSqlQuery q = execSql(sql);
    return q.next() ? q.value(0).toInt() : 0;
}

QVariant Nz(const QVariant& value, const QVariant& defaultValue) {
    return value.isNull() ? defaultValue : value;
}

namespace {

qint64 toWhole(const QVariant& value, qint64 lowest, qint64 highest) {
    if (value.isNull())
        return 0;
    double number = 0;
    bool ok = false;
    switch (value.typeId()) {
    case QMetaType::Bool:
        return value.toBool() ? -1 : 0;
    case QMetaType::Int:
    case QMetaType::LongLong:
    case QMetaType::UInt:
    case QMetaType::ULongLong:
    case QMetaType::Short:
    case QMetaType::UShort: {
        const qint64 whole = value.toLongLong();
        if (whole < lowest || whole > highest)
            throw VeridonError(ErrorNumber::Overflow, Msg::ErrOverflow);
        return whole;
    }
    default: {
        QString text = value.toString().trimmed();
        if (text.isEmpty())
            return 0;
        text.replace(QLatin1Char(','), QLatin1Char('.'));
        number = text.toDouble(&ok);
        if (!ok)
            throw VeridonError(ErrorNumber::TypeMismatch, Msg::ErrTypeMismatch);
    }
    }
    const double rounded = std::nearbyint(number); // ties to even under the default rounding mode
    if (!(rounded >= double(lowest) && rounded <= double(highest)))
        throw VeridonError(ErrorNumber::Overflow, Msg::ErrOverflow);
    return qint64(rounded);
}

} // namespace

qint32 ToLong(const QVariant& value) {
    return qint32(toWhole(value, std::numeric_limits<qint32>::min(), std::numeric_limits<qint32>::max()));
}

qint16 ToInteger(const QVariant& value) {
    return qint16(toWhole(value, std::numeric_limits<qint16>::min(), std::numeric_limits<qint16>::max()));
}

QString StripNulls(const QString& text) {
    QString result = text;
    result.remove(QChar(0));
    return result;
}

QString GetValuesTable() {
    return QStringLiteral("zvbWerte");
}

qint16 GetKorrID() {
    return ToInteger(GetValue(settingName(Setting::APP_KorrID), QStringLiteral("zvbSys"), QString()));
}

QString GetIniValue(const QString& section, const QString& key) {
    QStringList lines;
    if (!readTextLines(homePath(QStringLiteral("tarnvel.ini")), lines))
        return QString();
    bool inSection = false;
    for (const QString& raw : std::as_const(lines)) {
        const QString line = raw.trimmed();
        if (line.startsWith(QLatin1Char('['))) {
            const qsizetype close = line.indexOf(QLatin1Char(']'));
            inSection = close > 0 && line.mid(1, close - 1).trimmed().compare(section, Qt::CaseInsensitive) == 0;
            continue;
        }
        if (!inSection || line.startsWith(QLatin1Char(';')))
            continue;
        const qsizetype eq = line.indexOf(QLatin1Char('='));
        if (eq < 0 || line.left(eq).trimmed().compare(key, Qt::CaseInsensitive) != 0)
            continue;
        QString value = StripNulls(raw.mid(raw.indexOf(QLatin1Char('=')) + 1));
        while (value.startsWith(QLatin1Char(' ')) || value.startsWith(QLatin1Char('\t')))
            value.remove(0, 1);
        // A value in matching quotes is taken without them, as the platform's reader does.
        if (value.size() >= 2 && (value.front() == QLatin1Char('"') || value.front() == QLatin1Char('\'')) &&
            value.trimmed().endsWith(value.front()))
            value = value.trimmed().mid(1, value.trimmed().size() - 2);
        // The reader hands back at most 254 characters, and trailing blanks are lost.
        value = value.left(254);
        while (value.endsWith(QLatin1Char(' ')) || value.endsWith(QLatin1Char('\t')))
            value.chop(1);
        return value;
    }
    return QString();
}

QVariant GetSysValue(const QString& column) {
    try {
        return GetValue(column, QStringLiteral("zvbSys"), QString());
    } catch (const VeridonError&) {
        return QVariant();
    }
}

QString GetSysText(const QString& column, const QString& defaultText) {
    const QVariant v = GetSysValue(column);
    return v.isNull() ? defaultText : v.toString();
}

bool ToFlag(const QVariant& value, bool defaultValue) {
    if (value.isNull())
        return defaultValue;
    if (value.typeId() == QMetaType::Bool)
        return value.toBool();
    const QString text = value.toString().trimmed().toLower();
    if (text.isEmpty())
        return defaultValue;
    if (text == QLatin1String("true") || text == QLatin1String("wahr") || text == QLatin1String("yes") ||
        text == QLatin1String("ja"))
        return true;
    bool ok = false;
    const double number = text.toDouble(&ok);
    return ok && number != 0.0;
}

bool GetSysFlag(const QString& column, bool defaultValue) {
    return ToFlag(GetSysValue(column), defaultValue);
}

QDateTime ToDateTime(const QVariant& value) {
    if (value.isNull())
        return QDateTime();
    if (value.typeId() == QMetaType::QDateTime)
        return value.toDateTime();
    const QString text = value.toString().trimmed();
    QDateTime dt = QDateTime::fromString(text, QStringLiteral("yyyy-MM-dd HH:mm:ss"));
    if (!dt.isValid())
        dt = QDateTime::fromString(text, Qt::ISODate);
    if (!dt.isValid()) {
        const QDate d = QDate::fromString(text.left(10), QStringLiteral("yyyy-MM-dd"));
        if (d.isValid())
            dt = QDateTime(d, QTime(0, 0));
    }
    return dt;
}

QString sqlLiteral(const QVariant& value) {
    if (value.isNull())
        return QStringLiteral("NULL");
    switch (value.typeId()) {
    case QMetaType::Bool:
        return value.toBool() ? QStringLiteral("TRUE") : QStringLiteral("FALSE");
    case QMetaType::Int:
    case QMetaType::LongLong:
    case QMetaType::UInt:
    case QMetaType::ULongLong:
    case QMetaType::Short:
    case QMetaType::UShort:
        return QString::number(value.toLongLong());
    case QMetaType::Double:
        return QString::number(value.toDouble(), 'g', 17);
    case QMetaType::QDateTime:
        return sqlQuote(value.toDateTime().toString(QStringLiteral("yyyy-MM-dd HH:mm:ss")));
    default:
        return sqlQuote(value.toString());
    }
}

void SetSysValue(const QString& column, const QVariant& value) {
    requireColumn(QStringLiteral("zvbSys"), column);
    execSql(QStringLiteral("UPDATE zvbSys SET [%1]=%2").arg(column, sqlLiteral(value)));
}

void SetSysValues(const QString& column1, const QVariant& value1, const QString& column2, const QVariant& value2) {
    requireColumn(QStringLiteral("zvbSys"), column1);
    requireColumn(QStringLiteral("zvbSys"), column2);
    execSql(QStringLiteral("UPDATE zvbSys SET [%1]=%2, [%3]=%4")
                .arg(column1, sqlLiteral(value1), column2, sqlLiteral(value2)));
}

void SetSysExpression(const QString& column, const QString& expression) {
    requireColumn(QStringLiteral("zvbSys"), column);
    execSql(QStringLiteral("UPDATE zvbSys SET [%1]=%2").arg(column, expression));
}
