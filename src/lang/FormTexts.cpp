// SPDX-License-Identifier: Apache-2.0
#include "FormTexts.h"

#include "app/Database.h"
#include "app/mdlMessages.h"

FormTexts FormTexts::load(const QString& formName) {
    FormTexts texts;
    // The database's LIKE follows Jet: "*" is any run, "_" is a plain character.
    QSqlQuery q = execSql(QStringLiteral("SELECT Name, Text FROM sysTexts WHERE Language_ID=? AND Name LIKE ? "
                                         "ORDER BY rowid"),
                          {GetLanguage(), formName + QStringLiteral("_*")});
    while (q.next()) {
        const QString text = q.value(1).toString();
        const QString key = q.value(0).toString().toLower();
        // Only the first row of a key counts, even when its text is empty: as a single lookup would.
        if (!texts.texts_.contains(key))
            texts.texts_.insert(key, text);
    }
    return texts;
}

std::optional<QString> FormTexts::find(const QString& key) const {
    const auto it = texts_.constFind(key.toLower());
    if (it == texts_.constEnd() || it->isEmpty())
        return std::nullopt;
    return *it;
}

QString FormTexts::caption(const QString& defaultText, const QString& key) const {
    return find(key).value_or(defaultText);
}
