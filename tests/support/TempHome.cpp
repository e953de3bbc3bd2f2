#include "TempHome.h"

#include "app/Database.h"
#include "app/Home.h"
#include "app/Workspace.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

TempHome::TempHome(Content content) {
    if (content == Content::Empty)
        setHome(dir_.path());
    else
        initHome(dir_.path(), content == Content::Demo, false);
}

TempHome::~TempHome() {
    closeDatabase();
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

QString testDataPath(const QString& relative) {
    return QStringLiteral(VERIDON_TEST_DATA "/") + relative;
}
