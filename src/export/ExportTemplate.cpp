// SPDX-License-Identifier: Apache-2.0
// Template filling for the XML hand-over. The template is treated as plain text, line by line, as
// the receiving side's format was defined around it; only the values are made safe for XML.
#include "ExportTemplate.h"

#include <QXmlStreamReader>

namespace {

const QString crlf = QStringLiteral("\r\n");

// The characters Windows-1252 gives to the bytes 0x80-0x9F (0 for the five it leaves undefined).
constexpr char16_t cp1252High[32] = {0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                     0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0,      0x017D, 0,
                                     0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                     0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178};

bool isInWindows1252(char32_t c) {
    if (c < 0x80 || (c >= 0xA0 && c <= 0xFF))
        return true;
    if (c > 0xFFFF)
        return false;
    for (const char16_t mapped : cp1252High)
        if (mapped != 0 && mapped == c)
            return true;
    return false;
}

bool isForbiddenInXml(char32_t c) {
    if (c < 0x20)
        return c != 0x09 && c != 0x0A && c != 0x0D;
    if (c >= 0x80 && c <= 0x9F) // only the undefined bytes' code points; the others leave as references
        return cp1252High[c - 0x80] == 0;
    return c == 0xFFFE || c == 0xFFFF || (c >= 0xD800 && c <= 0xDFFF);
}

} // namespace

QString XmlElement(const QString& value, const QString& elementName) {
    if (value.isEmpty())
        return QString();
    return QLatin1Char('<') + elementName + QLatin1Char('>') + value + QLatin1String("</") + elementName +
           QLatin1Char('>');
}

QString RemoveEmptyLines(const QString& text) {
    QString result;
    result.reserve(text.size());
    qsizetype start = 0;
    while (start <= text.size()) {
        const qsizetype end = text.indexOf(crlf, start);
        const qsizetype next = end < 0 ? text.size() : end + 2;
        const QStringView piece = QStringView(text).mid(start, next - start);
        qsizetype nonBlank = 0;
        for (const QChar c : piece)
            if (c != QLatin1Char(' '))
                ++nonBlank;
        if (nonBlank != 2)
            result += piece;
        if (end < 0)
            break;
        start = next;
    }
    return result;
}

QString ExportDate(const QString& storedDate) {
    return storedDate.right(4) + QLatin1Char('-') + storedDate.mid(3, 2) + QLatin1Char('-') + storedDate.left(2);
}

QString XmlEscape(const QString& text, bool quotes) {
    QString out;
    out.reserve(text.size() + 8);
    for (const QChar c : text) {
        switch (c.unicode()) {
        case '&':
            out += QLatin1String("&amp;");
            break;
        case '<':
            out += QLatin1String("&lt;");
            break;
        case '>':
            out += QLatin1String("&gt;");
            break;
        case '"':
            out += quotes ? QLatin1String("&quot;") : QLatin1String("\"");
            break;
        case '\'':
            out += quotes ? QLatin1String("&apos;") : QLatin1String("'");
            break;
        default:
            out += c;
        }
    }
    return out;
}

QString XmlSafeText(const QString& text, QString* dropped) {
    QString out;
    out.reserve(text.size() + 16);
    for (qsizetype i = 0; i < text.size(); ++i) {
        char32_t c = text[i].unicode();
        if (QChar::isHighSurrogate(c) && i + 1 < text.size() && text[i + 1].isLowSurrogate()) {
            c = QChar::surrogateToUcs4(text[i], text[i + 1]);
            ++i;
        }
        if (isForbiddenInXml(c)) {
            if (dropped) {
                if (!dropped->isEmpty())
                    *dropped += QLatin1String(", ");
                *dropped += QLatin1String("U+") + QStringLiteral("%1").arg(uint(c), 4, 16, QLatin1Char('0')).toUpper();
            }
        } else if (isInWindows1252(c)) {
            out += QChar(char16_t(c));
        } else {
            out += QLatin1String("&#") + QString::number(uint(c)) + QLatin1Char(';');
        }
    }
    return out;
}

bool IsWellFormedXml(const QString& text, QString* problem) {
    QXmlStreamReader reader(text);
    bool element = false;
    while (!reader.atEnd()) {
        reader.readNext();
        element = element || reader.isStartElement();
    }
    if (!reader.hasError() && element)
        return true;
    if (problem)
        *problem = reader.hasError() ? QStringLiteral("Zeile %1: %2").arg(reader.lineNumber()).arg(reader.errorString())
                                     : QStringLiteral("kein XML-Element");
    return false;
}

QString TemplateProblem(const QString& templateText) {
    if (templateText.trimmed().isEmpty())
        return QStringLiteral("Die Vorlage ist leer.");
    ExportValues sample;
    sample.scanDat = sample.gebDat = sample.cardExpiry = QStringLiteral("01.01.2000");
    sample.formId = sample.state = sample.caseIdentifier = sample.nachname = sample.vorname = sample.personalId =
        sample.institutId = sample.cardId = QStringLiteral("X");
    QString problem;
    if (!IsWellFormedXml(XmlSafeText(RemoveEmptyLines(FillExportTemplate(templateText, sample))), &problem))
        return QStringLiteral("Die Vorlage ist kein gültiges XML (%1).").arg(problem);
    return QString();
}

QString FillExportTemplate(const QString& templateText, const ExportValues& v) {
    // The order is part of the format: a value that happens to contain a later placeholder is
    // replaced again, exactly as the receiving side has always seen it.
    struct Step {
        const char* placeholder;
        const char* element; // nullptr: the value stands bare (it may sit inside an attribute)
        QString value;
    };
    const Step steps[] = {
        {"%VERSION%", nullptr, QLatin1String(ExportSchemaVersion)},
        {"%FORM_DATE%", nullptr, ExportDate(v.scanDat)},
        {"%FORM_ID%", "Form_identifier", v.formId},
        {"%STATE%", "Issuing_member_state", v.state},
        {"%CASE_IDENTIFIER%", "Case_Identifier", v.caseIdentifier},
        {"%NACHNAME%", "Name", v.nachname},
        {"%VORNAME%", "Given_names", v.vorname},
        {"%GEBDAT%", "Date_of_birth", ExportDate(v.gebDat)},
        {"%PERSONAL_ID%", "Personal_identification_number", v.personalId},
        {"%INSTITUT_ID%", "Identification_number_of_the_institution", v.institutId},
        {"%CARD_ID%", "Identification_number_of_the_card", v.cardId},
        {"%CARD_EXPIRY%", "Expiry_date", ExportDate(v.cardExpiry)},
    };
    QString text = templateText;
    for (const Step& step : steps) {
        const QString placeholder = QLatin1String(step.placeholder);
        if (!text.contains(placeholder))
            continue;
        const QString replacement = step.element ? XmlElement(XmlEscape(step.value, false), QLatin1String(step.element))
                                                 : XmlEscape(step.value, true);
        text.replace(placeholder, replacement);
    }
    return text;
}

QString FileNameOf(const QString& path) {
    const qsizetype cut = std::max(path.lastIndexOf(QLatin1Char('/')), path.lastIndexOf(QLatin1Char('\\')));
    return path.mid(cut + 1);
}

QString ExportFileName(const QString& exportFolder, const QString& bmpName) {
    QString base = FileNameOf(bmpName);
    const qsizetype dot = base.lastIndexOf(QLatin1Char('.'));
    if (dot >= 0)
        base.truncate(dot);
    QString folder = exportFolder;
    if (!folder.endsWith(QLatin1Char('/')))
        folder += QLatin1Char('/');
    return folder + base + QLatin1String(".xml");
}
