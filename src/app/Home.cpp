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

QString masterDataDir() {
    const QString fromEnv = qEnvironmentVariable("VERIDON_DATA");
    if (!fromEnv.isEmpty())
        return withTrailingSlash(fromEnv);
    return withTrailingSlash(QStringLiteral(VERIDON_DATA_DIR));
}
