// SPDX-License-Identifier: Apache-2.0
// The field lengths of ZVBFelder for the columns a batch writes, read once per batch instead of once
// per value.
#pragma once

#include <QString>
#include <QStringList>
#include <QVector>

// No length is defined for the column: its values are not cut.
inline constexpr int NoFieldLength = -1;

// GetLaenge of every name in columns, in the same order, from the field definitions as they are
// now. A column without a definition is reported once ("Msg_FelderArrayNoEntry", or
// "Msg_FelderArrayEmpty" once for all when the table is empty) and gets NoFieldLength, so that its
// values are kept whole rather than cut to nothing.
QVector<int> readFieldLengths(const QStringList& columns);

// The first length characters of value; value itself for NoFieldLength.
inline QString cutToLength(const QString& value, int length) {
    return length == NoFieldLength || value.size() <= length ? value : value.left(length);
}
