// SPDX-License-Identifier: Apache-2.0
#include "mdlMessages.h"

#include "Clock.h"
#include "Database.h"
#include "Errors.h"
#include "Home.h"
#include "Settings.h"
#include "TextFile.h"
#include "mdlDB.h"

#include <QRegularExpression>
#include <QStringList>

namespace {

QString cachedLanguage;
QString cachedLanguageHome; // the language belongs to one home's settings

QString lineBreaks(QString text) {
    text.replace(QLatin1String("\\n"), QLatin1String("\r\n"));
    return text;
}

// The stored text for key in the current language, or null when there is none or it cannot be read.
// Texts are looked up for every message and every checked field's name, so the statement is
// prepared once per connection; the rows themselves are read each time.
QVariant lookupText(const QString& key) {
    struct Statement {
        quint64 generation = 0;
        QSqlQuery query;
    };
    thread_local Statement statement;
    try {
        const QString language = GetLanguage();
        database();
        if (statement.generation != connectionGeneration()) {
            statement.query = prepareSql(
                QStringLiteral("SELECT Text FROM sysTexts WHERE Language_ID=? AND Name=? ORDER BY rowid LIMIT 1"));
            statement.generation = connectionGeneration();
        }
        statement.query.bindValue(0, language);
        statement.query.bindValue(1, key);
        execPrepared(statement.query);
        const QVariant text = statement.query.next() ? statement.query.value(0) : QVariant();
        statement.query.finish();
        return text;
    } catch (const std::exception&) {
        statement.generation = 0;
        return QVariant();
    }
}

} // namespace

QString productName() {
    return QStringLiteral("Veridon");
}

QString GetLanguage(bool reload) {
    if (!cachedLanguage.isEmpty() && !reload && cachedLanguageHome == homeDir())
        return cachedLanguage;
    cachedLanguageHome = homeDir();
    QVariant value;
    try {
        value = GetValue(settingName(Setting::APP_Language), QStringLiteral("zvbSys"), QString());
    } catch (const std::exception&) {
        // No database yet: the texts fall back to their defaults anyway.
    }
    cachedLanguage = value.isNull() ? settingDefault(Setting::APP_Language).toString() : value.toString();
    return cachedLanguage;
}

void ReloadLanguage() {
    cachedLanguage.clear();
    GetLanguage(true);
}

QString GetText(const QString& id, const QString& defaultText, const QVariantList& values) {
    const QVariant stored = lookupText(id);
    QString text = stored.isNull() ? defaultText : stored.toString();
    for (int i = 0; i < values.size(); ++i)
        text.replace(QLatin1Char('%') + QString::number(i + 1), values[i].toString());
    return lineBreaks(text);
}

QString GetText(const MessageText& message, const QVariantList& values) {
    return GetText(message.idText(), message.text(), values);
}

int ShowMessage(const MessageText& message, int buttons, const QVariantList& values) {
    return zvMsgBox(GetText(message, values), buttons, QString());
}

QString GetCaption(const QString& defaultText, const QString& key) {
    const QString stored = lookupText(key).toString();
    return stored.isEmpty() ? defaultText : stored;
}

int zvMsgBox(const QString& prompt, int buttons, const QString& title) {
    const QString shownTitle = title.isEmpty() ? productName() : title;
    const QString text = lineBreaks(prompt);
    const int answer = messagePresenter().show(text, buttons, shownTitle);
    WriteLog(QStringLiteral("zvMsgBox"),
             text + QLatin1Char('#') + QString::number(buttons) + QLatin1Char('#') + shownTitle);
    return answer;
}

bool WriteLog(const QString& source, const QString& message) {
    try {
        const QString stamp = appClock().now().toString(QStringLiteral("dd.MM.yyyy HH:mm:ss"));
        return appendTextLine(homePath(QStringLiteral("zvMsgLog.txt")),
                              source + QLatin1Char(';') + message + QLatin1Char(';') + stamp);
    } catch (...) {
        return false;
    }
}

void ReportRuntimeError(const QString& procedure, int number, const QString& description) {
    const QString name = procedure.endsWith(QLatin1String("()")) ? procedure : procedure + QLatin1String("()");
    zvMsgBox(GetText(Msg::RuntimeErr, {name, QString::number(number), description}), MsgBox::Critical, QString());
}

// The detail of a failure the program described itself, in the current language: its message when
// it was described by one; else the language's text for the error number ("Err_" + number)
// followed by the names and values the German description quotes in apostrophes, or the
// description itself when the language has no such text.
QString RuntimeErrorDetail(const VeridonError& error) {
    if (error.message())
        return GetText(*error.message(), error.values());
    if (error.origin() != VeridonError::Origin::Program)
        return error.description();
    const QString general = lookupText(QStringLiteral("Err_") + QString::number(error.number())).toString();
    if (general.isEmpty())
        return error.description();
    QStringList quoted;
    static const QRegularExpression apostrophes(QStringLiteral("'([^']*)'"));
    for (auto it = apostrophes.globalMatch(error.description()); it.hasNext();)
        quoted << it.next().captured(0);
    return quoted.isEmpty() ? general : general + QStringLiteral(": ") + quoted.join(QStringLiteral(", "));
}

void ReportRuntimeError(const QString& procedure, const std::exception& error) {
    if (const auto* v = dynamic_cast<const VeridonError*>(&error))
        ReportRuntimeError(procedure, v->number(), RuntimeErrorDetail(*v));
    else
        ReportRuntimeError(procedure, ErrorNumber::InvalidArgument, QString::fromLocal8Bit(error.what()));
}
