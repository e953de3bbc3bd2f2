// SPDX-License-Identifier: Apache-2.0
// The tables of the program database. zvbWerte's column order is the contract with the evaluation
// program: its result file fills the columns positionally.
#pragma once

#include <QStringList>

// Creates every table and index that does not exist yet in the current database. Existing tables
// are left as they are.
void createSchema();

// Creates the named tables (and their indexes) that do not exist yet, each in the database that
// holds it.
void createTables(const QStringList& names);

// The names of all tables the program uses, in creation order.
QStringList schemaTables();

// The columns of zvbWerte in table order.
QStringList valuesTableColumns();
