#include "Database.h"

#include "ColumnInfo.h"
#include "JetDialect.h"
#include "mdlDB.h"

#include <QFileInfo>
#include <QRegularExpression>
#include <QSqlDriver>
#include <QSqlError>
#include <QThread>
#include <sqlite3.h>

namespace {

// The connection of one thread; removed when the thread ends.
struct ThreadConnection {
    QString name;
    int transactionDepth = 0;

    ~ThreadConnection() { close(); }

    void close() {
        if (name.isEmpty())
            return;
        {
            QSqlDatabase db = QSqlDatabase::database(name, false);
            if (db.isOpen())
                db.close();
        }
        QSqlDatabase::removeDatabase(name);
        name.clear();
        transactionDepth = 0;
    }
};

thread_local ThreadConnection connection;
thread_local quint64 generation = 0;

VeridonError errorFrom(const QSqlError& error, const QString& statement) {
    bool ok = false;
    int number = error.nativeErrorCode().toInt(&ok);
    if (!ok)
        number = ErrorNumber::SqlError;
    QString text = error.databaseText();
    if (text.isEmpty())
        text = error.driverText();
    return VeridonError(number, statement.isEmpty() ? text : text + QStringLiteral(" [") + statement + QLatin1Char(']'),
                        VeridonError::Origin::Database);
}

QSqlDatabase openConnection(const QString& path) {
    connection.close();
    const QString name = QStringLiteral("veridon-%1").arg(reinterpret_cast<quintptr>(QThread::currentThreadId()));
    QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), name);
    db.setDatabaseName(path);
    db.setConnectOptions(QStringLiteral("QSQLITE_BUSY_TIMEOUT=10000"));
    if (!db.open()) {
        const VeridonError e = errorFrom(db.lastError(), QString());
        db = QSqlDatabase();
        QSqlDatabase::removeDatabase(name);
        throw e;
    }
    connection.name = name;
    ++generation;
    const QVariant handle = db.driver()->handle();
    if (handle.isValid() && qstrcmp(handle.typeName(), "sqlite3*") == 0) {
        sqlite3* raw = *static_cast<sqlite3* const*>(handle.constData());
        if (raw)
            registerJetFunctions(raw);
    }
    QSqlQuery pragma(db);
    // WAL lets several workstations read while one writes; FULL sync so a committed form survives
    // a power cut.
    pragma.exec(QStringLiteral("PRAGMA journal_mode=WAL"));
    pragma.exec(QStringLiteral("PRAGMA synchronous=FULL"));
    return db;
}

} // namespace

QSqlDatabase database() {
    if (!connection.name.isEmpty()) {
        QSqlDatabase db = QSqlDatabase::database(connection.name, false);
        if (db.isOpen())
            return db;
    }
    const QString path = GetDBPath();
    if (!QFileInfo(path).isFile())
        throw VeridonError(ErrorNumber::DatabaseMissing,
                           QStringLiteral("Die Datenbank '%1' wurde nicht gefunden.").arg(path));
    return openConnection(path);
}

quint64 connectionGeneration() {
    return generation;
}

void closeDatabase() {
    connection.close();
}

void createDatabaseFile(const QString& path) {
    openConnection(path);
}

namespace {
// A statement that may change a table's columns; the column cache must not outlive it.
void noteSchemaChange(const QString& sql) {
    static const QRegularExpression ddl(QStringLiteral("^\\s*(CREATE|ALTER|DROP)\\b"),
                                        QRegularExpression::CaseInsensitiveOption);
    if (ddl.match(sql).hasMatch())
        forgetTableColumns();
}
} // namespace

QSqlQuery prepareSql(const QString& jetSql) {
    const QString sql = translateJet(jetSql);
    QSqlQuery q(database());
    q.setForwardOnly(true);
    if (!q.prepare(sql))
        throw errorFrom(q.lastError(), jetSql);
    return q;
}

void execPrepared(QSqlQuery& query) {
    if (!query.exec())
        throw errorFrom(query.lastError(), query.lastQuery());
}

QSqlQuery execSql(const QString& jetSql, const QVariantList& bindValues) {
    const QString sql = translateJet(jetSql);
    QSqlQuery q(database());
    q.setForwardOnly(true);
    if (bindValues.isEmpty()) {
        const bool ok = q.exec(sql);
        noteSchemaChange(sql);
        if (!ok)
            throw errorFrom(q.lastError(), jetSql);
        return q;
    }
    if (!q.prepare(sql))
        throw errorFrom(q.lastError(), jetSql);
    for (const QVariant& v : bindValues)
        q.addBindValue(v);
    if (!q.exec())
        throw errorFrom(q.lastError(), jetSql);
    return q;
}

QString sqlQuote(const QString& text) {
    QString quoted = text;
    quoted.replace(QLatin1Char('\''), QLatin1String("''"));
    return QLatin1Char('\'') + quoted + QLatin1Char('\'');
}

void requireColumn(const QString& table, const QString& column) {
    const QVector<ColumnInfo> columns = tableColumns(table);
    if (columns.isEmpty())
        throw VeridonError(ErrorNumber::TableMissing,
                           QStringLiteral("Die Tabelle '%1' ist nicht vorhanden.").arg(table));
    if (!column.isEmpty() && indexOfColumn(columns, column) < 0)
        throw VeridonError(ErrorNumber::ColumnMissing,
                           QStringLiteral("Das Feld '%1' ist in der Tabelle '%2' nicht vorhanden.").arg(column, table));
}

Transaction::Transaction() {
    QSqlDatabase db = database();
    if (connection.transactionDepth == 0) {
        // The write lock is taken at the start and waited for (busy timeout): a deferred
        // transaction that meets another writer only when it first writes fails at once instead
        // of waiting, and a batch that came second must wait its turn, not half run.
        QSqlQuery begin(db);
        if (!begin.exec(QStringLiteral("BEGIN IMMEDIATE")))
            throw errorFrom(begin.lastError(), QStringLiteral("BEGIN IMMEDIATE"));
        owner_ = true;
    }
    ++connection.transactionDepth;
}

Transaction::~Transaction() {
    if (done_)
        return;
    --connection.transactionDepth;
    if (owner_ && !connection.name.isEmpty()) {
        QSqlQuery rollback(QSqlDatabase::database(connection.name, false));
        rollback.exec(QStringLiteral("ROLLBACK"));
    }
}

void Transaction::commit() {
    if (done_)
        return;
    done_ = true;
    --connection.transactionDepth;
    if (owner_) {
        QSqlQuery commit(QSqlDatabase::database(connection.name, false));
        if (!commit.exec(QStringLiteral("COMMIT"))) {
            const VeridonError e = errorFrom(commit.lastError(), QStringLiteral("COMMIT"));
            // A commit that failed leaves the transaction open; nothing of it may stay pending.
            QSqlQuery(QSqlDatabase::database(connection.name, false)).exec(QStringLiteral("ROLLBACK"));
            throw e;
        }
    }
}
