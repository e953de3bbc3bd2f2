// SPDX-License-Identifier: Apache-2.0
// What the evaluation program reads off an EHIC card: the card's printed lines for both layouts,
// the reading errors a real reader makes on them, and the result line it writes. Used to make the
// demo result file from data/demo/forms.tsv and the benchmark's large files.
#pragma once

#include <QString>
#include <QStringList>
#include <QVector>

// One form with the clean values printed on its card (dates as "DD.MM.YYYY").
struct CardForm {
    QString bmpName;
    QString typ; // "4" or "5"
    QString scandat;
    QString state;
    QString nachname;
    QString vorname;
    QString gebdat;
    QString personalId;
    QString institutId;
    QString cardId;
    QString cardExpiry;
};

// The forms of a tab-separated file with a header line naming the columns (BMPName, TYP, SCANDAT,
// STATE, NACHNAME, VORNAME, GEBDAT, PERSONAL_ID, INSTITUT_ID, CARD_ID, CARD_EXPIRY; others are
// ignored). Empty when the file cannot be read.
QVector<CardForm> readCardForms(const QString& path);

// The card's lines as a faultless reading gives them: six for layout 4 (heading, state, surname,
// first name with date of birth, personal number with institution, card number with expiry),
// seven for layout 5 (heading with the state code, state, surname, first name, date of birth with
// personal number, institution, card number with expiry). Dates are printed "DD/MM/YYYY"; two
// fields on one line are set apart by a wide gap.
QStringList cleanCardLines(const CardForm& form);

// A reading error: on the card of bmpName, in line (1-based) the text read is replaced by misread.
struct ReadingError {
    QString bmpName;
    int line;
    QString read;
    QString misread;
};

// The reading errors of the demo cards: frame characters, wrong case, gaps in numbers, "|", "\"
// and "1" for the slash of a date, unreadable characters, an O for a zero.
QVector<ReadingError> demoReadingErrors();

// lines with the errors of form's card applied. Returns the lines unchanged when none applies.
QStringList applyReadingErrors(const CardForm& form, QStringList lines, const QVector<ReadingError>& errors);

// The result line the evaluation program writes for a card: BMPName, SCANDAT, TYP, BMOffsetX,
// BMOffsetY, T4_L1..T4_L6, T5_L1..T5_L7 joined by separator (the other layout's lines empty).
QString resultLine(const CardForm& form, const QStringList& cardLines, const QString& separator);

// The demo result file's lines for forms, separator ";".
QStringList demoResultLines(const QVector<CardForm>& forms);
