// SPDX-License-Identifier: Apache-2.0
// Template filling for the XML hand-over. The template is treated as plain text, line by line, as
// the receiving side's format was defined around it; only the values are made safe for XML.
#include "ExportTemplate.h"

#include <QDate>
#include <QXmlStreamReader>
#include <iterator>

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

struct Placeholder {
    const char* name;
    const char* element; // nullptr: the value stands bare (it may sit inside an attribute)
};

// The placeholders in the order they are replaced, with the element each value is wrapped in.
constexpr Placeholder placeholders[] = {
    {"%VERSION%", nullptr},
    {"%FORM_DATE%", nullptr},
    {"%FORM_ID%", "Form_identifier"},
    {"%STATE%", "Issuing_member_state"},
    {"%CASE_IDENTIFIER%", "Case_Identifier"},
    {"%NACHNAME%", "Name"},
    {"%VORNAME%", "Given_names"},
    {"%GEBDAT%", "Date_of_birth"},
    {"%PERSONAL_ID%", "Personal_identification_number"},
    {"%INSTITUT_ID%", "Identification_number_of_the_institution"},
    {"%CARD_ID%", "Identification_number_of_the_card"},
    {"%CARD_EXPIRY%", "Expiry_date"},
};

// A word no template holds, one per placeholder, to find out where each value lands.
QString markerOf(int index) {
    return QStringLiteral("qxvrdn") + QLatin1Char(char('a' + index)) + QLatin1Char('q');
}

// The first placeholder of templateText that stands anywhere but in character data or (a bare one)
// in an attribute value, or "" when all are in such places. %VERSION% is a constant and may stand
// anywhere the template parses. Each placeholder is replaced by its own marker word, and every part
// of the parsed document in which a value could do harm is searched for the markers.
QString misplacedPlaceholder(const QString& templateText) {
    QString text = templateText;
    for (int i = 0; i < int(std::size(placeholders)); ++i) {
        const Placeholder& p = placeholders[i];
        const QString value = i == 0 ? QLatin1String(ExportSchemaVersion) : markerOf(i);
        text.replace(QLatin1String(p.name), p.element ? XmlElement(value, QLatin1String(p.element)) : value);
    }
    text = XmlSafeText(RemoveEmptyLines(text));
    QString harmless; // character data and attribute values
    QString exposed;  // names, comments, processing instructions, the document type
    const auto add = [](QString& to, QStringView part) {
        to += part;
        to += QLatin1Char(' ');
    };
    QXmlStreamReader reader(text);
    while (!reader.atEnd()) {
        reader.readNext();
        add(exposed, reader.documentEncoding());
        if (reader.isCharacters()) {
            add(harmless, reader.text());
        } else if (reader.isStartElement()) {
            add(exposed, reader.qualifiedName());
            for (const QXmlStreamAttribute& a : reader.attributes()) {
                add(exposed, a.qualifiedName());
                add(harmless, a.value());
            }
            for (const QXmlStreamNamespaceDeclaration& n : reader.namespaceDeclarations()) {
                add(exposed, n.prefix());
                add(exposed, n.namespaceUri());
            }
        } else {
            for (const QXmlStreamEntityDeclaration& e : reader.entityDeclarations()) {
                add(exposed, e.name());
                add(exposed, e.value());
                add(exposed, e.systemId());
            }
            for (const QStringView part :
                 {reader.dtdName(), reader.dtdSystemId(), reader.dtdPublicId(), reader.qualifiedName(), reader.name(),
                  reader.text(), reader.processingInstructionTarget(), reader.processingInstructionData()})
                add(exposed, part);
        }
    }
    for (int i = 1; i < int(std::size(placeholders)); ++i) {
        const QString marker = markerOf(i);
        if (exposed.contains(marker) || harmless.count(marker) != text.count(marker))
            return QLatin1String(placeholders[i].name);
    }
    return QString();
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
    if (!IsWellFormedXml(ExportXmlText(templateText, sample), &problem))
        return QStringLiteral("Die Vorlage ist kein gültiges XML (%1).").arg(problem);
    if (!IsWellFormedXml(ExportXmlText(templateText, ExportValues()), &problem))
        return QStringLiteral("Die Vorlage ist kein gültiges XML, wenn Werte leer sind (%1).").arg(problem);
    const QString misplaced = misplacedPlaceholder(templateText);
    if (!misplaced.isEmpty())
        return QStringLiteral("Der Platzhalter %1 steht an einer Stelle, an der ein Wert die Datei unlesbar machen "
                              "kann (erlaubt: Text zwischen Elementen; %VERSION% und %FORM_DATE% auch in "
                              "Attributwerten).")
            .arg(misplaced);
    return QString();
}

bool IsReadableExportDate(const QString& storedDate) {
    if (storedDate.isEmpty())
        return true;
    if (storedDate.size() != 10)
        return false;
    for (const int at : {0, 1, 3, 4, 6, 7, 8, 9})
        if (storedDate[at] < QLatin1Char('0') || storedDate[at] > QLatin1Char('9'))
            return false;
    const QStringView text(storedDate);
    return QDate(text.mid(6, 4).toInt(), text.mid(3, 2).toInt(), text.mid(0, 2).toInt()).isValid();
}

QString UnreadableExportDate(const ExportValues& values) {
    if (!IsReadableExportDate(values.scanDat))
        return QStringLiteral("SCANDAT");
    if (!IsReadableExportDate(values.gebDat))
        return QStringLiteral("GEBDAT");
    if (!IsReadableExportDate(values.cardExpiry))
        return QStringLiteral("CARD_EXPIRY");
    return QString();
}

QString FillExportTemplate(const QString& templateText, const ExportValues& v) {
    // The order is part of the format: a value that happens to contain a later placeholder is
    // replaced again, exactly as the receiving side has always seen it.
    const QString values[] = {QLatin1String(ExportSchemaVersion),
                              ExportDate(v.scanDat),
                              v.formId,
                              v.state,
                              v.caseIdentifier,
                              v.nachname,
                              v.vorname,
                              ExportDate(v.gebDat),
                              v.personalId,
                              v.institutId,
                              v.cardId,
                              ExportDate(v.cardExpiry)};
    QString text = templateText;
    for (int i = 0; i < int(std::size(placeholders)); ++i) {
        const Placeholder& step = placeholders[i];
        const QString placeholder = QLatin1String(step.name);
        if (!text.contains(placeholder))
            continue;
        const QString replacement = step.element ? XmlElement(XmlEscape(values[i], false), QLatin1String(step.element))
                                                 : XmlEscape(values[i], true);
        text.replace(placeholder, replacement);
    }
    return text;
}

QString ExportXmlText(const QString& templateText, const ExportValues& values, QString* dropped) {
    return XmlSafeText(RemoveEmptyLines(FillExportTemplate(templateText, values)), dropped) + crlf;
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
