// SPDX-License-Identifier: Apache-2.0
// The Lookup(table,column[,condition]) check against a master table. Table and column come from
// the field definitions, so they are checked against the schema before they go into SQL; the
// value comes from the operator and goes in through sqlQuote.
#pragma once

#include <QString>

struct CheckCommand;

// 0 when value is found in the command's table and column (and the extra condition holds), 2 when
// not. A table or column that does not exist, or a condition that is not valid SQL, is not a
// run-time error: the answer is 2 and problem says what is wrong (logged once per command and
// database connection).
qint16 lookupCheck(const CheckCommand& command, const QString& value, QString& problem);
