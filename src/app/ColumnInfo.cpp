// SPDX-License-Identifier: Apache-2.0
#include "ColumnInfo.h"

#include "Database.h"
#include "JetDialectPg.h"
#include "PoolConnection.h"
#include "PoolRouting.h"

#include <QHash>
#include <QRegularExpression>
#include <QSqlQuery>

DaoType daoTypeOf(const QString& declaredType) {
    const QString t = declaredType.trimmed().toUpper();
    if (t.startsWith(QLatin1String("VARCHAR")) || t.startsWith(QLatin1String("CHAR")) ||
        t.startsWith(QLatin1String("TEXT(")) || t.startsWith(QLatin1String("NVARCHAR")))
        return DaoType::Text;
    if (t == QLatin1String("TEXT") || t == QLatin1String("LONGTEXT") || t == QLatin1String("MEMO") || t.isEmpty())
        return DaoType::Memo;
    if (t == QLatin1String("BOOLEAN") || t == QLatin1String("BIT") || t == QLatin1String("YESNO"))
        return DaoType::Boolean;
    if (t == QLatin1String("SMALLINT") || t == QLatin1String("SHORT") || t == QLatin1String("TINYINT"))
        return DaoType::Integer;
    if (t.startsWith(QLatin1String("INT")) || t == QLatin1String("LONG") || t == QLatin1String("COUNTER") ||
        t == QLatin1String("BIGINT"))
        return DaoType::Long;
    if (t == QLatin1String("CURRENCY") || t == QLatin1String("MONEY"))
        return DaoType::Currency;
    if (t == QLatin1String("REAL") || t == QLatin1String("SINGLE") || t == QLatin1String("FLOAT"))
        return DaoType::Single;
    if (t == QLatin1String("DOUBLE") || t.startsWith(QLatin1String("NUMERIC")) ||
        t.startsWith(QLatin1String("DECIMAL")))
        return DaoType::Double;
    if (t == QLatin1String("DATETIME") || t == QLatin1String("DATE") || t == QLatin1String("TIME"))
        return DaoType::Date;
    if (t == QLatin1String("BLOB") || t == QLatin1String("BINARY") || t == QLatin1String("LONGBINARY"))
        return DaoType::LongBinary;
    return DaoType::Memo;
}

namespace {

// Look-ups read a table's columns for every value they fetch; the schema changes only through
// execSql, which clears this cache.
struct ColumnCache {
    quint64 generation = 0;
    QHash<QString, QVector<ColumnInfo>> tables; // lower-cased table name -> columns
};
thread_local ColumnCache cache;

} // namespace

void forgetTableColumns() {
    cache.tables.clear();
    forgetPoolCatalog();
}

namespace {
// True when table lives on the pool server of this workstation.
bool onPoolServer(const QString& table) {
    return homeUsesPool() && storeOfTable(table) == TableStore::Pool;
}
} // namespace

QVector<ColumnInfo> tableColumns(const QString& table) {
    static const QRegularExpression sizePattern(QStringLiteral("\\(\\s*(\\d+)\\s*\\)"));
    QSqlDatabase db = database();
    if (cache.generation != connectionGeneration()) {
        cache.tables.clear();
        cache.generation = connectionGeneration();
    }
    const QString key = table.toLower();
    const auto hit = cache.tables.constFind(key);
    if (hit != cache.tables.constEnd())
        return hit.value();
    QVector<ColumnInfo> columns;
    if (onPoolServer(table)) {
        columns = poolTableColumns(poolDatabase(), table);
        cache.tables.insert(key, columns);
        return columns;
    }
    QSqlQuery q(db);
    // PRAGMA arguments cannot be bound; the name is quoted as a string literal instead.
    if (!q.exec(QStringLiteral("PRAGMA table_info(%1)").arg(sqlQuote(table))))
        return columns;
    while (q.next()) {
        ColumnInfo c;
        c.name = q.value(1).toString();
        c.declaredType = q.value(2).toString();
        c.type = daoTypeOf(c.declaredType);
        c.primaryKey = q.value(5).toInt() > 0;
        if (c.type == DaoType::Text) {
            const auto m = sizePattern.match(c.declaredType);
            c.size = m.hasMatch() ? m.captured(1).toInt() : 255;
        }
        columns.push_back(c);
    }
    cache.tables.insert(key, columns);
    return columns;
}

int indexOfColumn(const QVector<ColumnInfo>& columns, const QString& name) {
    for (int i = 0; i < columns.size(); ++i)
        if (columns[i].name.compare(name, Qt::CaseInsensitive) == 0)
            return i;
    return -1;
}

bool tableExists(const QString& table) {
    if (onPoolServer(table))
        return poolTableExists(poolDatabase(), table);
    QSqlQuery q(database());
    q.prepare(QStringLiteral("SELECT 1 FROM sqlite_master WHERE type IN ('table','view') AND name=? COLLATE NOCASE"));
    q.addBindValue(table);
    return q.exec() && q.next();
}
