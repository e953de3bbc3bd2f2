// SPDX-License-Identifier: Apache-2.0
// Blank handling shared by the import and its clean-up. The evaluation program pads with plain
// blanks only, so trimming and removing touch the blank character and nothing else (a tab or a
// non-breaking space inside a value is content, not padding).
#pragma once

#include <QString>
#include <QStringView>

// text without leading and trailing blanks.
inline QString trimBlanks(QStringView text) {
    qsizetype begin = 0;
    qsizetype end = text.size();
    while (begin < end && text[begin] == u' ')
        ++begin;
    while (end > begin && text[end - 1] == u' ')
        --end;
    return text.mid(begin, end - begin).toString();
}

// text with every blank removed (numbers read with gaps: "1234 5678" -> "12345678").
inline QString removeBlanks(QString text) {
    text.remove(QLatin1Char(' '));
    return text;
}
