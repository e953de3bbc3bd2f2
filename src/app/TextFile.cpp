// SPDX-License-Identifier: Apache-2.0
#include "TextFile.h"

#include "CheckedFile.h"
#include "Errors.h"

#include <QFile>
#include <QStringDecoder>
#include <QStringEncoder>

QString decodeText(const QByteArray& bytes) {
    if (bytes.startsWith("\xEF\xBB\xBF"))
        return QString::fromUtf8(bytes.constData() + 3, bytes.size() - 3);
    QStringDecoder decoder("windows-1252");
    return decoder.decode(bytes);
}

QByteArray encodeText(const QString& text) {
    QString normalised;
    normalised.reserve(text.size() + 16);
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text[i];
        if (c == QLatin1Char('\n') && (i == 0 || text[i - 1] != QLatin1Char('\r')))
            normalised += QLatin1Char('\r');
        normalised += c;
    }
    QStringEncoder encoder("windows-1252");
    QByteArray bytes = encoder.encode(normalised);
    if (encoder.hasError())
        bytes.replace('\x1A', '?');
    return bytes;
}

QStringList splitLines(const QString& text) {
    QStringList lines;
    qsizetype start = 0;
    const qsizetype n = text.size();
    for (qsizetype i = 0; i < n; ++i) {
        const QChar c = text[i];
        if (c == QLatin1Char('\r') || c == QLatin1Char('\n')) {
            lines.append(text.mid(start, i - start));
            if (c == QLatin1Char('\r') && i + 1 < n && text[i + 1] == QLatin1Char('\n'))
                ++i;
            start = i + 1;
        }
    }
    if (start < n)
        lines.append(text.mid(start));
    return lines;
}

bool readTextFile(const QString& path, QString& text) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    text = decodeText(file.readAll());
    return true;
}

bool readTextLines(const QString& path, QStringList& lines) {
    QString text;
    lines.clear();
    if (!readTextFile(path, text))
        return false;
    lines = splitLines(text);
    return true;
}

bool writeTextFile(const QString& path, const QString& text) {
    // Written aside, synced and renamed, so a crash never leaves half a file behind.
    try {
        writeFileChecked(path, encodeText(text));
        return true;
    } catch (const VeridonError&) {
        return false;
    }
}

bool writeTextLines(const QString& path, const QStringList& lines) {
    QString text;
    for (const QString& line : lines)
        text += line + QLatin1String("\r\n");
    return writeTextFile(path, text);
}

bool appendTextLine(const QString& path, const QString& line) {
    try {
        appendFileChecked(path, encodeText(line + QLatin1String("\r\n")));
        return true;
    } catch (const VeridonError&) {
        return false;
    }
}
