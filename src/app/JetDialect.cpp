// SPDX-License-Identifier: Apache-2.0
#include "JetDialect.h"

#include "Clock.h"

#include <QRegularExpression>
#include <sqlite3.h>
#include <vector>

namespace {

// Compares one pattern position against one character; advances the pattern past a class.
// Returns false when the character does not match.
bool matchClass(const QString& pattern, qsizetype& p, QChar c) {
    // pattern[p] == '['
    qsizetype q = p + 1;
    bool negate = false;
    if (q < pattern.size() && pattern[q] == QLatin1Char('!')) {
        negate = true;
        ++q;
    }
    bool hit = false;
    const QChar lc = c.toLower();
    bool first = true;
    while (q < pattern.size() && (pattern[q] != QLatin1Char(']') || first)) {
        first = false;
        QChar from = pattern[q].toLower();
        if (q + 2 < pattern.size() && pattern[q + 1] == QLatin1Char('-') && pattern[q + 2] != QLatin1Char(']')) {
            const QChar to = pattern[q + 2].toLower();
            if (lc >= from && lc <= to)
                hit = true;
            q += 3;
        } else {
            if (lc == from)
                hit = true;
            ++q;
        }
    }
    p = q + 1; // past ']' (or past the end for an unclosed class)
    return hit != negate;
}

// Jet's LIKE as a walk over pattern and value. A "*" tries every rest of the value; the states
// (pattern position after the "*", value position) found not to match are remembered, so a pattern
// of many "*" runs in time proportional to pattern times value instead of exponentially (a hostile
// condition or value must not hang a check).
class LikeMatcher {
public:
    LikeMatcher(const QString& pattern, const QString& value) : pattern_(pattern), value_(value) {}

    bool at(qsizetype p, qsizetype v) {
        while (p < pattern_.size()) {
            const QChar pc = pattern_[p];
            if (pc == QLatin1Char('*')) {
                while (p < pattern_.size() && pattern_[p] == QLatin1Char('*'))
                    ++p;
                if (p == pattern_.size())
                    return true;
                for (qsizetype k = v; k <= value_.size(); ++k) {
                    if (failed(p, k))
                        continue;
                    if (at(p, k))
                        return true;
                    markFailed(p, k);
                }
                return false;
            }
            if (v >= value_.size())
                return false;
            const QChar vc = value_[v];
            if (pc == QLatin1Char('?')) {
                ++p;
            } else if (pc == QLatin1Char('#')) {
                if (!vc.isDigit())
                    return false;
                ++p;
            } else if (pc == QLatin1Char('[')) {
                if (!matchClass(pattern_, p, vc))
                    return false;
            } else {
                if (pc.toLower() != vc.toLower())
                    return false;
                ++p;
            }
            ++v;
        }
        return v == value_.size();
    }

private:
    std::size_t index(qsizetype p, qsizetype v) const {
        return std::size_t(p) * std::size_t(value_.size() + 1) + std::size_t(v);
    }
    bool failed(qsizetype p, qsizetype v) const { return !failed_.empty() && failed_[index(p, v)]; }
    void markFailed(qsizetype p, qsizetype v) {
        if (failed_.empty())
            failed_.assign(std::size_t(pattern_.size() + 1) * std::size_t(value_.size() + 1), false);
        failed_[index(p, v)] = true;
    }

    const QString& pattern_;
    const QString& value_;
    std::vector<bool> failed_;
};

QString textArg(sqlite3_value* v) {
    const auto* bytes = reinterpret_cast<const char*>(sqlite3_value_text(v));
    return bytes ? QString::fromUtf8(bytes, sqlite3_value_bytes(v)) : QString();
}

void resultText(sqlite3_context* ctx, const QString& s) {
    const QByteArray utf8 = s.toUtf8();
    sqlite3_result_text(ctx, utf8.constData(), int(utf8.size()), SQLITE_TRANSIENT);
}

bool anyNull(int argc, sqlite3_value** argv) {
    for (int i = 0; i < argc; ++i)
        if (sqlite3_value_type(argv[i]) == SQLITE_NULL)
            return true;
    return false;
}

void likeFunction(sqlite3_context* ctx, int argc, sqlite3_value** argv) {
    if (anyNull(2, argv)) {
        sqlite3_result_null(ctx);
        return;
    }
    QString pattern = textArg(argv[0]);
    if (argc == 3) {
        // LIKE ... ESCAPE 'e': turn "e<c>" into the Jet form "[<c>]".
        const QString esc = textArg(argv[2]);
        if (esc.size() == 1) {
            QString rewritten;
            for (qsizetype i = 0; i < pattern.size(); ++i) {
                if (pattern[i] == esc[0] && i + 1 < pattern.size()) {
                    rewritten += QLatin1Char('[') + pattern[i + 1] + QLatin1Char(']');
                    ++i;
                } else {
                    rewritten += pattern[i];
                }
            }
            pattern = rewritten;
        }
    }
    sqlite3_result_int(ctx, jetLike(pattern, textArg(argv[1])) ? 1 : 0);
}

void instrFunction(sqlite3_context* ctx, int argc, sqlite3_value** argv) {
    if (anyNull(argc, argv)) {
        sqlite3_result_null(ctx);
        return;
    }
    if (argc == 2)
        sqlite3_result_int(ctx, jetInStr(1, textArg(argv[0]), textArg(argv[1])));
    else
        sqlite3_result_int(ctx, jetInStr(sqlite3_value_int(argv[0]), textArg(argv[1]), textArg(argv[2])));
}

void nowFunction(sqlite3_context* ctx, int, sqlite3_value**) {
    resultText(ctx, appClock().now().toString(QStringLiteral("yyyy-MM-dd HH:mm:ss")));
}

void dateFunction(sqlite3_context* ctx, int, sqlite3_value**) {
    resultText(ctx, appClock().today().toString(QStringLiteral("yyyy-MM-dd")) + QStringLiteral(" 00:00:00"));
}

void leftFunction(sqlite3_context* ctx, int argc, sqlite3_value** argv) {
    if (anyNull(argc, argv))
        return sqlite3_result_null(ctx);
    resultText(ctx, textArg(argv[0]).left(qMax(0, sqlite3_value_int(argv[1]))));
}

void rightFunction(sqlite3_context* ctx, int argc, sqlite3_value** argv) {
    if (anyNull(argc, argv))
        return sqlite3_result_null(ctx);
    resultText(ctx, textArg(argv[0]).right(qMax(0, sqlite3_value_int(argv[1]))));
}

void midFunction(sqlite3_context* ctx, int argc, sqlite3_value** argv) {
    if (anyNull(argc, argv))
        return sqlite3_result_null(ctx);
    const QString s = textArg(argv[0]);
    const int start = qMax(1, sqlite3_value_int(argv[1]));
    resultText(ctx, argc == 3 ? s.mid(start - 1, qMax(0, sqlite3_value_int(argv[2]))) : s.mid(start - 1));
}

template <QString (*Fn)(const QString&)> void textFunction(sqlite3_context* ctx, int argc, sqlite3_value** argv) {
    if (anyNull(argc, argv))
        return sqlite3_result_null(ctx);
    resultText(ctx, Fn(textArg(argv[0])));
}

QString upper(const QString& s) {
    return s.toUpper();
}
QString lower(const QString& s) {
    return s.toLower();
}
QString trimBlanks(const QString& s) {
    qsizetype b = 0, e = s.size();
    while (b < e && s[b] == QLatin1Char(' '))
        ++b;
    while (e > b && s[e - 1] == QLatin1Char(' '))
        --e;
    return s.mid(b, e - b);
}

void nzFunction(sqlite3_context* ctx, int argc, sqlite3_value** argv) {
    if (sqlite3_value_type(argv[0]) != SQLITE_NULL)
        sqlite3_result_value(ctx, argv[0]);
    else if (argc == 2)
        sqlite3_result_value(ctx, argv[1]);
    else
        sqlite3_result_text(ctx, "", 0, SQLITE_STATIC);
}

void iifFunction(sqlite3_context* ctx, int, sqlite3_value** argv) {
    const bool condition = sqlite3_value_type(argv[0]) != SQLITE_NULL && sqlite3_value_double(argv[0]) != 0.0;
    sqlite3_result_value(ctx, condition ? argv[1] : argv[2]);
}

void lenFunction(sqlite3_context* ctx, int argc, sqlite3_value** argv) {
    if (anyNull(argc, argv))
        return sqlite3_result_null(ctx);
    sqlite3_result_int(ctx, int(textArg(argv[0]).size()));
}

} // namespace

QString translateJet(const QString& sql) {
    static const QRegularExpression deleteStar(QStringLiteral("^\\s*DELETE\\s+\\*\\s+FROM\\b"),
                                               QRegularExpression::CaseInsensitiveOption);
    QString out = sql;
    out.replace(deleteStar, QStringLiteral("DELETE FROM"));
    if (!out.contains(QLatin1Char('&')))
        return out;
    // "&" outside string literals and [names] is Jet's concatenation.
    QString result;
    result.reserve(out.size() + 8);
    QChar quote;
    for (const QChar c : std::as_const(out)) {
        if (!quote.isNull()) {
            result += c;
            if (c == quote)
                quote = QChar();
        } else if (c == QLatin1Char('\'') || c == QLatin1Char('"')) {
            quote = c;
            result += c;
        } else if (c == QLatin1Char('[')) {
            quote = QLatin1Char(']');
            result += c;
        } else if (c == QLatin1Char('&')) {
            result += QStringLiteral("||");
        } else {
            result += c;
        }
    }
    return result;
}

bool jetLike(const QString& pattern, const QString& value) {
    return LikeMatcher(pattern, value).at(0, 0);
}

int jetInStr(int start, const QString& haystack, const QString& needle) {
    if (start < 1 || start > haystack.size() + 1)
        return 0;
    if (needle.isEmpty())
        return start;
    const qsizetype at = haystack.indexOf(needle, start - 1, Qt::CaseInsensitive);
    return at < 0 ? 0 : int(at + 1);
}

void registerJetFunctions(sqlite3* handle) {
    constexpr int flags = SQLITE_UTF8;
    constexpr int pure = SQLITE_UTF8 | SQLITE_DETERMINISTIC;
    sqlite3_create_function_v2(handle, "like", 2, pure, nullptr, likeFunction, nullptr, nullptr, nullptr);
    sqlite3_create_function_v2(handle, "like", 3, pure, nullptr, likeFunction, nullptr, nullptr, nullptr);
    sqlite3_create_function_v2(handle, "InStr", 2, pure, nullptr, instrFunction, nullptr, nullptr, nullptr);
    sqlite3_create_function_v2(handle, "InStr", 3, pure, nullptr, instrFunction, nullptr, nullptr, nullptr);
    sqlite3_create_function_v2(handle, "Now", 0, flags, nullptr, nowFunction, nullptr, nullptr, nullptr);
    sqlite3_create_function_v2(handle, "Date", 0, flags, nullptr, dateFunction, nullptr, nullptr, nullptr);
    sqlite3_create_function_v2(handle, "Left", 2, pure, nullptr, leftFunction, nullptr, nullptr, nullptr);
    sqlite3_create_function_v2(handle, "Right", 2, pure, nullptr, rightFunction, nullptr, nullptr, nullptr);
    sqlite3_create_function_v2(handle, "Mid", 2, pure, nullptr, midFunction, nullptr, nullptr, nullptr);
    sqlite3_create_function_v2(handle, "Mid", 3, pure, nullptr, midFunction, nullptr, nullptr, nullptr);
    sqlite3_create_function_v2(handle, "UCase", 1, pure, nullptr, textFunction<upper>, nullptr, nullptr, nullptr);
    sqlite3_create_function_v2(handle, "LCase", 1, pure, nullptr, textFunction<lower>, nullptr, nullptr, nullptr);
    sqlite3_create_function_v2(handle, "Trim", 1, pure, nullptr, textFunction<trimBlanks>, nullptr, nullptr, nullptr);
    sqlite3_create_function_v2(handle, "Len", 1, pure, nullptr, lenFunction, nullptr, nullptr, nullptr);
    sqlite3_create_function_v2(handle, "Nz", 1, pure, nullptr, nzFunction, nullptr, nullptr, nullptr);
    sqlite3_create_function_v2(handle, "Nz", 2, pure, nullptr, nzFunction, nullptr, nullptr, nullptr);
    sqlite3_create_function_v2(handle, "IIf", 3, pure, nullptr, iifFunction, nullptr, nullptr, nullptr);
}
