// SPDX-License-Identifier: Apache-2.0
// Fuzzes the template filler of the XML hand-over with a hostile default.xml and hostile record
// values, along the pass's own path: a template that the pass's check refuses is never filled, nor
// is a record whose date cannot be read. For everything else the text that would be written must
// parse as one well-formed XML document in Windows-1252, whatever the values hold (markup, controls,
// lone surrogates, placeholders, line breaks, nothing at all).
//
// Input: the template (bytes as a file holds them), then up to eleven values each introduced by a
// NUL byte, in the order SCANDAT, FORM_ID, STATE, State_XmlType, NACHNAME, VORNAME, GEBDAT,
// PERSONAL_ID, INSTITUT_ID, CARD_ID, CARD_EXPIRY. A value is UTF-8, or UTF-16 (little-endian code
// units, so lone surrogates reach the filler) when its first byte is 0xFF.

#include "app/TextFile.h"
#include "export/ExportTemplate.h"

#include <QByteArrayList>
#include <QString>
#include <QXmlStreamReader>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

namespace {

QString valueOf(const QByteArray& bytes) {
    if (bytes.startsWith('\xff')) {
        const QByteArray units = bytes.mid(1);
        QString text;
        for (qsizetype i = 0; i + 1 < units.size(); i += 2)
            text += QChar(char16_t(quint8(units[i]) | (quint8(units[i + 1]) << 8)));
        return text;
    }
    return QString::fromUtf8(bytes);
}

// The check of the target's own, independent of the one the pass runs: one document, no error.
bool readsAsXml(const QString& text) {
    QXmlStreamReader reader(text);
    int roots = 0;
    int depth = 0;
    while (!reader.atEnd()) {
        reader.readNext();
        if (reader.isStartElement() && depth++ == 0)
            ++roots;
        else if (reader.isEndElement())
            --depth;
    }
    return !reader.hasError() && roots == 1;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const QByteArrayList pieces = QByteArray(reinterpret_cast<const char*>(data), qsizetype(size)).split('\0');
    // default.xml as the pass reads it: decoded, split into lines, each ended by CR LF.
    QString templateText;
    for (const QString& line : splitLines(decodeText(pieces[0])))
        templateText += line + QStringLiteral("\r\n");
    if (!TemplateProblem(templateText).isEmpty())
        return 0;

    ExportValues v;
    QString* const order[] = {&v.scanDat, &v.formId,     &v.state,      &v.caseIdentifier, &v.nachname,  &v.vorname,
                              &v.gebDat,  &v.personalId, &v.institutId, &v.cardId,         &v.cardExpiry};
    for (qsizetype i = 1; i < pieces.size() && i <= 11; ++i)
        *order[i - 1] = valueOf(pieces[i]);

    // The pass refuses a record whose date it cannot read before anything is filled.
    if (!UnreadableExportDate(v).isEmpty())
        return 0;
    const QString text = ExportXmlText(templateText, v);
    // The file is written in Windows-1252, which turns a character it cannot hold into "?".
    if (encodeText(text).count('?') != text.count(QLatin1Char('?'))) {
        std::fprintf(stderr, "a character does not fit Windows-1252:\n%s\n", text.toUtf8().constData());
        std::abort();
    }
    if (!readsAsXml(text)) {
        std::fprintf(stderr, "malformed output:\n%s\n", text.toUtf8().constData());
        std::abort();
    }
    return 0;
}
