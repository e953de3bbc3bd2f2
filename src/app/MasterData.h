// SPDX-License-Identifier: Apache-2.0
// Master data kept as readable files: one table per tab-separated UTF-8 file whose first line names
// the columns. "\N" in a cell is null; an empty cell is the empty text in a text column and null in
// any other. "${HOME}" in a cell stands for the home folder (ending in "/").
#pragma once

#include <QString>
#include <QStringList>

// Appends the rows of the file at path to table. Returns the number of rows added. Throws
// VeridonError when the file cannot be read, the table or a column does not exist, or a row
// does not fit.
int loadTableFile(const QString& table, const QString& path);

// Loads every "<Table>.tsv" and "<Table>.<part>.tsv" of folder into its table, in name order; with
// a list of tables, only the files of those. Returns the number of rows added.
int loadTableFolder(const QString& folder, const QStringList& onlyTables = {});
