// SPDX-License-Identifier: Apache-2.0
#include "Workspace.h"

#include "app/Database.h"
#include "app/Home.h"
#include "app/JetDialectPg.h"
#include "app/MasterData.h"
#include "app/PoolConnection.h"
#include "app/PoolRouting.h"
#include "app/Settings.h"
#include "app/TextFile.h"
#include "app/mdlDB.h"
#include "model/Schema.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>

namespace {

bool isTextFile(const QString& path) {
    const QString suffix = QFileInfo(path).suffix().toLower();
    return suffix == QLatin1String("ini") || suffix == QLatin1String("xml") || suffix == QLatin1String("txt");
}

// Copies the tree under from into to. Text files are converted to the program's file encoding
// (Windows-1252, CR LF); everything else is copied byte for byte.
void installTree(const QString& from, const QString& to, bool overwrite) {
    if (!QFileInfo(from).isDir())
        return;
    QDirIterator it(from, QDir::Files, QDirIterator::Subdirectories);
    while (it.hasNext()) {
        const QString source = it.next();
        const QString target = to + QDir(from).relativeFilePath(source);
        if (QFileInfo::exists(target)) {
            if (!overwrite)
                continue;
            QFile::remove(target);
        }
        QDir().mkpath(QFileInfo(target).absolutePath());
        bool ok = false;
        if (isTextFile(source)) {
            QFile in(source);
            ok = in.open(QIODevice::ReadOnly) && writeTextFile(target, QString::fromUtf8(in.readAll()));
        } else {
            ok = QFile::copy(source, target);
        }
        if (!ok)
            throw VeridonError(ErrorNumber::PathNotFound, Msg::ErrHomeFileWrite, {target});
    }
}

} // namespace

QStringList homeWorkingFolders() {
    return {QStringLiteral("images"), QStringLiteral("scan"),   QStringLiteral("import"),
            QStringLiteral("export"), QStringLiteral("backup"), QStringLiteral("test")};
}

namespace {

// Makes folder the home and removes an existing data.mdb when force allows it.
void prepareHomeFolder(const QString& folder, bool force) {
    if (!QDir().mkpath(folder))
        throw VeridonError(ErrorNumber::PathNotFound, Msg::ErrFolderCreate, {folder});
    setHome(folder);
    const QString dbPath = homePath(QStringLiteral("data.mdb"));
    if (QFileInfo::exists(dbPath)) {
        if (!force)
            throw VeridonError(HomeExistsError, Msg::ErrHomeExists, {homeDir()});
        closeDatabase();
        for (const char* suffix : {"", "-wal", "-shm"})
            QFile::remove(dbPath + QLatin1String(suffix));
    }
}

} // namespace

void initHome(const QString& folder, bool demo, bool force) {
    prepareHomeFolder(folder, force);
    const QString dbPath = homePath(QStringLiteral("data.mdb"));
    createDatabaseFile(dbPath);
    createSchema();
    const QString data = masterDataDir();
    loadTableFolder(data + QStringLiteral("tables"));
    installTree(data + QStringLiteral("home/"), homeDir(), force);
    for (const QString& sub : homeWorkingFolders())
        QDir().mkpath(homePath(sub));
    if (demo) {
        loadTableFolder(data + QStringLiteral("demo/tables"));
        installTree(data + QStringLiteral("demo/home/"), homeDir(), true);
    }
}

PoolJoin initPoolHome(const QString& folder, const QString& uri, qint16 workstation, bool demo, bool force) {
    QString reason;
    if (!serverAnswers(uri, &reason))
        throw VeridonError(PoolUnreachableError, reason);
    prepareHomeFolder(folder, force);
    createDatabaseFile(homePath(QStringLiteral("data.mdb")));
    const QString data = masterDataDir();
    createTables(localTables());
    loadTableFolder(data + QStringLiteral("tables"), localTables());
    setSetting<Setting::APP_ServerDB>(uri.trimmed());
    setSetting<Setting::APP_KorrID>(workstation);
    // Scan file names carry this number, so workstations sharing an image folder never collide.
    setSetting<Setting::Scan_RechnerId>(QString::number(workstation).rightJustified(2, QLatin1Char('0')));
    closePool(); // the home is joined from here on: pool tables go to the server

    PoolJoin join;
    {
        Transaction transaction;
        // Workstations joining at the same moment wait here for the first one to create the pool.
        execPoolSql(QStringLiteral("SELECT pg_advisory_xact_lock(7411501)"));
        if (!tableExists(GetValuesTable())) {
            for (const QString& statement : poolDialectObjects())
                execPoolSql(statement);
            createTables(poolTables());
            loadTableFolder(data + QStringLiteral("tables"), poolTables());
            join.createdPool = true;
        }
        transaction.commit();
    }
    installTree(data + QStringLiteral("home/"), homeDir(), force);
    for (const QString& sub : homeWorkingFolders())
        QDir().mkpath(homePath(sub));
    if (demo && join.createdPool)
        installTree(data + QStringLiteral("demo/home/"), homeDir(), true);
    return join;
}
