// SPDX-License-Identifier: Apache-2.0
#include "FieldColours.h"

#include "Errors.h"

qint32 parseColourText(const QString& text) {
    const QString t = text.trimmed();
    bool ok = false;
    qint64 value = 0;
    if (t.startsWith(QLatin1String("&H"), Qt::CaseInsensitive)) {
        QString digits = t.mid(2);
        if (digits.endsWith(QLatin1Char('&')))
            digits.chop(1);
        value = digits.isEmpty() || digits.size() > 8 ? 0 : digits.toLongLong(&ok, 16);
        ok = ok && !digits.isEmpty() && digits.size() <= 8;
    } else {
        value = t.toLongLong(&ok, 10);
        ok = ok && value >= INT32_MIN && value <= INT32_MAX;
    }
    if (!ok)
        throw VeridonError(ErrorNumber::TypeMismatch, Msg::ErrTypeMismatchValue, {text});
    return qint32(quint32(value));
}

qint32 colourForStatus(const QString& code, const FieldColours& colours) {
    if (code.size() != 1)
        return colours.noCheck;
    switch (code.at(0).unicode()) {
    case '0':
        return colours.ok;
    case '2':
        return colours.syntaxOk;
    case '3':
        return colours.fehler;
    case '4':
        return colours.ausgegraut;
    case '5':
        return colours.warnung;
    default:
        return colours.noCheck;
    }
}
