// SPDX-License-Identifier: Apache-2.0
#include "PersonalNumberRules.h"

#include "PersonalNumberDigits.h"

namespace {

struct StateRule {
    const char* state;
    personal_number::Rule rule;
};

// clang-format off
constexpr StateRule rules[] = {
    {"AT", personal_number::austria},     {"BE", personal_number::belgium},
    {"BG", personal_number::bulgaria},    {"CZ", personal_number::czechOrSlovakia},
    {"DE", personal_number::germany},     {"DK", personal_number::denmark},
    {"EE", personal_number::estoniaOrLithuania}, {"ES", personal_number::spain},
    {"FI", personal_number::finland},     {"FR", personal_number::france},
    {"HR", personal_number::croatia},     {"IT", personal_number::italy},
    {"LT", personal_number::estoniaOrLithuania}, {"LV", personal_number::latvia},
    {"NL", personal_number::netherlands}, {"NO", personal_number::norway},
    {"PL", personal_number::poland},      {"PT", personal_number::portugal},
    {"RO", personal_number::romania},     {"SE", personal_number::sweden},
    {"SI", personal_number::slovenia},    {"SK", personal_number::czechOrSlovakia},
};
// clang-format on

personal_number::Rule ruleOf(const QString& state) {
    const QString code = state.trimmed().toUpper();
    for (const StateRule& r : rules)
        if (code == QLatin1String(r.state))
            return r.rule;
    return nullptr;
}

} // namespace

bool hasPersonalNumberRule(const QString& state) {
    return ruleOf(state) != nullptr;
}

bool personalNumberFits(const QString& state, const QString& number) {
    const personal_number::Rule rule = ruleOf(state);
    if (!rule)
        return true;
    QString compact = number.toUpper();
    compact.remove(QLatin1Char(' '));
    compact.remove(QLatin1Char('.'));
    compact.remove(QLatin1Char('/'));
    return rule(compact);
}
