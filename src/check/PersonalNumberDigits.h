// SPDX-License-Identifier: Apache-2.0
// What the rules of the personal numbers share: reading digits out of a number and the one
// function per state. Only the rule files include this.
#pragma once

#include <QString>
#include <initializer_list>

namespace personal_number {

// One state's rule: number is upper-case, without blanks, dots and slashes (hyphens kept).
using Rule = bool (*)(const QString& number);

// The digit at index of text (0..9), or -1 for any other character or an index past the end.
inline int digitAt(const QString& text, qsizetype index) {
    if (index < 0 || index >= text.size())
        return -1;
    const QChar c = text.at(index);
    return c >= QLatin1Char('0') && c <= QLatin1Char('9') ? c.unicode() - u'0' : -1;
}

// True when text holds exactly length characters, all digits.
inline bool isDigits(const QString& text, qsizetype length) {
    if (text.size() != length)
        return false;
    for (qsizetype i = 0; i < length; ++i)
        if (digitAt(text, i) < 0)
            return false;
    return true;
}

// The number written by the digits of text from start on, length of them (all digits by contract).
inline qint64 numberAt(const QString& text, qsizetype start, qsizetype length) {
    qint64 n = 0;
    for (qsizetype i = start; i < start + length; ++i)
        n = n * 10 + digitAt(text, i);
    return n;
}

// The sum of digit i times weight i, from the first digit of text on (digits by contract).
inline int weightedSum(const QString& text, std::initializer_list<int> weights) {
    int sum = 0;
    qsizetype i = 0;
    for (const int w : weights)
        sum += digitAt(text, i++) * w;
    return sum;
}

// text without its hyphens, for the numbers in which a hyphen only separates groups.
inline QString withoutHyphens(QString text) {
    text.remove(QLatin1Char('-'));
    return text;
}

bool austria(const QString& number);
bool belgium(const QString& number);
bool bulgaria(const QString& number);
bool czechOrSlovakia(const QString& number);
bool germany(const QString& number);
bool denmark(const QString& number);
bool estoniaOrLithuania(const QString& number);
bool spain(const QString& number);
bool finland(const QString& number);
bool france(const QString& number);
bool croatia(const QString& number);
bool italy(const QString& number);
bool latvia(const QString& number);
bool netherlands(const QString& number);
bool norway(const QString& number);
bool poland(const QString& number);
bool portugal(const QString& number);
bool romania(const QString& number);
bool sweden(const QString& number);
bool slovenia(const QString& number);

} // namespace personal_number
