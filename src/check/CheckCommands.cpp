// SPDX-License-Identifier: Apache-2.0
#include "CheckCommands.h"

#include "mdlCheckHelper.h"

#include "app/mdlMessages.h"

#include <atomic>
#include <unordered_map>

namespace {

struct KeywordName {
    const char* name;
    CheckKeyword keyword;
};

constexpr KeywordName keywords[] = {
    {"Pflichtfeld", CheckKeyword::Pflichtfeld},
    {"Zahl", CheckKeyword::Zahl},
    {"Gleitkommazahl", CheckKeyword::Gleitkommazahl},
    {"Gleitkommazahllaenge", CheckKeyword::Gleitkommazahllaenge},
    {"Laenge", CheckKeyword::Laenge},
    {"Bereich", CheckKeyword::Bereich},
    {"Gleitkommazahlbereich", CheckKeyword::Gleitkommazahlbereich},
    {"Werteliste", CheckKeyword::Werteliste},
    {"Lookup", CheckKeyword::Lookup},
    {"Zeit", CheckKeyword::Zeit},
    {"Waehrung", CheckKeyword::Waehrung},
    {"Datum", CheckKeyword::Datum},
    {"Datum_Bereich", CheckKeyword::DatumBereich},
    {"EhicKarte", CheckKeyword::EhicKarte},
    {"PersonenNr", CheckKeyword::PersonenNr},
};

CheckKeyword keywordOf(QStringView name) {
    for (const KeywordName& k : keywords)
        if (name == QLatin1String(k.name))
            return k.keyword;
    return CheckKeyword::Unknown;
}

// Reads the parameters of one command into it; a parameter that does not fit sets problem.
class ParameterReader {
public:
    ParameterReader(CheckCommand& command, const QStringList& parameters)
        : command_(command), parameters_(parameters) {}

    // Parameter index as a whole number; false (and problem set) when missing or not a number.
    bool whole(int index, qint64& number) {
        const QString text = parameter(index);
        if (!present(index, text))
            return false;
        bool ok = false;
        number = text.toLongLong(&ok);
        if (!ok)
            fail(QStringLiteral("'%1' ist keine ganze Zahl.").arg(text));
        return ok;
    }

    // Parameter index as a decimal number written with "." or ","; text gets it with "," (the
    // workstation's notation, as the message shows it).
    bool decimal(int index, double& number, QString& text) {
        text = parameter(index);
        if (!present(index, text))
            return false;
        text.replace(QLatin1Char('.'), QLatin1Char(','));
        QString readable = text;
        readable.replace(QLatin1Char(','), QLatin1Char('.'));
        bool ok = false;
        number = readable.toDouble(&ok);
        if (!ok)
            fail(QStringLiteral("'%1' ist keine Zahl.").arg(parameter(index)));
        return ok;
    }

    // Parameter index as a day count or blank.
    QString daysOrBlank(int index) {
        const QString text = parameter(index);
        if (!text.isEmpty()) {
            bool ok = false;
            text.toLongLong(&ok);
            if (!ok)
                fail(QStringLiteral("'%1' ist keine Anzahl von Tagen.").arg(text));
        }
        return text;
    }

    // Parameter index without blanks around it; "" when missing.
    QString parameter(int index) const { return index < parameters_.size() ? parameters_[index].trimmed() : QString(); }

private:
    bool present(int index, const QString& text) {
        if (index < parameters_.size() && !text.isEmpty())
            return true;
        fail(QStringLiteral("Angabe Nr. %1 in den Klammern fehlt.").arg(index + 1));
        return false;
    }
    void fail(const QString& problem) {
        if (command_.problem.isEmpty())
            command_.problem = problem;
    }

    CheckCommand& command_;
    const QStringList& parameters_;
};

CheckCommand parseCommand(const QString& text) {
    CheckCommand command;
    command.text = text;
    const qsizetype open = text.indexOf(QLatin1Char('('));
    if (open < 0) {
        command.keyword = CheckKeyword::NoParenthesis;
        return command;
    }
    command.keyword = keywordOf(QStringView(text).left(open));
    qsizetype close = text.lastIndexOf(QLatin1Char(')'));
    if (close < open)
        close = text.size();
    const QString inside = text.mid(open + 1, close - open - 1);
    const QStringList parameters = inside.split(QLatin1Char(','));
    const QString fromParenthesis = text.mid(open);
    ParameterReader read(command, parameters);

    switch (command.keyword) {
    case CheckKeyword::Gleitkommazahl:
        // A single sign in the parentheses names the separator (Gleitkommazahl(.) for fields that
        // take points); otherwise the workstation's ",".
        command.separator =
            inside.size() == 1 && !inside[0].isDigit() && !inside[0].isSpace() ? inside[0] : decimalSeparator();
        break;
    case CheckKeyword::Gleitkommazahllaenge:
        read.whole(0, command.whole1);
        read.whole(1, command.whole2);
        command.suffix = read.parameter(0) + QLatin1Char(',') + read.parameter(1);
        break;
    case CheckKeyword::Laenge:
        if (read.whole(0, command.whole1))
            command.suffix = QString::number(command.whole1);
        break;
    case CheckKeyword::Waehrung:
        read.whole(0, command.whole1);
        break;
    case CheckKeyword::Bereich:
        read.whole(0, command.whole1);
        read.whole(1, command.whole2);
        command.suffix = fromParenthesis;
        break;
    case CheckKeyword::Gleitkommazahlbereich: {
        QString minText, maxText;
        read.decimal(0, command.decimal1, minText);
        read.decimal(1, command.decimal2, maxText);
        command.suffix = QLatin1Char('(') + minText + QLatin1Char(',') + maxText + QLatin1Char(')');
        break;
    }
    case CheckKeyword::Werteliste:
        command.suffix = fromParenthesis;
        break;
    case CheckKeyword::Lookup:
        command.text1 = read.parameter(0);
        command.text2 = read.parameter(1);
        command.text3 = parameters.mid(2).join(QLatin1Char(',')).trimmed();
        if (command.text1.isEmpty() || command.text2.isEmpty())
            command.problem = QStringLiteral("Tabelle und Spalte der Stammdaten müssen angegeben sein.");
        break;
    case CheckKeyword::DatumBereich:
        command.text1 = read.daysOrBlank(0);
        command.text2 = read.daysOrBlank(1);
        break;
    case CheckKeyword::EhicKarte:
    case CheckKeyword::PersonenNr:
        command.text1 = read.parameter(0);
        if (command.text1.isEmpty())
            command.problem = QStringLiteral("Das Feld mit dem ausstellenden Staat muss angegeben sein.");
        break;
    default:
        break;
    }
    return command;
}

std::atomic<quint64> parseCount = 0;

struct CachedList {
    QString pruefungen;
    CheckCommandList commands;
};

} // namespace

CheckCommandList parseCheckCommands(const QString& pruefungen) {
    ++parseCount;
    CheckCommandList commands;
    QStringView rest(pruefungen);
    while (!rest.isEmpty()) {
        const qsizetype end = rest.indexOf(QLatin1Char(';'));
        if (end < 0) {
            commands.push_back(parseCommand(rest.toString()));
            break;
        }
        commands.push_back(parseCommand(rest.left(end).toString()));
        rest = rest.mid(end + 1);
    }
    return commands;
}

const CheckCommandList& cachedCheckCommands(const QString& fieldName, const QString& pruefungen) {
    // Node-based, so a reference handed out stays valid while other fields are added.
    thread_local std::unordered_map<QString, CachedList> cache;
    auto it = cache.find(fieldName);
    if (it != cache.end() && it->second.pruefungen == pruefungen)
        return it->second.commands;
    CachedList parsed{pruefungen, parseCheckCommands(pruefungen)};
    for (const CheckCommand& command : std::as_const(parsed.commands))
        if (!command.problem.isEmpty())
            WriteLog(QStringLiteral("standardcheck_onefield"),
                     QStringLiteral("Feld '%1', Befehl '%2': %3").arg(fieldName, command.text, command.problem));
    if (it == cache.end())
        it = cache.emplace(fieldName, std::move(parsed)).first;
    else
        it->second = std::move(parsed);
    return it->second.commands;
}

quint64 checkCommandParseCount() {
    return parseCount;
}
