// SPDX-License-Identifier: Apache-2.0
#include "DemoRecords.h"

#include "app/Database.h"
#include "app/Home.h"

#include <QFile>
#include <QSqlQuery>
#include <gtest/gtest.h>

QVector<FormValues> demoForms() {
    QFile file(masterDataDir() + QStringLiteral("demo/forms.tsv"));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << file.fileName().toStdString();
    const QStringList lines = QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    QVector<FormValues> forms;
    if (lines.isEmpty())
        return forms;
    const QStringList header = lines.first().trimmed().split(QLatin1Char('\t'));
    for (qsizetype i = 1; i < lines.size(); ++i) {
        const QStringList cells = lines[i].trimmed().split(QLatin1Char('\t'));
        FormValues form;
        for (qsizetype c = 0; c < header.size() && c < cells.size(); ++c)
            form.insert(header[c], cells[c]);
        // The form id as the evaluation reads it off the card, the one the checks accept.
        form.insert(QStringLiteral("FORM_ID"), QStringLiteral("E-111N"));
        forms << form;
    }
    return forms;
}

qint32 insertRecord(const FormValues& values, int status, int korrId) {
    QStringList columns{QStringLiteral("Workflow_Status"), QStringLiteral("Workflow_KorrID")};
    QVariantList binds{status, korrId};
    for (auto it = values.cbegin(); it != values.cend(); ++it) {
        columns << it.key();
        binds << it.value();
    }
    const QString marks = QStringList(QVector<QString>(columns.size(), QStringLiteral("?"))).join(QLatin1Char(','));
    QSqlQuery q = execSql(
        QStringLiteral("INSERT INTO zvbWerte (%1) VALUES (%2)").arg(columns.join(QLatin1Char(',')), marks), binds);
    return q.lastInsertId().toInt();
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
    if (!q.next())
        return QString();
    return q.value(0).toString() + QLatin1Char('/') + q.value(1).toString();
}

QString columnOf(qint32 number, const QString& column) {
    QSqlQuery q = execSql(QStringLiteral("SELECT [%1] FROM zvbWerte WHERE LfdNr=?").arg(column), {number});
    return q.next() ? q.value(0).toString() : QString();
}
