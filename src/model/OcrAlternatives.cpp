// SPDX-License-Identifier: Apache-2.0
#include "OcrAlternatives.h"

#include "Schema.h"
#include "app/ColumnInfo.h"
#include "app/Database.h"
#include "app/mdlDB.h"

void ensureAlternativesTable() {
    if (!tableExists(alternativesTable()))
        createTables({alternativesTable()});
}

void storeAlternatives(qint64 number, const QVector<CharacterAlternatives>& marks) {
    if (marks.isEmpty())
        return;
    QSqlQuery insert = prepareSql(QStringLiteral("INSERT INTO ") + alternativesTable() +
                                  QStringLiteral(" (LfdNr, Feld, Position, Zeichen, Wert) VALUES (?, ?, ?, ?, ?)"));
    for (const CharacterAlternatives& m : marks) {
        insert.bindValue(0, number);
        insert.bindValue(1, m.field);
        insert.bindValue(2, m.position);
        insert.bindValue(3, m.candidates);
        insert.bindValue(4, m.imported);
        execPrepared(insert);
    }
}

QVector<CharacterAlternatives> LoadAlternatives(qint64 number) {
    QVector<CharacterAlternatives> marks;
    try {
        if (!tableExists(alternativesTable()))
            return marks;
        QSqlQuery q = execSql(QStringLiteral("SELECT Feld, Position, Zeichen, Wert FROM ") + alternativesTable() +
                                  QStringLiteral(" WHERE LfdNr=? ORDER BY Feld, Position"),
                              {number});
        while (q.next()) {
            CharacterAlternatives m;
            m.field = q.value(0).toString();
            m.position = q.value(1).toInt();
            m.candidates = q.value(2).toString();
            m.imported = q.value(3).toString();
            if (!m.candidates.isEmpty())
                marks.push_back(m);
        }
    } catch (const VeridonError&) {
        marks.clear(); // without candidates the operator types, as always
    }
    return marks;
}

void DeleteAlternatives(qint64 number) {
    if (tableExists(alternativesTable()))
        execSql(QStringLiteral("DELETE FROM ") + alternativesTable() + QStringLiteral(" WHERE LfdNr=?"), {number});
}

void DeleteOrphanAlternatives() {
    if (tableExists(alternativesTable()))
        execSql(QStringLiteral("DELETE FROM ") + alternativesTable() +
                QStringLiteral(" WHERE LfdNr NOT IN (SELECT LfdNr FROM ") + GetValuesTable() + QLatin1Char(')'));
}
