// Template filling for the XML hand-over. The template is treated as plain text, line by line, as
// the receiving side's format was defined around it; only the values are made safe for XML.
#include "ExportTemplate.h"

namespace {

const QString crlf = QStringLiteral("\r\n");

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
