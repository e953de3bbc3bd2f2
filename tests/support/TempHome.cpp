// SPDX-License-Identifier: Apache-2.0
#include "TempHome.h"

#include "app/Database.h"
#include "app/Home.h"
#include "app/PoolConnection.h"
#include "workflow/Workspace.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSqlError>
#include <QSqlQuery>
#include <gtest/gtest.h>

namespace {

// The throwaway server's folder when this program runs as a pool variant.
QString poolServerDir() {
    return qEnvironmentVariable("VERIDON_TEST_POOL");
}

QString readServerFile(const QString& name) {
    QFile file(poolServerDir() + QLatin1Char('/') + name);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()).trimmed() : QString();
}

// A pool variant without a server skips every test and says why, rather than passing on data.mdb.
class PoolServerEnvironment : public ::testing::Environment {
public:
    void SetUp() override {
        if (!poolServerDir().isEmpty() && testPoolServer().isEmpty()) {
            const QString reason = readServerFile(QStringLiteral("skipped"));
            GTEST_SKIP() << "Kein PostgreSQL-Server für die Pool-Tests: "
                         << (reason.isEmpty() ? std::string("nicht gestartet") : reason.toStdString());
        }
    }
};

[[maybe_unused]] ::testing::Environment* const poolEnvironment =
    ::testing::AddGlobalTestEnvironment(new PoolServerEnvironment);

// Runs statements on the test server's maintenance database.
void onServer(const QStringList& statements) {
    {
        QSqlDatabase admin =
            openPoolConnection(testPoolServer() + QStringLiteral("postgres"), QStringLiteral("test-admin"));
        QSqlQuery q(admin);
        for (const QString& sql : statements)
            if (!q.exec(sql))
                throw VeridonError(ErrorNumber::SqlError, q.lastError().text());
    }
    QSqlDatabase::removeDatabase(QStringLiteral("test-admin"));
}

// A new, empty database on the test server for one home.
QString freshPoolDatabase() {
    static int made = 0;
    const QString name = QStringLiteral("t%1_%2").arg(QCoreApplication::applicationPid()).arg(++made);
    onServer({QStringLiteral("DROP DATABASE IF EXISTS ") + name, QStringLiteral("CREATE DATABASE ") + name});
    return name;
}

} // namespace

QString testPoolServer() {
    return poolServerDir().isEmpty() ? QString() : readServerFile(QStringLiteral("uri"));
}

TempHome::TempHome(Content content) {
    if (content == Content::Empty)
        setHome(dir_.path());
    else if (!testPoolServer().isEmpty())
        initPoolHome(dir_.path(), testPoolServer() + (poolDatabase_ = freshPoolDatabase()), 1, content == Content::Demo,
                     false);
    else
        initHome(dir_.path(), content == Content::Demo, false);
}

TempHome::~TempHome() {
    closeDatabase();
    // A database per home would fill the server's disk over a whole test run.
    try {
        if (!poolDatabase_.isEmpty())
            onServer({QStringLiteral("DROP DATABASE IF EXISTS %1 WITH (FORCE)").arg(poolDatabase_)});
    } catch (const VeridonError& e) {
        ADD_FAILURE() << "Die Pool-Datenbank bleibt liegen: " << e.description().toStdString();
    }
}

QString TempHome::dir() const {
    return withTrailingSlash(dir_.path());
}

QString TempHome::path(const QString& relative) const {
    return dir() + relative;
}

QString TempHome::writeFile(const QString& relative, const QByteArray& bytes) const {
    const QString target = path(relative);
    QDir().mkpath(QFileInfo(target).absolutePath());
    QFile file(target);
    if (file.open(QIODevice::WriteOnly))
        file.write(bytes);
    return target;
}

QByteArray TempHome::readFile(const QString& relative) const {
    QFile file(path(relative));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}
