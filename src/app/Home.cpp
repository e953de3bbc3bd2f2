// SPDX-License-Identifier: Apache-2.0
#include "Home.h"

#include "Database.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

namespace {
QString currentHome;
}

QString withTrailingSlash(const QString& folder) {
    if (folder.isEmpty() || folder.endsWith(QLatin1Char('/')))
        return folder;
    return folder + QLatin1Char('/');
}

QString resolveHome(const QString& explicitHome) {
    QString folder = explicitHome;
    if (folder.isEmpty())
        folder = qEnvironmentVariable("VERIDON_HOME");
    if (folder.isEmpty() && QCoreApplication::instance())
        folder = QCoreApplication::applicationDirPath();
    if (folder.isEmpty())
        folder = QDir::currentPath();
    setHome(folder);
    return homeDir();
}

void setHome(const QString& folder) {
    const QString absolute = withTrailingSlash(QFileInfo(folder).absoluteFilePath());
    if (absolute != currentHome)
        closeDatabase();
    currentHome = absolute;
}

QString homeDir() {
    if (currentHome.isEmpty())
        resolveHome(QString());
    return currentHome;
}

QString homePath(const QString& fileName) {
    return homeDir() + fileName;
}

namespace {

// The folder of the running executable, also before (or without) a QCoreApplication.
QString programDir() {
    if (QCoreApplication::instance())
        return QCoreApplication::applicationDirPath();
    return QFileInfo(QFileInfo(QStringLiteral("/proc/self/exe")).canonicalFilePath()).absolutePath();
}

bool isInside(const QString& folder, const QString& parent) {
    const QString f = QFileInfo(folder).canonicalFilePath();
    const QString p = QFileInfo(parent).canonicalFilePath();
    return !f.isEmpty() && !p.isEmpty() && (f == p || f.startsWith(withTrailingSlash(p)));
}

} // namespace

QString masterDataDirFor(const QString& programDir) {
    // VERIDON_DATA_FROM_PROGRAM is the install layout's path from the programs' folder to the data
    // folder (normally "../share/veridon"), so a prefix can be moved as a whole.
    const QString installed = QDir::cleanPath(programDir + QStringLiteral("/" VERIDON_DATA_FROM_PROGRAM));
    if (QFileInfo(installed + QStringLiteral("/tables")).isDir())
        return withTrailingSlash(installed);
    if (isInside(programDir, QStringLiteral(VERIDON_BUILD_DIR)))
        return withTrailingSlash(QStringLiteral(VERIDON_DATA_DIR));
    return withTrailingSlash(installed);
}

QString masterDataDir() {
    const QString fromEnv = qEnvironmentVariable("VERIDON_DATA");
    if (!fromEnv.isEmpty())
        return withTrailingSlash(fromEnv);
    return masterDataDirFor(programDir());
}
