// SPDX-License-Identifier: Apache-2.0
// The connection to the shared pool on a PostgreSQL server. A workstation is joined to a pool when
// APP_ServerDB in its data.mdb holds a URI "postgresql://user@host:port/dbname"; then the pool and
// the master data are read and written on the server (see PoolRouting.h) and data.mdb keeps only
// the workstation's own tables. One connection per thread is opened on first use and kept; when the
// server goes away it is dropped and opened again by the next statement.
#pragma once

#include "Errors.h"

#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QString>

// Number of the error raised when the server of the pool cannot be reached.
inline constexpr int PoolUnreachableError = 3151;

// True when text names a pool server ("postgresql://" or "postgres://") rather than a file.
bool isPoolUri(const QString& text);

// The pool URI of the current home (APP_ServerDB when it is a URI), empty for a workstation that
// keeps everything in data.mdb. Read once per connection of data.mdb.
QString homePoolUri();

// True when the current home is joined to a pool.
bool homeUsesPool();

// The calling thread's connection to the home's pool server, opened when needed. Throws
// VeridonError (PoolUnreachableError, a German text naming the server) when it cannot be opened.
QSqlDatabase poolDatabase();

// Opens a connection to uri, runs nothing, and closes it again. True when the server answers;
// otherwise false with the driver's reason in error.
bool serverAnswers(const QString& uri, QString* error = nullptr);

// Drops the calling thread's pool connection and forgets the home's pool URI (after APP_ServerDB
// changed, the home changed, or the server went away).
void closePool();

// Drops the calling thread's pool connection but keeps the home's pool URI: the next statement
// connects again, on a new connection (after the server went away). failedStatement, the statement
// that met the loss, is kept until the dropped connection is removed, so letting it go does not
// ask the dead connection to free it.
void dropPoolConnection(const QSqlQuery* failedStatement = nullptr);

// Removes the connection dropped last, if any, with its driver: statements still prepared on it
// then let go without a word to the server. Called before the pool is used again and whenever
// kept statements check whether their connection is gone.
void releaseDroppedPoolConnection();

// True when a failed statement's error says the connection to the server is gone, so the next
// statement should connect again.
bool isConnectionLoss(const QSqlError& error);

// Throws the VeridonError for a failed statement on the pool: PoolUnreachableError (and the
// connection dropped) when the connection is gone, the server's error otherwise.
[[noreturn]] void throwPoolError(const QSqlQuery& failed);

// The failure reported when the server cannot be reached: what happened and that the work is kept.
VeridonError poolUnreachable(const QString& uri, const QString& reason);

// Opens a connection named name to uri with the session settings the dialect needs. Throws
// VeridonError (PoolUnreachableError) when the server does not answer.
QSqlDatabase openPoolConnection(const QString& uri, const QString& name);

// Work that only one workstation of a pool may do at a time, as keys of the server's advisory locks.
namespace PoolLockKey {
inline constexpr qint64 AutoImport = 7411502;
inline constexpr qint64 FormFields = 7411503;
} // namespace PoolLockKey

// Holds the pool server's advisory lock key while it lives: a second workstation asking for the
// same key waits until the first lets go (or its connection ends). Does nothing on a workstation
// that is not joined to a pool. Throws like execPoolSql when the lock cannot be asked for.
class PoolLock {
public:
    explicit PoolLock(qint64 key);
    ~PoolLock();
    PoolLock(const PoolLock&) = delete;
    PoolLock& operator=(const PoolLock&) = delete;

private:
    qint64 key_;
    bool held_ = false;
};
