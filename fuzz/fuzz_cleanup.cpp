// SPDX-License-Identifier: Apache-2.0
// Fuzzes the clean-up's line helpers with raw card lines as a reader returns them: margins, case,
// the split at the widest gap, the date cut out of its surroundings and the state read from a
// heading line.
//
// Input: byte 0 gives the margin count, the rest is one line (UTF-8, as Tesseract writes it).

#include "import/OcrCorrection.h"

#include <QString>
#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    if (size < 1)
        return 0;
    const int margin = data[0] % 8;
    const QString line = QString::fromUtf8(reinterpret_cast<const char*>(data + 1), qsizetype(size - 1));

    const QString trimmed = EntferneRandzeichen(line, margin);
    if (trimmed.size() > line.size())
        std::abort();
    SmartCase(line);
    QString first, second;
    TrenneAmGroesstenAbstand(line, first, second);
    if (first.size() + second.size() > line.size())
        std::abort();
    // A date is cut to exactly its ten characters, or the text comes back as it was.
    const QString date = SchneideDatumAus(line);
    if (date != line && date.size() != 10)
        std::abort();
    repairCardDate(line);
    static const StateCodes states(QStringList{QStringLiteral("AT"), QStringLiteral("DE"), QStringLiteral("DK"),
                                               QStringLiteral("FR"), QStringLiteral("IT"), QStringLiteral("NL")});
    ErmittleStaat(line, states);
    return 0;
}
