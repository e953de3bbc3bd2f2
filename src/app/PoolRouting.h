// SPDX-License-Identifier: Apache-2.0
// Where each table lives. A workstation joined to a shared pool keeps its own settings, window
// positions and hot keys in data.mdb; the pool (zvbWerte) and the master data live on the server.
// Every statement is sent to the one database that holds the tables it names; a statement that
// names tables of both is a programming error, because no database can run it.
#pragma once

#include <QString>
#include <QStringList>

enum class TableStore { Local, Pool };

// Number of the error raised for a statement that names local and pool tables at once.
inline constexpr int MixedStatementError = 3800;

// The tables every workstation keeps in its own data.mdb.
QStringList localTables();

// The tables that a shared pool keeps on the server.
QStringList poolTables();

// Where table lives when the workstation is joined to a pool (compared without regard to case);
// tables the program does not know stay local.
TableStore storeOfTable(const QString& table);

// The known tables a statement names, as words outside literals, in their canonical spelling.
QStringList tablesOfStatement(const QString& sql);

// Where a statement must run: Pool when it names pool tables only, Local otherwise. Throws
// VeridonError (MixedStatementError) when it names tables of both.
TableStore storeOfStatement(const QString& sql);
