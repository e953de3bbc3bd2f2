// SPDX-License-Identifier: Apache-2.0
// Fuzzes the check command parser and every check primitive it leads to: a field definition's
// command list is parsed and each command runs on a value, as the engine does. Lookup and
// EhicKarte need the database and are only parsed here; PersonenNr runs every state's rule.
//
// Input: the command list, a line feed, then the value (UTF-8).

#include "app/Errors.h"
#include "check/CheckCommands.h"
#include "check/PersonalNumberRules.h"
#include "check/mdlCheckHelper.h"

#include <QDate>
#include <QRegularExpression>
#include <QString>
#include <cstdint>
#include <cstdlib>

namespace {

bool known(qint16 result) {
    return result == CheckResult::Passed || result == CheckResult::Error || result == CheckResult::Warning;
}

qint16 run(const CheckCommand& c, const QString& value) {
    const QChar separator = QLatin1Char(',');
    switch (c.keyword) {
    case CheckKeyword::Pflichtfeld:
        return Pflichtfeld(value);
    case CheckKeyword::Zahl:
        return NurZiffern(value);
    case CheckKeyword::Gleitkommazahl:
        return Gleitkommazahl(c.separator, value);
    case CheckKeyword::Gleitkommazahllaenge:
        return Gleitkommazahllaenge(qint32(c.whole1), qint32(c.whole2), value, separator);
    case CheckKeyword::Laenge:
        return Laenge(qint32(c.whole1), value);
    case CheckKeyword::Bereich:
        return NurZiffern(value) == CheckResult::Passed ? Bereich(c.whole1, c.whole2, value) : CheckResult::Error;
    case CheckKeyword::Gleitkommazahlbereich:
        return NurZiffern(value) == CheckResult::Passed ? Gleitkommazahlbereich(c.decimal1, c.decimal2, value)
                                                        : CheckResult::Passed;
    case CheckKeyword::Werteliste:
        return Werteliste(c.text, value);
    case CheckKeyword::Zeit:
        return Zeit(value);
    case CheckKeyword::Waehrung:
        return Waehrung(value, separator, qint32(c.whole1));
    case CheckKeyword::Datum:
        return Datum(value, DatumMode::Valid, QString(), QString());
    case CheckKeyword::DatumBereich:
        return Datum(value, DatumMode::Range, c.text1, c.text2);
    case CheckKeyword::PersonenNr:
        for (const char* state : {"AT", "BE", "BG", "CZ", "DE", "DK", "EE", "ES", "FI", "FR", "HR", "HU", "IT", "LT",
                                  "LU", "LV", "NL", "PL", "PT", "RO", "SE", "SI", "SK", "UK", "EL", "IS", "NO"})
            personalNumberFits(QString::fromLatin1(state), value);
        return CheckResult::Passed;
    case CheckKeyword::Lookup:
    case CheckKeyword::EhicKarte:
    case CheckKeyword::NoParenthesis:
    case CheckKeyword::Unknown:
        break;
    }
    return CheckResult::Error;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const QString input = QString::fromUtf8(reinterpret_cast<const char*>(data), qsizetype(size));
    const qsizetype newline = input.indexOf(QLatin1Char('\n'));
    const QString pruefungen = newline < 0 ? input : input.left(newline);
    const QString value = newline < 0 ? QString() : input.mid(newline + 1);
    for (const CheckCommand& command : parseCheckCommands(pruefungen)) {
        if (!command.problem.isEmpty())
            continue; // reported to the operator as a fault of the definitions, never run
        try {
            if (!known(run(command, value)))
                std::abort();
        } catch (const VeridonError&) {
            // A type mismatch is the documented answer of Bereich and friends to a non-number.
        }
    }
    // A date that passes is stored in its full form, and that form passes and means the same day.
    if (Datum(value, DatumMode::Valid, QString(), QString()) == CheckResult::Passed && !value.trimmed().isEmpty()) {
        const QString full = NormiereDatum(value, true);
        static const QRegularExpression shape(QStringLiteral("^\\d\\d\\.\\d\\d\\.\\d{4}$"));
        if (!shape.match(full).hasMatch() || !dateOfNormalised(full).isValid() ||
            Datum(full, DatumMode::Valid, QString(), QString()) != CheckResult::Passed ||
            NormiereDatum(full, true) != full)
            std::abort();
    }
    NormiereZeit(value);
    return 0;
}
