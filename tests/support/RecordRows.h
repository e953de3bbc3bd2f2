// SPDX-License-Identifier: Apache-2.0
// Rows of zvbWerte for tests: the eight demo forms with their clean values, and an insert of any
// set of columns. Header-only so that each test folder can use it without a library of its own.
#pragma once

#include "app/Database.h"
#include "app/Home.h"

#include <QFile>
#include <QMap>
#include <QStringList>
#include <QVariant>

using RowValues = QMap<QString, QVariant>;

// Inserts a row with the given columns and returns its LfdNr.
inline qint32 insertRecord(const RowValues& values) {
    const QString sql = QStringLiteral("INSERT INTO zvbWerte ([%1]) VALUES (%2)")
                            .arg(values.keys().join(QStringLiteral("],[")),
                                 QStringList(values.size(), QStringLiteral("?")).join(QLatin1Char(',')));
    return execSql(sql, values.values()).lastInsertId().toInt();
}

// The clean field values of demo form index (0..7) from data/demo/forms.tsv (UTF-8), by column.
inline RowValues demoForm(int index) {
    QFile file(masterDataDir() + QStringLiteral("demo/forms.tsv"));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    const QStringList lines = QString::fromUtf8(file.readAll()).remove(QLatin1Char('\r')).split(QLatin1Char('\n'));
    const QStringList header = lines.value(0).split(QLatin1Char('\t'));
    const QStringList cells = lines.value(index + 1).split(QLatin1Char('\t'));
    RowValues row;
    for (int i = 0; i < header.size() && i < cells.size(); ++i)
        row.insert(header[i], cells[i]);
    return row;
}
