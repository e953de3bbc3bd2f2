// SPDX-License-Identifier: Apache-2.0
// Fuzzes the result line splitter with the evaluation program's escape codes and the cutting to a
// column's size, as the import applies them to every part of a line.
//
// Input: byte 0 picks the separator, byte 1 the number of columns, the rest is the line as read
// from a Windows-1252 file.

#include "import/ResultLine.h"

#include <QString>
#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    if (size < 2)
        return 0;
    static const char* const separators[] = {",", ";", "||", "\t", ";;"};
    const QString separator = QString::fromLatin1(separators[data[0] % 5]);
    const int maxParts = data[1] % 64;
    const QString line = QString::fromLatin1(reinterpret_cast<const char*>(data + 2), qsizetype(size - 2));
    const QVector<ResultPart> parts = splitResultLine(line, separator, maxParts);
    if (parts.size() > maxParts)
        std::abort();
    for (const ResultPart& part : parts) {
        // Padding blanks never reach a value.
        if (part.text.startsWith(QLatin1Char(' ')) || part.text.endsWith(QLatin1Char(' ')))
            std::abort();
        if (part.null && !part.text.isEmpty())
            std::abort();
        bool invalid = false;
        const QString value = resolveEscapeCodes(part.text, invalid);
        // An invalid field is reduced to "?"; no "\i" survives into a stored value.
        if (value.contains(QLatin1String("\\i")))
            std::abort();
        const QString cut = value.left(maxParts);
        if (cut.size() > maxParts)
            std::abort();
    }
    return 0;
}
