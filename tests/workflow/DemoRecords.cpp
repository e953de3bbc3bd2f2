// SPDX-License-Identifier: Apache-2.0
#include "DemoRecords.h"

#include "RecordRows.h"

#include <QSqlQuery>

QVector<FormValues> demoForms() {
    QVector<FormValues> forms;
    for (RowValues row = demoForm(0); !row.value(QStringLiteral("BMPName")).toString().isEmpty();
         row = demoForm(int(forms.size()))) {
        FormValues form;
        for (auto it = row.cbegin(); it != row.cend(); ++it)
            form.insert(it.key(), it.value().toString());
        // The form id as the evaluation reads it off the card, the one the checks accept.
        form.insert(QStringLiteral("FORM_ID"), QStringLiteral("E-111N"));
        forms << form;
    }
    return forms;
}

qint32 insertRecord(const FormValues& values, int status, int korrId) {
    RowValues row{{QStringLiteral("Workflow_Status"), status}, {QStringLiteral("Workflow_KorrID"), korrId}};
    for (auto it = values.cbegin(); it != values.cend(); ++it)
        row.insert(it.key(), it.value());
    return insertRecord(row);
}

QVector<qint32> insertDemoRecords(int count) {
    QVector<qint32> numbers;
    const QVector<FormValues> forms = demoForms();
    for (int i = 0; i < count && i < forms.size(); ++i)
        numbers << insertRecord(forms[i]);
    return numbers;
}

QString workflowOf(qint32 number) {
    QSqlQuery q =
        execSql(QStringLiteral("SELECT Workflow_Status, Workflow_KorrID FROM zvbWerte WHERE LfdNr=?"), {number});
    return q.next() ? q.value(0).toString() + QLatin1Char('/') + q.value(1).toString() : QString();
}

QString columnOf(qint32 number, const QString& column) {
    QSqlQuery q = execSql(QStringLiteral("SELECT [%1] FROM zvbWerte WHERE LfdNr=?").arg(column), {number});
    return q.next() ? q.value(0).toString() : QString();
}
