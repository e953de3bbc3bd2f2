// SPDX-License-Identifier: Apache-2.0
// The demo forms: one row per form in data/demo/forms.tsv, with the image name, the layout and the
// clean values that the generated image carries.
#pragma once

#include <QHash>
#include <QList>
#include <QString>

struct DemoForm {
    QString bmpName;                // image file name (BMPName)
    int typ = 5;                    // layout: 4, or 5 for any other TYP
    QHash<QString, QString> values; // column name -> value, every column of the file
};

// Reads the tab-separated demo form file (UTF-8, header line with the column names, BMPName and
// TYP required). Returns the forms in file order; on a missing file, a missing column or a row with
// the wrong number of cells returns an empty list and sets *error to a German message naming the
// file and line.
QList<DemoForm> readDemoForms(const QString& path, QString* error);
