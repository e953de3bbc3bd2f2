// SPDX-License-Identifier: Apache-2.0
#include "PoolConnection.h"

#include "Settings.h"

#include "Database.h"
#include "Errors.h"

#include <QSqlError>
#include <QSqlQuery>
#include <QThread>
#include <QUrl>

namespace {

struct PoolThread {
    QString name;
    // A connection dropped after the server went away. Statements prepared on it (kept by their
    // owners, or the one that failed) would ask the server to free them when they are let go, and
    // on a dead or new connection that fails with a warning, or inside a transaction spoils it. So
    // the dropped connection is removed, which deletes its driver and lets them go silently, before
    // the pool is used again and before any owner compares connectionGeneration().
    QString retired;
    QList<QSqlQuery> failed; // the statements that met the loss, kept until their driver is gone
    int opened = 0;
    ~PoolThread() { close(); }
    void removeRetired() {
        if (retired.isEmpty())
            return;
        QSqlDatabase::removeDatabase(retired);
        retired.clear();
        failed.clear();
    }
    void close() {
        removeRetired();
        removeConnection(name);
        name.clear();
    }
};

thread_local PoolThread pool;
thread_local bool uriKnown = false;
thread_local QString uriOfHome;

} // namespace

bool isPoolUri(const QString& text) {
    const QString t = text.trimmed();
    return t.startsWith(QLatin1String("postgresql://"), Qt::CaseInsensitive) ||
           t.startsWith(QLatin1String("postgres://"), Qt::CaseInsensitive);
}

QString homePoolUri() {
    if (uriKnown)
        return uriOfHome;
    QString uri;
    {
        // Read straight from data.mdb: the statement layer asks this to route, so it cannot route.
        QSqlQuery q(database());
        if (q.exec(QStringLiteral("SELECT %1 FROM zvbSys ORDER BY rowid LIMIT 1")
                       .arg(settingName(Setting::APP_ServerDB))) &&
            q.next())
            uri = q.value(0).toString().trimmed();
    }
    uriOfHome = isPoolUri(uri) ? uri : QString();
    uriKnown = true;
    return uriOfHome;
}

bool homeUsesPool() {
    return !homePoolUri().isEmpty();
}

VeridonError poolUnreachable(const QString& uri, const QString& reason) {
    QUrl url(uri);
    url.setPassword(QString());
    return VeridonError(PoolUnreachableError, Msg::ErrPoolUnreachable, {url.toString(), reason.trimmed()});
}

namespace {

// Opens db (already set up for uri) and sets the session up. Returns the reason when it fails.
QString openSession(QSqlDatabase& db) {
    if (!db.open())
        return db.lastError().text();
    QSqlQuery session(db);
    // The pool's own LIKE and functions live in the schema public and must be found before the
    // built-in ones; notices would only clutter the log.
    if (!session.exec(QStringLiteral("SET search_path TO public, pg_catalog")) ||
        !session.exec(QStringLiteral("SET client_min_messages TO warning"))) {
        const QString reason = session.lastError().text();
        db.close();
        return reason;
    }
    return QString();
}

} // namespace

QSqlDatabase openPoolConnection(const QString& uri, const QString& name) {
    const QUrl url(uri.trimmed());
    QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QPSQL"), name);
    db.setHostName(url.host().isEmpty() ? QStringLiteral("localhost") : url.host());
    db.setPort(url.port(5432));
    db.setUserName(url.userName());
    db.setPassword(url.password());
    db.setDatabaseName(url.path().mid(1));
    // A server that does not answer must not freeze the workstation for minutes.
    db.setConnectOptions(QStringLiteral("connect_timeout=5"));
    const QString reason =
        db.isValid() ? openSession(db) : QStringLiteral("Der PostgreSQL-Treiber (QPSQL) ist nicht installiert.");
    if (!reason.isEmpty()) {
        db = QSqlDatabase();
        QSqlDatabase::removeDatabase(name);
        throw poolUnreachable(uri, reason);
    }
    return db;
}

QSqlDatabase poolDatabase() {
    pool.removeRetired();
    if (!pool.name.isEmpty()) {
        QSqlDatabase db = QSqlDatabase::database(pool.name, false);
        if (db.isOpen())
            return db;
        // The driver closed it itself when it found the server gone: dropped like any other loss.
        db = QSqlDatabase();
        dropPoolConnection();
        pool.removeRetired();
    }
    const QString uri = homePoolUri();
    if (uri.isEmpty())
        throw VeridonError(PoolUnreachableError, Msg::ErrNoPool);
    // Each connection gets a name of its own: the one dropped before may still be waiting for removal.
    const QString name = QStringLiteral("veridon-pool-%1-%2")
                             .arg(reinterpret_cast<quintptr>(QThread::currentThreadId()))
                             .arg(++pool.opened);
    QSqlDatabase db = openPoolConnection(uri, name);
    pool.name = name;
    notePoolConnectionChanged();
    return db;
}

bool serverAnswers(const QString& uri, QString* error) {
    const QString name = QStringLiteral("veridon-probe-%1").arg(reinterpret_cast<quintptr>(QThread::currentThreadId()));
    try {
        { openPoolConnection(uri, name).close(); }
        QSqlDatabase::removeDatabase(name);
        return true;
    } catch (const VeridonError& e) {
        if (error)
            *error = e.description();
        return false;
    }
}

void dropPoolConnection(const QSqlQuery* failedStatement) {
    if (failedStatement)
        pool.failed << *failedStatement;
    if (!pool.name.isEmpty()) {
        pool.removeRetired();
        QSqlDatabase::database(pool.name, false).close();
        pool.retired = pool.name;
        pool.name.clear();
    }
    notePoolConnectionChanged();
}

void releaseDroppedPoolConnection() {
    pool.removeRetired();
}

void closePool() {
    pool.close();
    uriKnown = false;
    uriOfHome.clear();
}

void throwPoolError(const QSqlQuery& failed) {
    const QSqlError error = failed.lastError();
    if (isConnectionLoss(error)) {
        dropPoolConnection(&failed);
        throw poolUnreachable(homePoolUri(), error.text());
    }
    throw VeridonError(ErrorNumber::SqlError, error.text());
}

bool isConnectionLoss(const QSqlError& error) {
    // Class 08 is a connection failure, 57P an administrator's shutdown; libpq's own reports of a
    // broken socket come without a state.
    const QString state = error.nativeErrorCode();
    if (state.startsWith(QLatin1String("08")) || state.startsWith(QLatin1String("57P")))
        return true;
    const QString text = error.text();
    return state.isEmpty() && (text.contains(QLatin1String("connection"), Qt::CaseInsensitive) ||
                               text.contains(QLatin1String("server closed"), Qt::CaseInsensitive));
}

PoolLock::PoolLock(qint64 key) : key_(key) {
    if (!homeUsesPool())
        return;
    execPoolSql(QStringLiteral("SELECT pg_advisory_lock(%1)").arg(key_));
    held_ = true;
}

PoolLock::~PoolLock() {
    if (!held_)
        return;
    try {
        execPoolSql(QStringLiteral("SELECT pg_advisory_unlock(%1)").arg(key_));
    } catch (const std::exception&) {
        // A connection that is gone has released its locks with it.
    }
}
