// SPDX-License-Identifier: Apache-2.0
// Access to the program database data.mdb (a SQLite file in the home). One connection per thread is
// opened on first use and kept; statements written in the Jet dialect of the master data and the
// procedures are translated here and nowhere else.
#pragma once

#include "Errors.h"

#include <QSqlDatabase>
#include <QSqlQuery>
#include <QString>
#include <QVariant>
#include <QVector>

// The database connection of the calling thread, opened on GetDBPath() when needed.
// Throws VeridonError when data.mdb does not exist or cannot be opened: a missing database is
// never created silently.
QSqlDatabase database();

// Closes the calling thread's connection (before the home changes, or at the end of a test).
void closeDatabase();

// Closes Qt's connection called name when it is open and removes it; nothing for an empty name.
void removeConnection(const QString& name);

// Rises each time this thread opens a connection; prepared statements kept across calls compare it
// to know that their connection is gone.
quint64 connectionGeneration();

// Called when this thread's connection to the pool server is opened or dropped: prepared
// statements of the old connection are then stale as well.
void notePoolConnectionChanged();

// Creates a new, empty data.mdb at path (WAL journal) and opens it as this thread's connection.
// An existing file is left alone and opened.
void createDatabaseFile(const QString& path);

// Runs one statement written in the Jet dialect, with optional bound values, and returns the
// executed query positioned before its first row. On a workstation joined to a pool the statement
// runs where its tables live (PoolRouting.h). Throws VeridonError with the database's error number
// and text when the statement fails, PoolUnreachableError when the pool server is gone, and
// MixedStatementError for a statement naming tables of both databases.
QSqlQuery execSql(const QString& jetSql, const QVariantList& bindValues = {});

// Prepares a statement (Jet dialect) once for repeated execution with different bound values, on
// the database that holds its tables.
QSqlQuery prepareSql(const QString& jetSql);
// Executes a prepared query; throws VeridonError on failure.
void execPrepared(QSqlQuery& query);

struct sqlite3_stmt;

// Runs one INSERT (Jet dialect) many times with different values, for batches that write many rows.
// On data.mdb the values go to SQLite directly, since Qt's binding by position costs more than the
// insert itself; on the pool the statement runs through Qt like every other.
class RowInserter {
public:
    // Prepares jetSql. Throws VeridonError when it cannot be prepared.
    explicit RowInserter(const QString& jetSql);
    ~RowInserter();
    RowInserter(const RowInserter&) = delete;
    RowInserter& operator=(const RowInserter&) = delete;
    RowInserter(RowInserter&& other) noexcept;
    RowInserter& operator=(RowInserter&& other) noexcept;

    // Sets the value of the position-th "?" (from 0) for the next exec(): a null variant is NULL, a
    // text is text, whole numbers, decimals and yes/no are numbers, bytes are stored as they are.
    void bind(int position, const QVariant& value);
    // Sets the position-th "?" to text, never NULL (a null text is ""); the same as bind() with a
    // text, without the variant and a new buffer for each value.
    void bindText(int position, const QString& text);
    // Inserts one row with the values bound; they stay bound for the next row. Throws VeridonError
    // with the database's number and text when the insert fails.
    void exec();

private:
    void release();

    QSqlQuery query_;
    sqlite3_stmt* statement_ = nullptr;
    QString sql_;
    QVector<QByteArray> texts_; // the texts bound, by position
};

// Runs a statement of the server's own SQL that names no table (an advisory lock, the pool's
// functions) on the pool server, inside this thread's transaction when one is open. Throws like
// execSql; PoolUnreachableError also when the home is not joined to a pool.
QSqlQuery execPoolSql(const QString& sql);

// " FOR UPDATE SKIP LOCKED" when jetSql runs on the pool server, else "". Appended to a SELECT that
// picks rows to work on inside a transaction, it makes every other workstation pass over the rows
// this one holds until its transaction ends. data.mdb has one writer at a time and needs none.
QString skipLockedClause(const QString& jetSql);

// " FOR UPDATE" when jetSql runs on the pool server, else "". Appended to a SELECT whose rows are
// read, changed and written back inside a transaction, it waits for any other workstation that
// holds them and reads them only after its change is committed, so that change is not written
// over. On data.mdb the transaction's write lock already does this.
QString forUpdateClause(const QString& jetSql);

// A text as an SQL string literal: in apostrophes, embedded apostrophes doubled. Every text that
// comes from data, a file or the operator goes into SQL through this or a bound value.
QString sqlQuote(const QString& text);

// Throws VeridonError unless table exists; unless column exists in it (column may be empty).
void requireColumn(const QString& table, const QString& column = QString());

// Runs a batch in one transaction on this thread's connection, and on its pool connection when the
// home is joined to a pool. Nested use joins the outer transaction. The outermost one takes
// data.mdb's write lock at once (BEGIN IMMEDIATE), waiting up to the busy timeout while another
// process holds it, and throws VeridonError (SQLite's "database is locked") when the wait ran out.
// Commits when commit() is called (a failed commit rolls back and throws); rolls back on
// destruction otherwise. On the pool a failed statement is undone alone, so a batch that reports a
// failure and goes on keeps what it did, as on data.mdb.
class Transaction {
public:
    Transaction();
    ~Transaction();
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;
    void commit();

private:
    bool owner_ = false;
    bool done_ = false;
};
