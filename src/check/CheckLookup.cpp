// SPDX-License-Identifier: Apache-2.0
#include "CheckLookup.h"

#include "CheckCommands.h"
#include "mdlCheckHelper.h"

#include "app/Database.h"
#include "app/mdlMessages.h"

#include <QSqlQuery>
#include <unordered_map>

namespace {

// What is known about one Lookup command on the current connection: whether its names exist, the
// statement that looks a value up, and whether its failure has been logged already.
struct LookupState {
    QString problem; // empty: table and column exist
    QSqlQuery query; // prepared once; the value is its one bound parameter
    bool prepared = false;
    bool logged = false;
};

LookupState& stateOf(const CheckCommand& command) {
    thread_local std::unordered_map<QString, LookupState> states;
    thread_local quint64 generation = 0;
    if (generation != connectionGeneration()) { // another database: learn the names again
        states.clear();
        generation = connectionGeneration();
    }
    const auto it = states.find(command.text);
    if (it != states.end())
        return it->second;
    LookupState& state = states[command.text];
    try {
        requireColumn(command.text1, command.text2);
        // The names are known to exist now; the operator's value never becomes part of the text.
        QString sql = QStringLiteral("SELECT [%1] FROM [%2] WHERE [%1]=?").arg(command.text2, command.text1);
        if (!command.text3.isEmpty())
            sql += QStringLiteral(" AND (") + command.text3 + QLatin1Char(')');
        state.query = prepareSql(sql + QStringLiteral(" ORDER BY rowid LIMIT 1"));
        state.prepared = true;
    } catch (const VeridonError& e) {
        state.problem = e.description();
    }
    return state;
}

void logOnce(LookupState& state, const CheckCommand& command) {
    if (state.logged)
        return;
    state.logged = true;
    WriteLog(QStringLiteral("standardcheck_onefield"),
             QStringLiteral("Befehl '%1': %2").arg(command.text, state.problem));
}

} // namespace

qint16 lookupCheck(const CheckCommand& command, const QString& value, QString& problem) {
    LookupState& state = stateOf(command);
    if (state.prepared && state.problem.isEmpty()) {
        try {
            state.query.bindValue(0, value);
            execPrepared(state.query);
            const bool found = state.query.next() && !state.query.value(0).toString().isEmpty();
            state.query.finish();
            return found ? CheckResult::Passed : CheckResult::Error;
        } catch (const VeridonError& e) {
            state.problem = e.description(); // a condition that fails once fails for every value
        }
    }
    logOnce(state, command);
    problem = state.problem;
    return CheckResult::Error;
}
