// SPDX-License-Identifier: Apache-2.0
#include "FieldLengths.h"

#include "model/ZVBFelderArray.h"

QVector<int> readFieldLengths(const QStringList& columns) {
    ZVBFelderArray felder;
    felder.Fill();
    QVector<int> lengths(columns.size(), NoFieldLength);
    if (felder.count() == 0) {
        if (!columns.isEmpty())
            felder.GetLaenge(columns.first()); // the one "empty" report
        return lengths;
    }
    for (int i = 0; i < columns.size(); ++i) {
        if (felder.Exists(columns[i]))
            lengths[i] = felder.GetLaenge(columns[i]);
        else
            felder.GetLaenge(columns[i]); // reports the missing definition
    }
    return lengths;
}
