// SPDX-License-Identifier: Apache-2.0
#include "QtTranslations.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>

#include <memory>

namespace {
std::unique_ptr<QTranslator> installed;
}

bool LoadQtTranslations(const QString& languageCode) {
    if (installed) {
        QCoreApplication::removeTranslator(installed.get());
        installed.reset();
    }
    const QString code = languageCode.trimmed().toLower();
    if (code.isEmpty() || code == QLatin1String("en"))
        return false;
    auto translator = std::make_unique<QTranslator>();
    if (!translator->load(QLocale(code), QStringLiteral("qtbase"), QStringLiteral("_"),
                          QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        return false;
    QCoreApplication::installTranslator(translator.get());
    installed = std::move(translator);
    return true;
}
