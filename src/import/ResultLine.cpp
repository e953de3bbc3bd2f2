// SPDX-License-Identifier: Apache-2.0
#include "ResultLine.h"

#include "ImportText.h"

namespace {

void replaceFirst(QString& value, QLatin1StringView code, QStringView replacement) {
    const qsizetype at = value.indexOf(code);
    if (at >= 0)
        value.replace(at, code.size(), replacement.toString());
}

} // namespace

QVector<ResultPart> splitResultLine(const QString& line, const QString& separator, int maxParts) {
    QVector<ResultPart> parts;
    splitResultLine(line, separator, maxParts, parts);
    return parts;
}

void splitResultLine(const QString& line, const QString& separator, int maxParts, QVector<ResultPart>& parts) {
    parts.clear();
    QStringView rest(line);
    while (!rest.isEmpty() && parts.size() < maxParts) {
        const qsizetype at = rest.indexOf(separator);
        if (at < 0) {
            parts.push_back({trimBlanks(rest), false});
            break;
        }
        if (at == 0)
            parts.push_back({QString(), true});
        else
            parts.push_back({trimBlanks(rest.left(at)), false});
        rest = rest.mid(at + separator.size());
    }
}

QString resolveEscapeCodes(const QString& value, bool& invalid) {
    if (!value.contains(QLatin1Char('\\')))
        return value;
    static constexpr QLatin1StringView bf("\\bf");
    static constexpr QLatin1StringView w("\\w");
    static constexpr QLatin1StringView f("\\f");
    static constexpr QLatin1StringView l("\\l");
    static constexpr QLatin1StringView i("\\i");
    QString v = value;
    // One code per kind and round, as the evaluation program's codes were always undone; removing
    // "\l" may join two characters into a new code, which the next round then resolves.
    while (v.contains(bf) || v.contains(w) || v.contains(f) || v.contains(l)) {
        replaceFirst(v, bf, u"?");
        if (v.contains(w))
            v = QStringLiteral("0");
        replaceFirst(v, f, u"?");
        replaceFirst(v, l, u"");
    }
    if (v.contains(i)) {
        v = QStringLiteral("?");
        invalid = true;
    }
    return v;
}
