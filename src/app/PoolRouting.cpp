// SPDX-License-Identifier: Apache-2.0
#include "PoolRouting.h"

#include "Errors.h"

#include <QHash>

namespace {

const QHash<QString, QString>& knownTables() {
    static const QHash<QString, QString> tables = [] {
        QHash<QString, QString> map;
        for (const QString& t : localTables() + poolTables())
            map.insert(t.toLower(), t);
        return map;
    }();
    return tables;
}

bool isWordStart(QChar c) {
    return c.isLetter() || c == QLatin1Char('_');
}

bool isWordChar(QChar c) {
    return c.isLetterOrNumber() || c == QLatin1Char('_');
}

} // namespace

QStringList localTables() {
    // Scan settings belong to a scanner attached to this workstation (its SANE device name, its
    // options): another workstation's device of the same name is another machine, so they stay here
    // with the window positions and hot keys rather than going to the server.
    return {QStringLiteral("zvbSys"), QStringLiteral("zvbSysWindowPositions"), QStringLiteral("zvbSysKeys"),
            QStringLiteral("zvbScanOptionen")};
}

QStringList poolTables() {
    return {QStringLiteral("ZVBFelder"), QStringLiteral("zvbWerte"), QStringLiteral("ZVBForm_Felder"),
            QStringLiteral("sysTexts"), QStringLiteral("sysLanguages"), QStringLiteral("sysStates"),
            QStringLiteral("ocrErsetzungen"), QStringLiteral("sysReports"), QStringLiteral("sysReportsForStates"),
            QStringLiteral("sysReportFields"), QStringLiteral("zvbAutoImport"),
            QStringLiteral("zvbAutoImport_Spezifikation"),
            // The identities of imported files belong with the records they brought: a file is
            // imported into the pool once, and its identity commits with its rows.
            QStringLiteral("sysImportedFiles"),
            // A record's reading candidates live and go with the record.
            QStringLiteral("zvbAlternativen")};
}

TableStore storeOfTable(const QString& table) {
    for (const QString& t : poolTables())
        if (t.compare(table, Qt::CaseInsensitive) == 0)
            return TableStore::Pool;
    return TableStore::Local;
}

QStringList tablesOfStatement(const QString& sql) {
    QStringList found;
    const QHash<QString, QString>& known = knownTables();
    QChar quote;
    for (qsizetype i = 0; i < sql.size(); ++i) {
        const QChar c = sql[i];
        if (!quote.isNull()) {
            if (c == quote)
                quote = QChar();
            continue;
        }
        if (c == QLatin1Char('\'') || c == QLatin1Char('"')) {
            quote = c;
            continue;
        }
        if (!isWordStart(c))
            continue;
        qsizetype end = i + 1;
        while (end < sql.size() && isWordChar(sql[end]))
            ++end;
        const auto hit = known.constFind(sql.mid(i, end - i).toLower());
        if (hit != known.constEnd() && !found.contains(hit.value()))
            found << hit.value();
        i = end - 1;
    }
    return found;
}

TableStore storeOfStatement(const QString& sql) {
    bool local = false;
    bool pool = false;
    for (const QString& table : tablesOfStatement(sql))
        (storeOfTable(table) == TableStore::Pool ? pool : local) = true;
    if (local && pool)
        throw VeridonError(MixedStatementError, Msg::ErrMixedStatement, {sql});
    return pool ? TableStore::Pool : TableStore::Local;
}
