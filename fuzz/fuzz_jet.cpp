// SPDX-License-Identifier: Apache-2.0
// Fuzzes the Jet dialect: the statement translation and Jet's LIKE and InStr as the master data's
// conditions use them.
//
// Input: a pattern, a line feed, a value (UTF-8); the whole input is also translated as a
// statement.

#include "app/JetDialect.h"

#include <QString>
#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const QString input = QString::fromUtf8(reinterpret_cast<const char*>(data), qsizetype(size));
    const QString sql = translateJet(input);
    // Without "&" and "DELETE" nothing is rewritten.
    if (!input.contains(QLatin1Char('&')) && !input.contains(QLatin1String("DELETE"), Qt::CaseInsensitive) &&
        sql != input)
        std::abort();
    const qsizetype newline = input.indexOf(QLatin1Char('\n'));
    const QString pattern = newline < 0 ? input : input.left(newline);
    const QString value = newline < 0 ? QString() : input.mid(newline + 1);
    jetLike(pattern, value);
    // "*" takes anything; a pattern without special characters matches itself, and in upper case
    // when it is plain ASCII (a full case mapping may change the length of other letters).
    if (!jetLike(QStringLiteral("*"), value))
        std::abort();
    static const QString specials = QStringLiteral("*?#[]");
    bool plain = true;
    bool ascii = true;
    for (const QChar c : value) {
        plain = plain && !specials.contains(c);
        ascii = ascii && c.unicode() < 0x80;
    }
    if (plain && (!jetLike(value, value) || (ascii && !jetLike(value, value.toUpper()))))
        std::abort();
    const int at = jetInStr(1, value, pattern);
    if (at < 0 || at > value.size() + 1)
        std::abort();
    return 0;
}
