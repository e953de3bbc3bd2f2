// SPDX-License-Identifier: Apache-2.0
// The Jet SQL dialect on the pool's PostgreSQL server. The same statements that run on data.mdb
// run here: "DELETE * FROM", [names], "&", Jet string literals in double quotes, TRUE/FALSE, Now(),
// Date(), and names written in any case (the server's tables keep their classic spelling, so a
// name is quoted in the spelling the server holds). Jet's LIKE, InStr and the text functions are
// server functions that the pool's schema installs; text columns compare without regard to case.
#pragma once

#include "ColumnInfo.h"

#include <QSqlDatabase>
#include <QString>
#include <QStringList>

// Rewrites a Jet statement for PostgreSQL. Names of tables and columns that exist on the server of
// db are quoted in the server's spelling; CREATE TABLE maps the column types of data.mdb to the
// pool's types. Unknown names pass unchanged.
QString translateJetPg(const QString& sql, const QSqlDatabase& db);

// The statements that install the collation, types, LIKE operator and Jet functions of the pool in
// an empty server database, in order.
QStringList poolDialectObjects();

// The columns of table on the pool server (db), with the declared types data.mdb would give them;
// the hidden row-order column is left out. Empty when the table does not exist.
QVector<ColumnInfo> poolTableColumns(const QSqlDatabase& db, const QString& table);

// True when the pool server (db) has a table of that name, compared without regard to case.
bool poolTableExists(const QSqlDatabase& db, const QString& table);

// Forgets the server's names read for quoting (after CREATE, ALTER or DROP).
void forgetPoolCatalog();
