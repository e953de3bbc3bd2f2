// SPDX-License-Identifier: Apache-2.0
// veridon-cli sql: runs one statement of the Jet dialect on data.mdb.

#include "CliCommand.h"
#include "app/Database.h"

#include <QSqlRecord>

namespace {

QString cellText(const QVariant& v) {
    if (v.isNull())
        return QStringLiteral("NULL");
    QString text = v.toString();
    text.replace(QLatin1Char('\t'), QLatin1Char(' '));
    text.replace(QLatin1Char('\n'), QLatin1Char(' '));
    text.remove(QLatin1Char('\r'));
    return text;
}

int runSql(CliContext& c) {
    if (c.args.size() != 1)
        return usageError(c, *CliRegistry::find(QStringLiteral("sql")),
                          QStringLiteral("genau eine Anweisung erwartet"));
    QSqlQuery q = execSql(c.args.first());
    if (!q.isSelect()) {
        c.out << q.numRowsAffected() << " Zeile(n) geändert\n";
        return Exit::Ok;
    }
    const QSqlRecord record = q.record();
    QStringList header;
    for (int i = 0; i < record.count(); ++i)
        header << record.fieldName(i);
    c.out << header.join(QLatin1Char('\t')) << '\n';
    while (q.next()) {
        QStringList cells;
        for (int i = 0; i < record.count(); ++i)
            cells << cellText(q.value(i));
        c.out << cells.join(QLatin1Char('\t')) << '\n';
    }
    return Exit::Ok;
}

const CliRegistration registration({"sql", "\"ANWEISUNG\"",
                                    "führt eine SQL-Anweisung aus; SELECT druckt die Zeilen mit Tabulatoren", runSql});

} // namespace
