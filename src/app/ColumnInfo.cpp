#include "ColumnInfo.h"

#include "Database.h"

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

// Column lists already read on this thread's connection. The program reads single settings and
// look-up values many times a second in batch work; the schema_version in the database header
// changes with every CREATE, ALTER or DROP, from any connection, and then the lists are read again.
struct ColumnCache {
    quint64 generation = 0;
    qint64 schemaVersion = -1;
    QHash<QString, QVector<ColumnInfo>> tables;
};

qint64 schemaVersion() {
    QSqlQuery q(database());
    return q.exec(QStringLiteral("PRAGMA schema_version")) && q.next() ? q.value(0).toLongLong() : -1;
}

} // namespace

QVector<ColumnInfo> tableColumns(const QString& table) {
    thread_local ColumnCache cache;
    const qint64 version = schemaVersion();
    if (cache.generation != connectionGeneration() || cache.schemaVersion != version) {
        cache.tables.clear();
        cache.generation = connectionGeneration();
        cache.schemaVersion = version;
    }
    const QString key = table.toLower();
    const auto cached = cache.tables.constFind(key);
    if (cached != cache.tables.constEnd())
        return cached.value();

    static const QRegularExpression sizePattern(QStringLiteral("\\(\\s*(\\d+)\\s*\\)"));
    QVector<ColumnInfo> columns;
    QSqlQuery q(database());
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
    if (!columns.isEmpty())
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
    QSqlQuery q(database());
    q.prepare(QStringLiteral("SELECT 1 FROM sqlite_master WHERE type IN ('table','view') AND name=? COLLATE NOCASE"));
    q.addBindValue(table);
    return q.exec() && q.next();
}
