// SPDX-License-Identifier: Apache-2.0
// Reading the demo form list.
#include "DemoForms.h"

#include <QFile>
#include <QStringList>

QList<DemoForm> readDemoForms(const QString& path, QString* error) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        *error = QStringLiteral("Die Formularliste '%1' kann nicht gelesen werden.").arg(path);
        return {};
    }
    const QStringList lines = QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'));
    if (lines.isEmpty() || lines.first().trimmed().isEmpty()) {
        *error = QStringLiteral("Die Formularliste '%1' ist leer.").arg(path);
        return {};
    }
    const QStringList header = lines.first().trimmed().split(QLatin1Char('\t'));
    for (const auto* required : {"BMPName", "TYP"}) {
        if (!header.contains(QLatin1String(required))) {
            *error = QStringLiteral("Der Formularliste '%1' fehlt die Spalte %2.").arg(path, QLatin1String(required));
            return {};
        }
    }
    QList<DemoForm> forms;
    for (qsizetype n = 1; n < lines.size(); ++n) {
        QString line = lines.at(n);
        if (line.endsWith(QLatin1Char('\r')))
            line.chop(1);
        if (line.trimmed().isEmpty())
            continue;
        const QStringList cells = line.split(QLatin1Char('\t'));
        if (cells.size() != header.size()) {
            *error = QStringLiteral("Zeile %1 der Formularliste '%2' hat %3 statt %4 Spalten.")
                         .arg(n + 1)
                         .arg(path)
                         .arg(cells.size())
                         .arg(header.size());
            return {};
        }
        DemoForm form;
        for (qsizetype c = 0; c < header.size(); ++c)
            form.values.insert(header.at(c), cells.at(c));
        form.bmpName = form.values.value(QStringLiteral("BMPName"));
        // Only the two layouts the generator can draw; anything else is a typing error in the list.
        const QString typ = form.values.value(QStringLiteral("TYP")).trimmed();
        if (typ != QLatin1String("4") && typ != QLatin1String("5")) {
            *error = QStringLiteral("Zeile %1 der Formularliste '%2' hat den unbekannten TYP '%3' (4 oder 5).")
                         .arg(n + 1)
                         .arg(path, typ);
            return {};
        }
        form.typ = typ.toInt();
        forms.append(form);
    }
    return forms;
}
