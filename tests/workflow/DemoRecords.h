// SPDX-License-Identifier: Apache-2.0
// Records of zvbWerte for tests, made from the demo forms (data/demo/forms.tsv): the eight clean
// EHIC forms an operator would see after an import, each waiting for correction.
#pragma once

#include <QMap>
#include <QString>
#include <QVector>

// One demo form as column name -> value (BMPName, TYP, SCANDAT, FORM_ID, ... CARD_EXPIRY), with the
// form id "E-111N" that the evaluation reads off the cards.
using FormValues = QMap<QString, QString>;

// The demo forms in file order.
QVector<FormValues> demoForms();

// Inserts one record with the given values, Workflow_Status status and holder korrId; returns its
// LfdNr. Columns not given stay null.
qint32 insertRecord(const FormValues& values, int status = 10, int korrId = 0);

// Inserts the first count demo forms as waiting records; returns their LfdNr in order.
QVector<qint32> insertDemoRecords(int count = 8);

// Workflow_Status and Workflow_KorrID of a record as "status/holder", "" when the row is gone.
QString workflowOf(qint32 number);

// One column of a record as text; "" when null or the row is gone.
QString columnOf(qint32 number, const QString& column);
