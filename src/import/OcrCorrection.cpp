// SPDX-License-Identifier: Apache-2.0
#include "OcrCorrection.h"

#include "ImportText.h"
#include "app/Database.h"
#include "app/JetDialect.h"

namespace {

bool isDigit(QChar c) {
    return c >= u'0' && c <= u'9';
}

bool isCapital(QChar c) {
    return c >= u'A' && c <= u'Z';
}

// Characters of the card's border that the reader returns as text next to a line.
bool isFrameCharacter(QChar c) {
    return c == u']' || QStringView(u"?[()iIl/\\|1").contains(c);
}

// text from from on starts with "##/##/####".
bool datePatternAt(QStringView text, qsizetype from) {
    if (from < 0 || text.size() - from < 10)
        return false;
    for (int k = 0; k < 10; ++k) {
        const QChar c = text[from + k];
        if ((k == 2 || k == 5) ? c != u'/' : !isDigit(c))
            return false;
    }
    return true;
}

// Characters a slash is read as when the reader misses its slant.
bool isSlashLookalike(QChar c) {
    return c == u'/' || QStringView(u"1lIi!").contains(c);
}

// The first ten characters from from on read as a date whose slashes were read as look-alikes:
// "##S##S####" with S a slash or a look-alike, day 01-31 and month 01-12, so that a real number is
// not taken for a date.
bool misreadDateAt(QStringView text, qsizetype from) {
    if (text.size() - from < 10)
        return false;
    for (int k = 0; k < 10; ++k) {
        const QChar c = text[from + k];
        if ((k == 2 || k == 5) ? !isSlashLookalike(c) : !isDigit(c))
            return false;
    }
    const int day = text.mid(from, 2).toInt();
    const int month = text.mid(from + 3, 2).toInt();
    return day >= 1 && day <= 31 && month >= 1 && month <= 12;
}

// text with each character case-folded: two texts compare equal without regard to case exactly
// when their keys are equal.
QString foldedKey(const QString& text) {
    QString key = text;
    for (QChar& c : key)
        c = c.toCaseFolded();
    return key;
}

// text with each character lower-cased as a Jet pattern's plain characters are compared.
QString loweredKey(const QString& text) {
    QString key = text;
    for (QChar& c : key)
        c = c.toLower();
    return key;
}

} // namespace

OcrRules OcrRules::load() {
    OcrRules rules;
    QSqlQuery q = execSql(QStringLiteral("SELECT Feld, Suchstring, Ersatzstring FROM ocrErsetzungen ORDER BY rowid"));
    while (q.next()) {
        Row row;
        row.feld = q.value(0).toString();
        row.rule.search = q.value(1).toString().replace(QLatin1Char('#'), QLatin1Char(' '));
        row.rule.replacement = q.value(2).toString().replace(QLatin1Char('#'), QLatin1Char(' '));
        rules.rows_.push_back(row);
    }
    return rules;
}

QVector<OcrRule> OcrRules::forColumn(const QString& column) const {
    QVector<OcrRule> rules;
    for (const Row& row : rows_)
        if (row.feld == QLatin1String("*") || row.feld.compare(column, Qt::CaseInsensitive) == 0)
            rules.push_back(row.rule);
    return rules;
}

QString applyOcrRules(const QVector<OcrRule>& rules, QString value) {
    if (value.isEmpty())
        return value;
    // Most rules find nothing in most values: looking first is much cheaper than a replace, which
    // builds a matcher each time.
    for (const OcrRule& rule : rules) {
        if (rule.search.size() == 1) {
            // A single character, most rules: found and replaced without a string search.
            if (!value.contains(rule.search.front()))
                continue;
            if (rule.replacement.size() == 1)
                value.replace(rule.search.front(), rule.replacement.front());
            else
                value.replace(rule.search.front(), rule.replacement);
        } else if (!rule.search.isEmpty() && value.contains(rule.search, Qt::CaseSensitive)) {
            value.replace(rule.search, rule.replacement, Qt::CaseSensitive);
        }
    }
    return value;
}

QString OcrErsetzen(const QString& column, const QString& value) {
    QSqlQuery q = execSql(QStringLiteral("SELECT Suchstring, Ersatzstring FROM ocrErsetzungen WHERE Feld=%1 OR "
                                         "Feld='*' ORDER BY rowid")
                              .arg(sqlQuote(column)));
    QVector<OcrRule> rules;
    while (q.next())
        rules.push_back({q.value(0).toString().replace(QLatin1Char('#'), QLatin1Char(' ')),
                         q.value(1).toString().replace(QLatin1Char('#'), QLatin1Char(' '))});
    return applyOcrRules(rules, value);
}

QString EntferneRandzeichen(const QString& line, int n) {
    const QString blanks(n, QLatin1Char(' '));
    QString text = trimBlanks(line);
    if (text.size() > n && isFrameCharacter(text.front()) && QStringView(text).mid(1, n) == blanks)
        text = trimBlanks(QStringView(text).mid(1));
    if (text.size() > n && isFrameCharacter(text.back()) && QStringView(text).mid(text.size() - 1 - n, n) == blanks)
        text = trimBlanks(QStringView(text).left(text.size() - 1));
    return text;
}

QString SmartCase(const QString& text) {
    QString result = text;
    for (qsizetype i = 0; i < result.size(); ++i)
        if (i == 0 || result[i - 1] == u' ' || result[i - 1] == u'-')
            result[i] = result[i].toUpper();
    return result;
}

void TrenneAmGroesstenAbstand(const QString& text, QString& first, QString& second) {
    qsizetype longest = 0, longestAt = -1;
    for (qsizetype i = 0; i < text.size();) {
        if (text[i] != u' ') {
            ++i;
            continue;
        }
        qsizetype end = i;
        while (end < text.size() && text[end] == u' ')
            ++end;
        if (end - i > longest) {
            longest = end - i;
            longestAt = i;
        }
        i = end;
    }
    if (longestAt < 0) {
        first = text;
        second = QString();
        return;
    }
    first = trimBlanks(QStringView(text).left(longestAt));
    second = trimBlanks(QStringView(text).mid(longestAt + longest));
}

QString SchneideDatumAus(const QString& text) {
    if (text.size() == 10)
        return text;
    // The date starts two characters before one of the slashes; a slash in the first two
    // characters cannot open one.
    for (qsizetype slash = text.indexOf(QLatin1Char('/'), 2); slash >= 0;
         slash = text.indexOf(QLatin1Char('/'), slash + 1))
        if (datePatternAt(text, slash - 2))
            return text.mid(slash - 2, 10);
    return text;
}

StateCodes::StateCodes(QStringList codes) : codes_(std::move(codes)) {
    for (const QString& c : std::as_const(codes_)) {
        ++folded_[foldedKey(c)];
        ++lowered_[loweredKey(c)];
    }
}

StateCodes StateCodes::load() {
    QStringList codes;
    QSqlQuery q = execSql(QStringLiteral("SELECT State_ID FROM sysStates ORDER BY rowid"));
    while (q.next())
        if (!q.value(0).isNull())
            codes << q.value(0).toString();
    return StateCodes(std::move(codes));
}

int StateCodes::countEqual(const QString& code) const {
    return folded_.value(foldedKey(code));
}

bool StateCodes::anyMatching(const QString& pattern) const {
    static const QString wildcards = QStringLiteral("*?#[");
    for (const QChar c : pattern)
        if (wildcards.contains(c))
            return !matching(pattern).isEmpty();
    return lowered_.contains(loweredKey(pattern));
}

QStringList StateCodes::matching(const QString& pattern) const {
    QStringList found;
    for (const QString& c : codes_)
        if (jetLike(pattern, c))
            found << c;
    return found;
}

QStringList StateCodes::containedIn(const QString& text) const {
    QStringList found;
    for (const QString& c : codes_)
        if (!c.isEmpty() && text.contains(c, Qt::CaseInsensitive))
            found << c;
    return found;
}

QString ErmittleStaat(const QString& text, const StateCodes& states) {
    if (text.size() < 2)
        return text;
    const QString code = text.toUpper();
    if (code.size() == 2) {
        if (isCapital(code[0]) && isCapital(code[1]))
            return states.countEqual(code) == 1 ? code : QStringLiteral("?");
        // Only an unreadable second character is looked up: with the first one missing too many
        // states would fit to guess.
        if (isCapital(code[0]) && code[1] == u'?') {
            const QStringList found = states.matching(code);
            return found.size() == 1 ? found.first() : code;
        }
        return QStringLiteral("?");
    }
    const QStringList found = states.containedIn(code);
    return found.size() == 1 ? found.first() : QStringLiteral("?");
}

QString ErmittleStaat(const QString& text) {
    return ErmittleStaat(text, StateCodes::load());
}

// A slash read as "1" is the reading error seen most on the card's dates, and "l", "I", "i" and
// "!" are the same stroke without its slant. Wherever a date is found with such a character in
// either or both slash positions, both positions are set to "/": the three cases
// "##/##1####", "##1##/####" and "##1##1####" (and their look-alike twins) cannot overlap, so no
// order among them is needed, and one pass repairs the date wherever it stands in the text.
// Only a plausible day and month count as a date, so a number that merely has a 1 at those places
// stays as read for the operator to judge. The repaired date keeps the card's "/" like every other
// date the clean-up writes; the checks and the hand-over read the fields by position.
QString repairCardDate(const QString& text) {
    QString date = removeBlanks(text);
    date.replace(QLatin1Char('|'), QLatin1Char('/'));
    date.replace(QLatin1Char('\\'), QLatin1Char('/'));
    date = SchneideDatumAus(date);
    if (date.size() == 10 && datePatternAt(date, 0))
        return date;
    for (qsizetype from = 0; from + 10 <= date.size(); ++from) {
        if (misreadDateAt(date, from)) {
            QString repaired = date.mid(from, 10);
            repaired[2] = u'/';
            repaired[5] = u'/';
            return repaired;
        }
    }
    return date;
}
