// SPDX-License-Identifier: Apache-2.0
#include "CardText.h"

#include <QFile>
#include <QHash>

namespace {

QString cardDate(const QString& dotted) {
    QString date = dotted;
    return date.replace(QLatin1Char('.'), QLatin1Char('/'));
}

// Two fields printed on one line, as far apart as on the card.
QString twoFields(const QString& left, const QString& right, int gap = 6) {
    return left + QString(gap, QLatin1Char(' ')) + right;
}

} // namespace

QVector<CardForm> readCardForms(const QString& path) {
    QVector<CardForm> forms;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return forms;
    const QStringList lines = QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    if (lines.isEmpty())
        return forms;
    QHash<QString, int> column;
    const QStringList header = lines.first().trimmed().split(QLatin1Char('\t'));
    for (int i = 0; i < header.size(); ++i)
        column.insert(header[i], i);
    for (qsizetype n = 1; n < lines.size(); ++n) {
        const QStringList cells = QString(lines[n]).remove(QLatin1Char('\r')).split(QLatin1Char('\t'));
        const auto cell = [&](const char* name) {
            const int i = column.value(QLatin1String(name), -1);
            return i >= 0 && i < cells.size() ? cells[i] : QString();
        };
        forms.push_back({cell("BMPName"), cell("TYP"), cell("SCANDAT"), cell("STATE"), cell("NACHNAME"),
                         cell("VORNAME"), cell("GEBDAT"), cell("PERSONAL_ID"), cell("INSTITUT_ID"), cell("CARD_ID"),
                         cell("CARD_EXPIRY")});
    }
    return forms;
}

QStringList cleanCardLines(const CardForm& f) {
    if (f.typ == QLatin1String("4"))
        return {QStringLiteral("EUROPÄISCHE KRANKENVERSICHERUNGSKARTE"),
                f.state,
                f.nachname,
                twoFields(f.vorname, cardDate(f.gebdat)),
                twoFields(f.personalId, f.institutId),
                twoFields(f.cardId, cardDate(f.cardExpiry), 5)};
    return {QStringLiteral("EHIC  ") + f.state,
            f.state,
            f.nachname,
            f.vorname,
            twoFields(cardDate(f.gebdat), f.personalId, 5),
            f.institutId,
            twoFields(f.cardId, cardDate(f.cardExpiry), 5)};
}

QVector<ReadingError> demoReadingErrors() {
    return {
        // A frame bar and a lower-case code, a surname read in small letters, gaps in the numbers,
        // an en dash for the hyphen and a bar for a slash.
        {QStringLiteral("31901001.tif"), 2, QStringLiteral("AT"), QStringLiteral("|  at")},
        {QStringLiteral("31901001.tif"), 3, QStringLiteral("Huber"), QStringLiteral("huber")},
        {QStringLiteral("31901001.tif"), 5, QStringLiteral("1236030761"), QStringLiteral("1236 030761")},
        {QStringLiteral("31901001.tif"), 5, QStringLiteral(" - "), QStringLiteral(" – ")},
        {QStringLiteral("31901001.tif"), 6, QStringLiteral("80040001234567890123"),
         QStringLiteral("8004 0001 2345 6789 0123")},
        {QStringLiteral("31901001.tif"), 6, QStringLiteral("31/12/2029"), QStringLiteral("31|12/2029")},
        // Frame characters from the card's edge before the surname and after the date of birth.
        {QStringLiteral("31901002.tif"), 3, QStringLiteral("de Vries"), QStringLiteral("] de Vries")},
        {QStringLiteral("31901002.tif"), 4, QStringLiteral("22/02/1985"), QStringLiteral("22/02/1985  |")},
        // A bracket before the state, a hyphen read with blanks round it in a small-letter first
        // name, a slash read as 1, the personal number as printed in groups.
        {QStringLiteral("31901003.tif"), 2, QStringLiteral("FR"), QStringLiteral("[  FR")},
        {QStringLiteral("31901003.tif"), 4, QStringLiteral("Marie-Claire"), QStringLiteral("marie - claire")},
        {QStringLiteral("31901003.tif"), 5, QStringLiteral("14/09/1990"), QStringLiteral("14109/1990")},
        {QStringLiteral("31901003.tif"), 5, QStringLiteral("290097512345636"), QStringLiteral("2 90 09 75 123 456 36")},
        {QStringLiteral("31901003.tif"), 7, QStringLiteral("80250000001234567890"),
         QStringLiteral("8025 0000 0012 3456 7890")},
        // The state code on the flag's stars not read at all; a backslash for a slash.
        {QStringLiteral("31901004.tif"), 2, QStringLiteral("IT"), QStringLiteral("\\bf\\bf")},
        {QStringLiteral("31901004.tif"), 7, QStringLiteral("01/01/2028"), QStringLiteral("01\\01/2028")},
        // The surname printed in capitals with a zero read for its O, a bar before the first name,
        // the second slash of the expiry read as 1.
        {QStringLiteral("31901005.tif"), 3, QStringLiteral("Kowalski"), QStringLiteral("K0WALSKI")},
        {QStringLiteral("31901005.tif"), 4, QStringLiteral("Piotr"), QStringLiteral("| Piotr")},
        {QStringLiteral("31901005.tif"), 5, QStringLiteral("78113012357"), QStringLiteral("781 130 123 57")},
        {QStringLiteral("31901005.tif"), 6, QStringLiteral("31/03/2027"), QStringLiteral("31/0312027")},
        // The second letter of the state unreadable (D? fits DE and DK: left for the operator),
        // the name in small letters, a bracket after the expiry.
        {QStringLiteral("31901006.tif"), 2, QStringLiteral("DE"), QStringLiteral("D\\bf")},
        {QStringLiteral("31901006.tif"), 3, QStringLiteral("Müller-Lüdenscheidt"),
         QStringLiteral("müller-lüdenscheidt")},
        {QStringLiteral("31901006.tif"), 6, QStringLiteral("31/12/2030"), QStringLiteral("31/12/2030 ]")},
        // An accented letter the reader could not read (left for the operator) after a frame bar.
        {QStringLiteral("31901007.tif"), 3, QStringLiteral("García López"), QStringLiteral("|  Garc\\fa López")},
        // A 5 for the S of the state, a small-letter first name, gaps, an O for a zero and a
        // backslash in the expiry.
        {QStringLiteral("31901008.tif"), 2, QStringLiteral("SE"), QStringLiteral("5E")},
        {QStringLiteral("31901008.tif"), 4, QStringLiteral("Astrid"), QStringLiteral("astrid")},
        {QStringLiteral("31901008.tif"), 5, QStringLiteral("199512172389"), QStringLiteral("19951217 2389")},
        {QStringLiteral("31901008.tif"), 6, QStringLiteral("80752000000000123456"),
         QStringLiteral("8O75 2000 0000 0012 3456")},
        {QStringLiteral("31901008.tif"), 6, QStringLiteral("17/12/2028"), QStringLiteral("17/12\\2028")},
    };
}

QStringList applyReadingErrors(const CardForm& form, QStringList lines, const QVector<ReadingError>& errors) {
    for (const ReadingError& e : errors)
        if (e.bmpName == form.bmpName && e.line >= 1 && e.line <= lines.size())
            lines[e.line - 1].replace(e.read, e.misread);
    return lines;
}

QString resultLine(const CardForm& form, const QStringList& cardLines, const QString& separator) {
    QStringList parts{form.bmpName, form.scandat, form.typ, QStringLiteral("0"), QStringLiteral("0")};
    const bool layout4 = form.typ == QLatin1String("4");
    for (int i = 0; i < 6; ++i)
        parts << (layout4 ? cardLines.value(i) : QString());
    for (int i = 0; i < 7; ++i)
        parts << (layout4 ? QString() : cardLines.value(i));
    return parts.join(separator);
}

QStringList demoResultLines(const QVector<CardForm>& forms) {
    QStringList lines;
    const QVector<ReadingError> errors = demoReadingErrors();
    for (const CardForm& form : forms)
        lines << resultLine(form, applyReadingErrors(form, cleanCardLines(form), errors), QStringLiteral(";"));
    return lines;
}
