// SPDX-License-Identifier: Apache-2.0
// The columns of a table as the database declares them, with the column types the record classes
// dispatch on and the defined size of text columns (the n of VARCHAR(n)).
#pragma once

#include <QString>
#include <QVector>

// Column types by their classic numbers, so code and messages can speak of "type 10" and so on.
enum class DaoType {
    Boolean = 1,
    Integer = 2,
    Long = 4,
    Currency = 5,
    Single = 6,
    Double = 7,
    Date = 8,
    Binary = 9,
    Text = 10,
    LongBinary = 11,
    Memo = 12,
};

struct ColumnInfo {
    QString name;
    QString declaredType; // as written in CREATE TABLE, e.g. "VARCHAR(40)"
    DaoType type = DaoType::Text;
    int size = 0; // defined size of a text column; 0 for every other type
    bool primaryKey = false;
};

// The column type for a declared SQLite type ("VARCHAR(40)", "SMALLINT", "BOOLEAN", ...).
DaoType daoTypeOf(const QString& declaredType);

// The columns of table in table order; empty when the table does not exist. Answers from a cache
// kept per connection; statements that change the schema through execSql clear it.
QVector<ColumnInfo> tableColumns(const QString& table);

// Forgets the cached columns of every table (after CREATE, ALTER or DROP).
void forgetTableColumns();

// Index of the column called name (compared without regard to case), or -1.
int indexOfColumn(const QVector<ColumnInfo>& columns, const QString& name);

// True when a table (or view) of that name exists, compared without regard to case.
bool tableExists(const QString& table);
