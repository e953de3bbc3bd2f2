// SPDX-License-Identifier: Apache-2.0
#include "mdlCheck.h"

#include "CheckCommands.h"
#include "CheckLookup.h"
#include "CheckMessages.h"
#include "EhicCardChecks.h"
#include "mdlCheckHelper.h"

#include "app/mdlMessages.h"
#include "model/FormModel.h"

#include <QHash>
#include <optional>

namespace {

const QChar paddingCode = QLatin1Char('1');

QString codeAt(const QString& statusString, int position) {
    if (position <= 0 || position > statusString.size())
        return QString();
    return statusString.mid(position - 1, 1);
}

void putCode(QString& statusString, int position, QChar code) {
    if (position <= 0)
        return;
    if (statusString.size() < position)
        statusString = statusString.leftJustified(position, paddingCode);
    statusString[position - 1] = code;
}

QChar firstCharacter(const QString& code) {
    return code.isEmpty() ? paddingCode : code.at(0);
}

// The definition of fieldName without a message, or nullptr. Checking all fields asks for every
// column of every record, so the row found is remembered by the name as spelled; the remembered
// row is used only while it still holds a field of that name (the array may have been filled
// again).
const FieldDefinition* definitionOf(const QString& fieldName) {
    thread_local QHash<QString, qsizetype> rowByName;
    const QVector<FieldDefinition>& rows = FelderArray().definitions();
    const auto known = rowByName.constFind(fieldName);
    if (known != rowByName.constEnd() && *known < rows.size()) {
        const FieldDefinition& row = rows[*known];
        if (row.name == fieldName || row.name.compare(fieldName, Qt::CaseInsensitive) == 0)
            return &row;
    }
    const FieldDefinition* found = FelderArray().find(fieldName);
    if (found)
        rowByName.insert(fieldName, found - rows.constData());
    return found;
}

// The satznummer of fieldName; an unknown field is reported by the getter and counts as 0.
int positionOf(const QString& fieldName) {
    if (const FieldDefinition* f = definitionOf(fieldName))
        return f->satznummer;
    return FelderArray().GetSatznummer(fieldName);
}

// What one command said about the value: its result and, when it failed, its message.
struct Outcome {
    qint16 result = CheckResult::Passed;
    const MessageText* message = nullptr;
    QString suffix;
    QString problem; // the command could not be run as written
};

Outcome runCommand(const CheckCommand& command, const QString& value) {
    Outcome o;
    o.suffix = command.suffix;
    const QChar separator = decimalSeparator();
    switch (command.keyword) {
    case CheckKeyword::Pflichtfeld:
        o.result = Pflichtfeld(value);
        o.message = &CheckMsg::Pflicht;
        break;
    case CheckKeyword::Zahl:
        o.result = NurZiffern(value);
        o.message = &CheckMsg::Integer;
        break;
    case CheckKeyword::Gleitkommazahl:
        o.result = Gleitkommazahl(command.separator, value);
        o.message = &CheckMsg::Double;
        break;
    case CheckKeyword::Gleitkommazahllaenge:
        o.result = Gleitkommazahllaenge(qint32(command.whole1), qint32(command.whole2), value, separator);
        o.message = &CheckMsg::DoubleLaenge;
        break;
    case CheckKeyword::Laenge:
        o.result = Laenge(qint32(command.whole1), value);
        o.message = &CheckMsg::Laenge;
        break;
    case CheckKeyword::Bereich:
        // Digits first, so a letter is a number fault and never a failed conversion.
        if (NurZiffern(value) != CheckResult::Passed) {
            o.result = CheckResult::Error;
            o.message = &CheckMsg::Integer;
            o.suffix.clear();
        } else {
            o.result = Bereich(command.whole1, command.whole2, value);
            o.message = &CheckMsg::Bereich;
        }
        break;
    case CheckKeyword::Gleitkommazahlbereich:
        // Only a value of digits is measured; one with a separator or any other sign passes here.
        if (NurZiffern(value) == CheckResult::Passed)
            o.result = Gleitkommazahlbereich(command.decimal1, command.decimal2, value);
        o.message = &CheckMsg::BereichDouble;
        break;
    case CheckKeyword::Werteliste:
        o.result = Werteliste(command.text, value);
        o.message = &CheckMsg::Werteliste;
        break;
    case CheckKeyword::Lookup:
        o.result = lookupCheck(command, value, o.problem);
        o.message = &CheckMsg::Lookup;
        break;
    case CheckKeyword::Zeit:
        o.result = Zeit(value);
        o.message = &CheckMsg::Time;
        break;
    case CheckKeyword::Waehrung:
        o.result = Waehrung(value, separator, qint32(command.whole1));
        o.message = &CheckMsg::Waehrung;
        break;
    case CheckKeyword::Datum:
        o.result = Datum(value, DatumMode::Valid, QString(), QString());
        o.message = &CheckMsg::Date;
        break;
    case CheckKeyword::DatumBereich:
        o.result = Datum(value, DatumMode::Range, command.text1, command.text2);
        o.message = &CheckMsg::DateBereich;
        break;
    case CheckKeyword::EhicKarte:
    case CheckKeyword::PersonenNr:
        o.result = ehicCardCheck(command, value, o.problem);
        o.message = command.keyword == CheckKeyword::EhicKarte ? &CheckMsg::EhicKarte : &CheckMsg::PersonenNr;
        if (o.problem.isEmpty()) // the field exists: its state follows the message
            o.suffix = WerteArray().GetValue(command.text1).trimmed().toUpper();
        break;
    case CheckKeyword::NoParenthesis:
    case CheckKeyword::Unknown:
        o.result = CheckResult::Error;
        break;
    }
    return o;
}

void appendMessage(QString& errorText, const QString& message) {
    errorText += QStringLiteral("\r\n") + message;
}

} // namespace

qint16 KombiniereErg(qint16& total, qint16 one) {
    if (one == CheckResult::Error)
        total = CheckResult::Error;
    else if (one == CheckResult::Warning && total == CheckResult::Passed)
        total = CheckResult::Warning;
    return total;
}

QString statusCodeOf(const QString& statusString, const QString& fieldName) {
    return codeAt(statusString, positionOf(fieldName));
}

void setStatusCode(QString& statusString, const QString& fieldName, const QString& code) {
    putCode(statusString, positionOf(fieldName), firstCharacter(code));
}

qint16 standardcheck_onefield(const QString& fieldName, const QString& value, QString& errorText,
                              QString& statusString) {
    qint16 result = CheckResult::Passed;
    const bool ran = RunReported(QStringLiteral("standardcheck_onefield"), [&] {
        const FieldDefinition* field = definitionOf(fieldName);
        if (!field) {
            FelderArray().GetGelbeFelder(fieldName); // reports the missing definition
            return;
        }
        // The flag is held as -1 for "yes": any value but 0 marks a field for checking.
        if (field->gelbeFelder == 0 || field->pruefe == 0)
            return;
        const int position = field->satznummer;
        // The display name is a text look-up; it is needed only for a message.
        std::optional<QString> shownName;
        const auto displayName = [&]() -> const QString& {
            if (!shownName)
                shownName = GetText(field->fehlertextname, field->fehlertextname);
            return *shownName;
        };

        putCode(statusString, position, QLatin1Char('1'));
        if (value.contains(QLatin1Char('?'))) {
            putCode(statusString, position, QLatin1Char('3'));
            result = CheckResult::Error;
            appendMessage(errorText, GetText(Msg::Txt_CheckQM, {displayName()}));
        } else {
            const QChar okCode = firstCharacter(QString::number(field->okFarbe));
            for (const CheckCommand& command : cachedCheckCommands(field->name, field->pruefungen)) {
                if (command.keyword == CheckKeyword::NoParenthesis) {
                    appendMessage(errorText, GetText(Msg::Txt_checkNotSupported, {command.text}));
                    result = CheckResult::Error;
                    continue;
                }
                Outcome outcome;
                if (command.problem.isEmpty())
                    outcome = runCommand(command, value);
                else
                    outcome = {CheckResult::Error, nullptr, QString(), command.problem};
                result = outcome.result;
                // A date that is read as valid is kept in its full form, so a short reading form
                // ("310327") never reaches the hand-over in a shape the export reads differently.
                if ((command.keyword == CheckKeyword::Datum || command.keyword == CheckKeyword::DatumBereich) &&
                    result != CheckResult::Error && !value.isEmpty()) {
                    const QString normalised = NormiereDatum(value, true);
                    if (normalised != value && WerteArray().GetCount() > 0)
                        WerteArray().SetValue(fieldName, normalised);
                }
                putCode(statusString, position,
                        result == CheckResult::Error     ? QLatin1Char('3')
                        : result == CheckResult::Warning ? QLatin1Char('5')
                                                         : okCode);
                if (command.keyword == CheckKeyword::Unknown) {
                    appendMessage(errorText, GetText(Msg::Txt_checkNotSupported, {command.text}));
                    continue; // a later command may still pass
                }
                if (result == CheckResult::Passed)
                    continue;
                if (!outcome.problem.isEmpty())
                    appendMessage(errorText,
                                  GetText(CheckMsg::Invalid, {command.text, displayName(), outcome.problem}));
                else
                    errorText += QStringLiteral("\r\n") + displayName() + GetText(*outcome.message) + outcome.suffix;
                break; // only the first failing command of a field is reported
            }
            if (result == CheckResult::Passed && value.isEmpty())
                putCode(statusString, position, QLatin1Char('1'));
        }
        const QString code = codeAt(statusString, position);
        if (field->pruefe == 1 && code == QLatin1String("3"))
            result = CheckResult::Error;
        if (field->pruefe == 2 && !value.isEmpty() && code != QLatin1String("0"))
            result = CheckResult::Error;
    });
    // A check that broke off has not shown the value to be good.
    return ran ? result : CheckResult::Error;
}

qint16 standardcheck(const QString& which, QString& errorText, QString& statusString) {
    qint16 total = CheckResult::Passed;
    RunReported(QStringLiteral("standardcheck"), [&] {
        if (which != QLatin1String("all")) {
            KombiniereErg(total, standardcheck_onefield(which, WerteArray().GetValue(which), errorText, statusString));
            return;
        }
        QString name, value;
        for (bool more = WerteArray().GetFirst(name, value); more; more = WerteArray().GetNext(name, value)) {
            if (statusCodeOf(statusString, name) == QLatin1String("4"))
                continue;
            KombiniereErg(total, standardcheck_onefield(name, value, errorText, statusString));
        }
    });
    return total;
}

qint16 Check(const QString& which, QString& errorText) {
    qint16 result = CheckResult::Passed;
    const bool ran = RunReported(QStringLiteral("Check"), [&] {
        QString statusString = WerteArray().GetValue(QStringLiteral("Fehlerhaft"));
        result = standardcheck(which, errorText, statusString);
        // Without the whole set of field definitions nothing is known about the record: it fails,
        // so it is neither handed over nor exported.
        if (!FelderArray().IsComplete()) {
            result = CheckResult::Error;
            appendMessage(errorText, GetText(CheckMsg::NoDefinitions));
        }
        WerteArray().SetValue(QStringLiteral("Fehlerhaft"), statusString);
        if (which == QLatin1String("all"))
            WerteArray().SetValue(QStringLiteral("Korrigiert"),
                                  result == CheckResult::Passed ? QStringLiteral("1") : QStringLiteral("0"));
    });
    return ran ? result : CheckResult::Error;
}
