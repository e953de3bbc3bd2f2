// SPDX-License-Identifier: Apache-2.0
#include "TextFile.h"

#include "CheckedFile.h"
#include "Errors.h"

#include <QFile>
#include <QStringDecoder>
#include <QStringEncoder>
#include <algorithm>
#include <array>

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

namespace {

// Windows-1252 bytes as text; the table is built once, since a decoder object per line would cost
// more than the line.
QString decodeWindows1252(const char* bytes, qsizetype size) {
    static const std::array<char16_t, 256> table = [] {
        std::array<char16_t, 256> t{};
        QByteArray all(256, '\0');
        for (int i = 0; i < 256; ++i)
            all[i] = char(i);
        QStringDecoder decoder("windows-1252");
        const QString text = decoder.decode(all);
        for (int i = 0; i < 256; ++i)
            t[size_t(i)] = i < text.size() ? text[i].unicode() : char16_t(0xFFFD);
        return t;
    }();
    QString text(size, Qt::Uninitialized);
    QChar* out = text.data();
    for (qsizetype i = 0; i < size; ++i)
        out[i] = QChar(table[static_cast<unsigned char>(bytes[i])]);
    return text;
}

constexpr qint64 lineBlockSize = 1 << 18;

} // namespace

bool TextLineReader::open(const QString& path) {
    file_.setFileName(path);
    if (!file_.open(QIODevice::ReadOnly))
        return false;
    fill();
    utf8_ = buffer_.startsWith("\xEF\xBB\xBF");
    pos_ = utf8_ ? 3 : 0;
    return !failed_;
}

// Appends the next block to what is left unread; false when nothing more came.
bool TextLineReader::fill() {
    if (end_)
        return false;
    buffer_.remove(0, pos_);
    pos_ = 0;
    const qsizetype had = buffer_.size();
    buffer_.resize(had + lineBlockSize);
    const qint64 got = file_.read(buffer_.data() + had, lineBlockSize);
    buffer_.resize(had + std::max<qint64>(got, 0));
    if (got <= 0) {
        end_ = true;
        failed_ = got < 0;
    }
    return got > 0;
}

bool TextLineReader::next(QString& line) {
    for (;;) {
        const char* data = buffer_.constData();
        const qsizetype size = buffer_.size();
        qsizetype i = pos_;
        while (i < size && data[i] != '\r' && data[i] != '\n')
            ++i;
        // A CR at the end of the block may be the first half of a CR LF.
        if (i < size && !(data[i] == '\r' && i + 1 == size && !end_)) {
            line = utf8_ ? QString::fromUtf8(data + pos_, i - pos_) : decodeWindows1252(data + pos_, i - pos_);
            pos_ = data[i] == '\r' && i + 1 < size && data[i + 1] == '\n' ? i + 2 : i + 1;
            return true;
        }
        const bool heldBack = i < size;
        if (!fill()) {
            if (failed_ || pos_ >= buffer_.size())
                return false;
            if (heldBack) // the file ended after that CR: it ends the line alone
                continue;
            data = buffer_.constData();
            line = utf8_ ? QString::fromUtf8(data + pos_, buffer_.size() - pos_)
                         : decodeWindows1252(data + pos_, buffer_.size() - pos_);
            pos_ = buffer_.size();
            return true;
        }
    }
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
