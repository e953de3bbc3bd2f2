// SPDX-License-Identifier: Apache-2.0
#include "Database.h"

#include "ColumnInfo.h"
#include "JetDialect.h"
#include "JetDialectPg.h"
#include "PoolConnection.h"
#include "PoolRouting.h"
#include "mdlDB.h"

#include <QFileInfo>
#include <QRegularExpression>
#include <QSqlDriver>
#include <QSqlError>
#include <QThread>
#include <sqlite3.h>
#include <utility>

namespace {

// The connection of one thread; removed when the thread ends.
struct ThreadConnection {
    QString name;
    int transactionDepth = 0;
    bool poolTransaction = false; // the pool connection is inside this thread's transaction

    ~ThreadConnection() { close(); }

    void close() {
        if (name.isEmpty())
            return;
        removeConnection(name);
        name.clear();
        transactionDepth = 0;
        poolTransaction = false;
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
    closePool();
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

void removeConnection(const QString& name) {
    if (name.isEmpty())
        return;
    {
        QSqlDatabase db = QSqlDatabase::database(name, false);
        if (db.isOpen())
            db.close();
    }
    QSqlDatabase::removeDatabase(name);
}

QSqlDatabase database() {
    if (!connection.name.isEmpty()) {
        QSqlDatabase db = QSqlDatabase::database(connection.name, false);
        if (db.isOpen())
            return db;
    }
    const QString path = GetDBPath();
    if (!QFileInfo(path).isFile())
        throw VeridonError(ErrorNumber::DatabaseMissing, Msg::ErrDatabaseMissing, {path});
    return openConnection(path);
}

quint64 connectionGeneration() {
    // A statement asking is about to let go of its old one: the connection it was prepared on must
    // be gone first, so the letting go stays silent.
    releaseDroppedPoolConnection();
    return generation;
}

void closeDatabase() {
    connection.close();
    closePool();
}

void notePoolConnectionChanged() {
    ++generation;
    forgetTableColumns();
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

namespace {

// A statement on the database that holds its tables, in that database's dialect.
struct RoutedStatement {
    QSqlDatabase db;
    QString sql;
    bool pool = false;
};

// The pool connection, joined to this thread's transaction when one is open.
QSqlDatabase poolForStatement() {
    QSqlDatabase db = poolDatabase();
    if (connection.transactionDepth > 0 && !connection.poolTransaction) {
        if (!db.transaction()) {
            const QSqlError error = db.lastError();
            if (isConnectionLoss(error) || !db.isOpen()) {
                db = QSqlDatabase();
                dropPoolConnection();
                throw poolUnreachable(homePoolUri(), error.text());
            }
            throw errorFrom(error, QStringLiteral("BEGIN"));
        }
        connection.poolTransaction = true;
    }
    return db;
}

RoutedStatement route(const QString& jetSql) {
    QSqlDatabase local = database();
    // Checked on every workstation, so a statement that could not run on a pool workstation fails
    // wherever it is tried first.
    const TableStore store = storeOfStatement(jetSql);
    if (store == TableStore::Local || !homeUsesPool())
        return {local, translateJet(jetSql), false};
    QSqlDatabase db = poolForStatement();
    return {db, translateJetPg(jetSql, db), true};
}

bool onPool(const QSqlQuery& query) {
    return query.driver() && query.driver()->dbmsType() == QSqlDriver::PostgreSQL;
}

// The error of a failed statement. On the pool a lost connection is dropped, so the next statement
// connects again, and reported as the server being gone.
VeridonError failure(const QSqlQuery& query, const QString& statement) {
    if (onPool(query) && isConnectionLoss(query.lastError())) {
        const QString reason = query.lastError().text();
        dropPoolConnection(&query);
        connection.poolTransaction = false;
        return poolUnreachable(homePoolUri(), reason);
    }
    return errorFrom(query.lastError(), statement);
}

// Runs run() on query; inside a pool transaction under a savepoint, so that a failed statement is
// undone alone instead of spoiling the rest of the batch.
template <class Run> bool guarded(QSqlQuery& query, Run run) {
    if (!onPool(query))
        return run();
    // Yes/no columns hold 1 and 0 in the pool as in data.mdb; the driver would send a bool as TRUE.
    const QVariantList bound = query.boundValues();
    for (int i = 0; i < bound.size(); ++i)
        if (bound[i].typeId() == QMetaType::Bool)
            query.bindValue(i, bound[i].toBool() ? 1 : 0);
    poolForStatement(); // a statement prepared before the transaction began runs inside it
    if (!connection.poolTransaction)
        return run();
    QSqlQuery mark(poolDatabase());
    mark.exec(QStringLiteral("SAVEPOINT veridon_statement"));
    const bool ok = run();
    mark.exec(ok ? QStringLiteral("RELEASE SAVEPOINT veridon_statement")
                 : QStringLiteral("ROLLBACK TO SAVEPOINT veridon_statement"));
    return ok;
}

} // namespace

QSqlQuery prepareSql(const QString& jetSql) {
    const RoutedStatement s = route(jetSql);
    QSqlQuery q(s.db);
    // On the pool a forward-only result is streamed and lost when the connection runs the next
    // statement; callers read a result while they run others, so the pool's results are read whole.
    q.setForwardOnly(!s.pool);
    if (!q.prepare(s.sql))
        throw failure(q, jetSql);
    return q;
}

void execPrepared(QSqlQuery& query) {
    if (!guarded(query, [&] { return query.exec(); }))
        throw failure(query, query.lastQuery());
}

RowInserter::RowInserter(const QString& jetSql) {
    const RoutedStatement s = route(jetSql);
    sql_ = s.sql;
    const QVariant handle = s.pool ? QVariant() : s.db.driver()->handle();
    if (handle.isValid() && qstrcmp(handle.typeName(), "sqlite3*") == 0) {
        sqlite3* raw = *static_cast<sqlite3* const*>(handle.constData());
        const QByteArray utf8 = s.sql.toUtf8();
        if (raw && sqlite3_prepare_v3(raw, utf8.constData(), int(utf8.size()), SQLITE_PREPARE_PERSISTENT, &statement_,
                                      nullptr) != SQLITE_OK) {
            const VeridonError e(sqlite3_extended_errcode(raw), QString::fromUtf8(sqlite3_errmsg(raw)) +
                                                                    QStringLiteral(" [") + jetSql + QLatin1Char(']'));
            release();
            throw e;
        }
        if (statement_)
            return;
    }
    query_ = prepareSql(jetSql);
}

RowInserter::~RowInserter() {
    release();
}

RowInserter::RowInserter(RowInserter&& other) noexcept
    : query_(std::move(other.query_)), statement_(std::exchange(other.statement_, nullptr)),
      sql_(std::move(other.sql_)), texts_(std::move(other.texts_)) {}

RowInserter& RowInserter::operator=(RowInserter&& other) noexcept {
    if (this != &other) {
        release();
        query_ = std::move(other.query_);
        statement_ = std::exchange(other.statement_, nullptr);
        sql_ = std::move(other.sql_);
        texts_ = std::move(other.texts_);
    }
    return *this;
}

void RowInserter::release() {
    if (statement_)
        sqlite3_finalize(statement_);
    statement_ = nullptr;
}

void RowInserter::bind(int position, const QVariant& value) {
    if (!statement_) {
        query_.bindValue(position, value);
        return;
    }
    // The same storage Qt's SQLite driver gives each kind of value.
    const int index = position + 1;
    if (position >= texts_.size())
        texts_.resize(position + 1);
    if (value.isNull()) {
        sqlite3_bind_null(statement_, index);
        return;
    }
    switch (value.typeId()) {
    case QMetaType::QString: {
        // Kept until the next bind of the position, so SQLite need not copy it; UTF-8 is the
        // database's own encoding, which spares SQLite a conversion.
        QByteArray& text = texts_[position];
        text = value.toString().toUtf8();
        sqlite3_bind_text(statement_, index, text.constData(), int(text.size()), SQLITE_STATIC);
        break;
    }
    case QMetaType::Int:
    case QMetaType::LongLong:
    case QMetaType::UInt:
    case QMetaType::Bool:
        sqlite3_bind_int64(statement_, index, value.toLongLong());
        break;
    case QMetaType::Double:
        sqlite3_bind_double(statement_, index, value.toDouble());
        break;
    case QMetaType::QByteArray: {
        const QByteArray bytes = value.toByteArray();
        sqlite3_bind_blob(statement_, index, bytes.constData(), int(bytes.size()), SQLITE_TRANSIENT);
        break;
    }
    default: {
        const QString text = value.toString();
        sqlite3_bind_text16(statement_, index, text.utf16(), int(text.size() * 2), SQLITE_TRANSIENT);
    }
    }
}

void RowInserter::bindText(int position, const QString& text) {
    if (!statement_) {
        query_.bindValue(position, text.isNull() ? QStringLiteral("") : text);
        return;
    }
    if (position >= texts_.size())
        texts_.resize(position + 1);
    QByteArray& bytes = texts_[position];
    // UTF-8 needs at most three bytes for a UTF-16 unit; the buffer only grows, so a batch's values
    // are encoded without allocating.
    if (bytes.size() < text.size() * 3 + 1)
        bytes.resize(text.size() * 3 + 1);
    char* const begin = bytes.data();
    char* out = begin;
    for (const QChar c : text) {
        const char16_t u = c.unicode();
        if (u < 0x80) {
            *out++ = char(u);
        } else if (u < 0x800) {
            *out++ = char(0xC0 | (u >> 6));
            *out++ = char(0x80 | (u & 0x3F));
        } else if (!QChar::isSurrogate(u)) {
            *out++ = char(0xE0 | (u >> 12));
            *out++ = char(0x80 | ((u >> 6) & 0x3F));
            *out++ = char(0x80 | (u & 0x3F));
        } else {
            // Characters beyond the basic plane and broken pairs are Qt's to encode, as bind() does.
            bytes = text.toUtf8();
            sqlite3_bind_text(statement_, position + 1, bytes.constData(), int(bytes.size()), SQLITE_STATIC);
            return;
        }
    }
    sqlite3_bind_text(statement_, position + 1, begin, int(out - begin), SQLITE_STATIC);
}

void RowInserter::exec() {
    if (!statement_) {
        execPrepared(query_);
        return;
    }
    const int result = sqlite3_step(statement_);
    sqlite3_reset(statement_);
    if (result != SQLITE_DONE) {
        sqlite3* raw = sqlite3_db_handle(statement_);
        throw VeridonError(sqlite3_extended_errcode(raw),
                           QString::fromUtf8(sqlite3_errmsg(raw)) + QStringLiteral(" [") + sql_ + QLatin1Char(']'));
    }
}

QSqlQuery execSql(const QString& jetSql, const QVariantList& bindValues) {
    const RoutedStatement s = route(jetSql);
    QSqlQuery q(s.db);
    // On the pool a forward-only result is streamed and lost when the connection runs the next
    // statement; callers read a result while they run others, so the pool's results are read whole.
    q.setForwardOnly(!s.pool);
    if (bindValues.isEmpty()) {
        const bool ok = guarded(q, [&] { return q.exec(s.sql); });
        noteSchemaChange(s.sql);
        if (!ok)
            throw failure(q, jetSql);
        return q;
    }
    if (!q.prepare(s.sql))
        throw failure(q, jetSql);
    for (const QVariant& v : bindValues)
        q.addBindValue(v);
    if (!guarded(q, [&] { return q.exec(); }))
        throw failure(q, jetSql);
    return q;
}

QSqlQuery execPoolSql(const QString& sql) {
    database();
    QSqlQuery q(poolForStatement());
    q.setForwardOnly(true);
    if (!guarded(q, [&] { return q.exec(sql); }))
        throw failure(q, sql);
    return q;
}

QString skipLockedClause(const QString& jetSql) {
    return storeOfStatement(jetSql) == TableStore::Pool && homeUsesPool() ? QStringLiteral(" FOR UPDATE SKIP LOCKED")
                                                                          : QString();
}

QString forUpdateClause(const QString& jetSql) {
    return storeOfStatement(jetSql) == TableStore::Pool && homeUsesPool() ? QStringLiteral(" FOR UPDATE") : QString();
}

QString sqlQuote(const QString& text) {
    QString quoted = text;
    quoted.replace(QLatin1Char('\''), QLatin1String("''"));
    return QLatin1Char('\'') + quoted + QLatin1Char('\'');
}

void requireColumn(const QString& table, const QString& column) {
    const QVector<ColumnInfo> columns = tableColumns(table);
    if (columns.isEmpty())
        throw VeridonError(ErrorNumber::TableMissing, Msg::ErrTableMissing, {table});
    if (!column.isEmpty() && indexOfColumn(columns, column) < 0)
        throw VeridonError(ErrorNumber::ColumnMissing, Msg::ErrColumnMissing, {column, table});
}

namespace {
// Ends the pool side of this thread's transaction (joined by the first pool statement inside it).
void endPoolTransaction(bool commit) {
    if (!connection.poolTransaction)
        return;
    connection.poolTransaction = false;
    QSqlDatabase db = poolDatabase();
    if (commit && !db.commit()) {
        const QSqlError error = db.lastError();
        if (isConnectionLoss(error)) {
            dropPoolConnection();
            throw poolUnreachable(homePoolUri(), error.text());
        }
        throw errorFrom(error, QStringLiteral("COMMIT"));
    }
    if (!commit)
        db.rollback();
}
} // namespace

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
    if (owner_)
        endPoolTransaction(false);
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
        QSqlDatabase db = QSqlDatabase::database(connection.name, false);
        try {
            endPoolTransaction(true);
        } catch (const VeridonError&) {
            QSqlQuery(db).exec(
                QStringLiteral("ROLLBACK")); // the batch failed as a whole; data.mdb must not keep its half
            throw;
        }
        QSqlQuery commit(db);
        if (!commit.exec(QStringLiteral("COMMIT"))) {
            const VeridonError e = errorFrom(commit.lastError(), QStringLiteral("COMMIT"));
            // A commit that failed leaves the transaction open; nothing of it may stay pending.
            QSqlQuery(db).exec(QStringLiteral("ROLLBACK"));
            throw e;
        }
    }
}
