// SPDX-License-Identifier: Apache-2.0
#include "ImageFiles.h"

#include "app/Home.h"
#include "app/JetDialect.h"
#include "app/Settings.h"
#include "app/mdlDB.h"

QString GetBildpfad() {
    return withTrailingSlash(setting<Setting::APP_Bildpfad>());
}

bool IsPathLikeImageName(const QString& name) {
    // The stored rule is the Jet pattern "*[\,:]*"; on this platform "/" separates folders as well,
    // and ".." names the folder above even without a separator after it.
    return jetLike(QStringLiteral("*[\\,:]*"), name) || name.contains(QLatin1Char('/')) ||
           name.contains(QLatin1String("..")) || name == QLatin1String(".");
}

QString RecordImageFile(const QString& bmpName) {
    if (bmpName.isEmpty() || IsPathLikeImageName(bmpName))
        return QString();
    return GetBildpfad() + bmpName;
}

QString DiscardedImageName(const QString& bmpName) {
    const qsizetype dot = bmpName.lastIndexOf(QLatin1Char('.'));
    if (dot < 0)
        return bmpName + QStringLiteral("_d.");
    return bmpName.left(dot) + QStringLiteral("_d") + bmpName.mid(dot);
}
