// SPDX-License-Identifier: Apache-2.0
#include "EhicCardChecks.h"

#include "CheckCommands.h"
#include "PersonalNumberRules.h"
#include "mdlCheckHelper.h"

#include "app/Database.h"
#include "app/Errors.h"
#include "model/FormModel.h"

#include <QSqlQuery>

namespace {

struct AsteriskRule {
    const char* state;
    bool personalNumber;
    bool cardNumber;
};

// States whose European card sits on the back of the national health card and whose back is
// filled with asterisks when the holder has no entitlement abroad. Austria: the e-card then prints
// only the card number and fills every other field with "*****" (Austrian social insurance, its
// information on the European side of the e-card). A state is added here only on such a published
// statement; elsewhere asterisks warn and the operator decides. The card number identifies the
// card itself and is printed on every card, so no state fills it with asterisks.
constexpr AsteriskRule asteriskRules[] = {
    {"AT", true, false},
};

bool unknownState(const QString& state) {
    return state.trimmed().isEmpty() || state.contains(QLatin1Char('?'));
}

bool allDigits(const QString& text) {
    for (const QChar c : text)
        if (c < QLatin1Char('0') || c > QLatin1Char('9'))
            return false;
    return true;
}

// The ISO 3166-1 numeric code of state from sysStates, three digits, or "" when the state is not
// listed or has none. Throws VeridonError when the table has no such column.
QString isoNumericOf(const QString& state) {
    struct Cached {
        quint64 generation = 0;
        QSqlQuery query;
    };
    thread_local Cached cached;
    if (cached.generation != connectionGeneration()) {
        requireColumn(QStringLiteral("sysStates"), QStringLiteral("State_IsoNumeric"));
        cached.query = prepareSql(QStringLiteral("SELECT State_IsoNumeric FROM sysStates WHERE State_ID=? "
                                                 "ORDER BY rowid LIMIT 1"));
        cached.generation = connectionGeneration();
    }
    cached.query.bindValue(0, state.trimmed().toUpper());
    execPrepared(cached.query);
    const QString code = cached.query.next() ? cached.query.value(0).toString().trimmed() : QString();
    cached.query.finish();
    if (code.isEmpty() || code.size() > 3 || !allDigits(code))
        return QString();
    return code.rightJustified(3, QLatin1Char('0'));
}

} // namespace

bool isAsteriskField(const QString& value) {
    bool star = false;
    for (const QChar c : value) {
        if (c == QLatin1Char('*'))
            star = true;
        else if (c != QLatin1Char(' '))
            return false;
    }
    return star;
}

bool stateFillsWithAsterisks(const QString& state, CardField field) {
    const QString code = state.trimmed().toUpper();
    for (const AsteriskRule& r : asteriskRules)
        if (code == QLatin1String(r.state))
            return field == CardField::PersonalNumber ? r.personalNumber : r.cardNumber;
    return false;
}

qint16 EhicKarte(const QString& value, const QString& state, QString& problem) {
    if (value.isEmpty())
        return CheckResult::Passed;
    if (isAsteriskField(value))
        return stateFillsWithAsterisks(state, CardField::CardNumber) ? CheckResult::Passed : CheckResult::Warning;
    if (value.size() != 20 || !allDigits(value) || !value.startsWith(QLatin1String("80")))
        return CheckResult::Warning;
    if (unknownState(state))
        return CheckResult::Passed;
    QString iso;
    try {
        iso = isoNumericOf(state);
    } catch (const VeridonError& e) {
        problem = e.description();
        return CheckResult::Error;
    }
    return iso.isEmpty() || value.mid(2, 3) == iso ? CheckResult::Passed : CheckResult::Warning;
}

qint16 PersonenNr(const QString& value, const QString& state) {
    if (value.isEmpty() || unknownState(state))
        return CheckResult::Passed;
    if (isAsteriskField(value))
        return stateFillsWithAsterisks(state, CardField::PersonalNumber) ? CheckResult::Passed : CheckResult::Warning;
    return personalNumberFits(state, value) ? CheckResult::Passed : CheckResult::Warning;
}

qint16 ehicCardCheck(const CheckCommand& command, const QString& value, QString& problem) {
    if (WerteArray().indexOf(command.text1) < 0) {
        problem = QStringLiteral("Das Feld '%1' gibt es im Beleg nicht.").arg(command.text1);
        return CheckResult::Error;
    }
    const QString state = WerteArray().GetValue(command.text1);
    return command.keyword == CheckKeyword::EhicKarte ? EhicKarte(value, state, problem) : PersonenNr(value, state);
}
