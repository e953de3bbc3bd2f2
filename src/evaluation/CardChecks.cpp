// SPDX-License-Identifier: Apache-2.0
// The card rules. Texts are compared with the escape "\f" counted as one unknown character.
#include "CardChecks.h"

#include <QDate>

namespace evaluation {

namespace {

const QString unknown = QStringLiteral("\\f");

struct State {
    const char16_t* code;
    const char16_t* numeric;      // ISO 3166 numeric
    const char16_t* letters;      // the lower-case letters beyond a to z its names and institutions use
    const char16_t* absent = u""; // letters of a to z its own names never use
};

// The EU and EEA states and Switzerland. A letter outside a state's list is not forbidden (a holder
// may bear a foreign name) but too rare to pass unchecked: the engine's usual confusions (l and ł, Å
// and À, ė and è, O and Q) are between such letters. The absent letters are those the state's own
// alphabet lacks (Latvian has no q, w, x, y; Icelandic no c, q, w, z); they are only judged in
// names, since institutions carry foreign words and abbreviations.
const std::vector<State>& states() {
    static const std::vector<State> list{
        {u"AT", u"040", u"äöüß"},
        {u"BE", u"056", u"àâçéèêëîïôûüöäæœ"},
        {u"BG", u"100", u"", u"qwx"},
        {u"HR", u"191", u"čćđšž", u"qwxy"},
        {u"CY", u"196", u""},
        {u"CZ", u"203", u"áčďéěíňóřšťúůýž"},
        {u"DK", u"208", u"æøåéü"},
        {u"EE", u"233", u"äõöüšž", u"qwxy"},
        {u"FI", u"246", u"åäöšž", u"qwx"},
        {u"FR", u"250", u"àâçéèêëîïôûùüÿæœ"},
        {u"DE", u"276", u"äöüß"},
        {u"GR", u"300", u""},
        {u"HU", u"348", u"áéíóöőúüű", u"qwx"},
        {u"IS", u"352", u"áéíóúýðþæö", u"cqwz"},
        {u"IE", u"372", u"áéíóú"},
        {u"IT", u"380", u"àèéìíòóù"},
        {u"LV", u"428", u"āčēģīķļņšūž", u"qwxy"},
        {u"LI", u"438", u"äöüß"},
        {u"LT", u"440", u"ąčęėįšųūž", u"qwx"},
        {u"LU", u"442", u"äöüéèëàç"},
        {u"MT", u"470", u"ċġħżàèìòù"},
        {u"NL", u"528", u"éëïöüèáó"},
        {u"NO", u"578", u"æøåéü"},
        {u"PL", u"616", u"ąćęłńóśźż", u"qvx"},
        {u"PT", u"620", u"áàâãçéêíóôõú"},
        {u"RO", u"642", u"ăâîșț"},
        {u"SK", u"703", u"áäčďéíĺľňóôŕšťúýž"},
        {u"SI", u"705", u"čćđšž", u"qwxy"},
        {u"ES", u"724", u"áéíóúñü"},
        {u"SE", u"752", u"åäöé"},
        {u"CH", u"756", u"äöüéèàçêôâîûëïòù"},
    };
    return list;
}

// Whether read, with its escapes as wildcards, can be the text want.
bool fits(const QString& read, const QString& want) {
    const QStringList chars = charactersOf(read);
    if (chars.size() != want.size())
        return false;
    for (qsizetype i = 0; i < chars.size(); ++i)
        if (chars[i] != unknown && chars[i] != QString(want[i]))
            return false;
    return true;
}

const State* stateByCode(const QString& code) {
    for (const State& s : states())
        if (code == QString::fromUtf16(s.code))
            return &s;
    return nullptr;
}

// The state whose numeric code the card number carries after its "80", or none.
const State* stateOfCardNumber(const QString& number) {
    if (!number.startsWith(QLatin1String("80")) || number.size() < 5)
        return nullptr;
    const QString numeric = number.mid(2, 3);
    for (const State& s : states())
        if (numeric == QString::fromUtf16(s.numeric))
            return &s;
    return nullptr;
}

// Letters the same glyph stands for in different alphabets, written as the state writes them:
// Romanian s and t take a comma below (the engine often gives the cedilla of the older fonts),
// Croatian and Slovene write the capital D with stroke where Icelandic writes eth.
QString inStateSpelling(const QString& text, const State& state) {
    QString out = text;
    const QString code = QString::fromUtf16(state.code);
    if (code == QLatin1String("RO")) {
        out.replace(QChar(0x015F), QChar(0x0219)).replace(QChar(0x015E), QChar(0x0218));
        out.replace(QChar(0x0163), QChar(0x021B)).replace(QChar(0x0162), QChar(0x021A));
    } else if (code == QLatin1String("IS")) {
        out.replace(QChar(0x0110), QChar(0x00D0));
    } else {
        out.replace(QChar(0x00D0), QChar(0x0110));
    }
    return out;
}

// The part in the state's spelling, its choices too.
void spellForState(ReadPart& part, const State& state) {
    part.text = inStateSpelling(part.text, state);
    for (QStringList& list : part.choices)
        for (QString& c : list)
            c = inStateSpelling(c, state);
}

// The choices at character position i, created empty where there are none yet.
QStringList& choicesAt(ReadPart& part, qsizetype i) {
    if (part.choices.size() <= size_t(i))
        part.choices.resize(size_t(i) + 1);
    return part.choices[size_t(i)];
}

// Letters beyond a to z that the state's alphabet lacks, and in names the letters of a to z it never
// uses, become unknown; what was read stays the first choice there.
void foreignLettersMarked(ReadPart& part, const State& state) {
    const QString letters = QString::fromUtf16(state.letters);
    const QString absent = part.content == Content::Name ? QString::fromUtf16(state.absent) : QString();
    QStringList chars = charactersOf(part.text);
    for (qsizetype i = 0; i < chars.size(); ++i) {
        const QChar ch = chars[i][0];
        if (chars[i].size() != 1 || !ch.isLetter())
            continue;
        const QChar lower = ch.toLower();
        if ((ch.unicode() > 0x7F && !letters.contains(lower)) || absent.contains(lower)) {
            QStringList& list = choicesAt(part, i);
            if (!list.contains(chars[i]))
                list.prepend(chars[i]);
            chars[i] = unknown;
        }
    }
    part.text = chars.join(QString());
}

// A date dd/mm/yyyy has its slashes where it has ten characters; one whose day or month cannot be
// has those digits marked.
QString impossibleDateMarked(const QString& text) {
    QStringList chars = charactersOf(text);
    if (chars.size() != 10)
        return text;
    for (const int slash : {2, 5})
        if (chars[slash] == unknown)
            chars[slash] = QStringLiteral("/");
    if (chars[2] != QLatin1String("/") || chars[5] != QLatin1String("/"))
        return text;
    const auto number = [&](int from) {
        bool ok = false;
        const int n = (chars[from] + chars[from + 1]).toInt(&ok);
        return ok ? n : -1;
    };
    const int day = number(0), month = number(3);
    if (day == 0 || day > 31)
        chars[0] = chars[1] = unknown;
    if (month == 0 || month > 12)
        chars[3] = chars[4] = unknown;
    return chars.join(QString());
}

// A card number has 20 digits: one read with more or fewer has lost or gained a digit somewhere, so
// none of its digits after the prefix can be trusted in its place.
void wrongLengthMarked(ReadPart& card) {
    QStringList chars = charactersOf(card.text);
    chars.removeAll(QStringLiteral(" "));
    if (chars.isEmpty() || chars.size() == 20)
        return;
    for (qsizetype i = 5; i < chars.size(); ++i)
        chars[i] = unknown;
    card.text = chars.join(QString());
    card.choices.clear();
}

// A blank and a lone dot at the end of a text: a speck beside the value, which no name or
// institution ends in.
void strayDotCut(ReadPart& part) {
    if (part.text.endsWith(QLatin1String(" .")))
        part.text.chop(2);
    // Numbers and institutions begin and end in a digit or a letter: a quote or a dot glued to a
    // digit at either end is a speck.
    static const QString specks = QStringLiteral("'`.,");
    if (part.content == Content::Text) {
        while (part.text.size() > 1 && specks.contains(part.text[0]) && part.text[1].isDigit()) {
            part.text.remove(0, 1);
            if (!part.choices.empty())
                part.choices.erase(part.choices.begin());
        }
        while (part.text.size() > 1 && specks.contains(part.text.back()) && part.text[part.text.size() - 2].isDigit())
            part.text.chop(1);
    }
}

// An institution is printed as its number, " - " and its acronym or name ("0110 - NFZ Warszawa"):
// a blank the engine lost beside the hyphen is put back, and an unreadable character or a dash-like
// mark between the number and the name, blanks on both sides, is the hyphen.
void institutionSpaced(ReadPart& part) {
    QStringList chars = charactersOf(part.text);
    const auto is = [&](qsizetype i, const char* c) {
        return i < chars.size() && chars[i] == QLatin1String(c);
    };
    const auto letterAt = [&](qsizetype i) {
        return i < chars.size() && chars[i].size() == 1 && chars[i][0].isLetter();
    };
    qsizetype digits = 0;
    while (digits < chars.size() && chars[digits].size() == 1 && chars[digits][0].isDigit())
        ++digits;
    if (digits == 0)
        return;
    const qsizetype hyphen = is(digits, " ") ? digits + 1 : digits;
    if (hyphen == digits + 1 && is(hyphen + 1, " ") && letterAt(hyphen + 2) &&
        (chars[hyphen] == unknown || QStringView(u":;~=_\u2013\u2014").contains(chars[hyphen][0]))) {
        chars[hyphen] = QStringLiteral("-");
        if (part.choices.size() > size_t(hyphen))
            part.choices[size_t(hyphen)].clear();
        part.text = chars.join(QString());
        return;
    }
    if (!is(hyphen, "-"))
        return;
    const qsizetype after = is(hyphen + 1, " ") ? hyphen + 2 : hyphen + 1;
    if (!letterAt(after) || (hyphen == digits + 1 && after == hyphen + 2))
        return;
    part.choices.resize(std::max(part.choices.size(), size_t(chars.size())));
    std::vector<QStringList> choices(part.choices.begin(), part.choices.begin() + digits);
    choices.resize(size_t(digits) + 3);
    choices.insert(choices.end(), part.choices.begin() + after, part.choices.end());
    part.choices = choices;
    part.text = chars.mid(0, digits).join(QString()) + QStringLiteral(" - ") + chars.mid(after).join(QString());
}

// Whether the character c may stand in a part of this content on a card of state (none: unknown).
bool allowed(QChar c, Content content, const State* state) {
    const bool digit = c >= QLatin1Char('0') && c <= QLatin1Char('9');
    const bool latin =
        (c >= QLatin1Char('a') && c <= QLatin1Char('z')) || (c >= QLatin1Char('A') && c <= QLatin1Char('Z'));
    const bool letter = latin || (c.isLetter() && (!state || QString::fromUtf16(state->letters).contains(c.toLower())));
    switch (content) {
    case Content::CardNumber:
        return digit;
    case Content::Date:
        return digit || c == QLatin1Char('/');
    case Content::StateCode:
        return c >= QLatin1Char('A') && c <= QLatin1Char('Z');
    case Content::Name:
        return letter || QStringView(u"-'.").contains(c);
    case Content::Text:
        return letter || digit || QStringView(u"-'./").contains(c);
    case Content::ReceiptDate:
    case Content::Heading:
        break;
    }
    return c.isPrint() && !c.isSpace() && c != QLatin1Char('?') && c != QLatin1Char('\\');
}

// Each mark keeps at most five distinct candidates the card allows there; other characters none.
void keepAllowedCandidates(ReadPart& part, const State* state) {
    const QStringList chars = charactersOf(part.text);
    part.choices.resize(size_t(chars.size()));
    for (qsizetype i = 0; i < chars.size(); ++i) {
        QStringList kept;
        if (chars[i] == unknown)
            for (const QString& c : part.choices[size_t(i)])
                if (c.size() == 1 && allowed(c[0], part.content, state) && !kept.contains(c) && kept.size() < 5)
                    kept << c;
        part.choices[size_t(i)] = kept;
    }
}

// The state both values name, questioning or repairing them as the rules say; none when unknown.
const State* stateOfCard(ReadPart* stateCode, ReadPart* cardNumber) {
    const State* named = stateByCode(stateCode->text);
    const State* numbered = stateOfCardNumber(cardNumber->text);
    if (named && numbered) {
        if (named == numbered)
            return named;
        // Two clear readings that disagree: either may be the misread one, the operator decides
        // between the two.
        const QString codes[] = {QString::fromUtf16(named->code), QString::fromUtf16(numbered->code)};
        const QString prefixes[] = {QStringLiteral("80") + QString::fromUtf16(named->numeric),
                                    QStringLiteral("80") + QString::fromUtf16(numbered->numeric)};
        stateCode->text = unknown + unknown;
        stateCode->choices = {{codes[0].mid(0, 1), codes[1].mid(0, 1)}, {codes[0].mid(1, 1), codes[1].mid(1, 1)}};
        cardNumber->text = QString(unknown).repeated(5) + cardNumber->text.mid(5);
        cardNumber->choices.assign(5, {});
        for (int i = 0; i < 5; ++i)
            cardNumber->choices[size_t(i)] = {prefixes[0].mid(i, 1), prefixes[1].mid(i, 1)};
        return nullptr;
    }
    if (named) {
        // The card number's prefix unreadable or misread: where it can be the state's, it is.
        const QString prefix = QStringLiteral("80") + QString::fromUtf16(named->numeric);
        const QStringList chars = charactersOf(cardNumber->text);
        if (chars.size() >= 5 && fits(chars.mid(0, 5).join(QString()), prefix)) {
            cardNumber->text = prefix + chars.mid(5).join(QString());
        } else if (chars.size() >= 5) {
            cardNumber->text = QString(unknown).repeated(5) + chars.mid(5).join(QString());
            for (int i = 0; i < 5; ++i)
                choicesAt(*cardNumber, i).prepend(prefix.mid(i, 1));
        }
        return named;
    }
    if (numbered) {
        // Three digits read with nothing but digits allowed that name one of the 31 states are
        // surer than a state code the engine could not make out.
        stateCode->text = QString::fromUtf16(numbered->code);
        stateCode->choices.clear();
        return numbered;
    }
    if (charactersOf(stateCode->text).size() != 2)
        stateCode->choices.clear();
    stateCode->text = unknown + unknown;
    return nullptr;
}

} // namespace

QStringList charactersOf(const QString& text) {
    QStringList out;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text[i] == QLatin1Char('\\') && i + 1 < text.size()) {
            out << text.mid(i, 2);
            ++i;
        } else {
            out << QString(text[i]);
        }
    }
    return out;
}

void checkCard(std::vector<ReadPart*>& parts) {
    ReadPart* stateCode = nullptr;
    ReadPart* cardNumber = nullptr;
    for (ReadPart* p : parts) {
        if (p->content == Content::StateCode)
            stateCode = p;
        else if (p->content == Content::CardNumber)
            cardNumber = p;
        else if (p->content == Content::Date)
            p->text = impossibleDateMarked(p->text);
        else if (p->content == Content::Name || p->content == Content::Text)
            strayDotCut(*p);
        if (p->content == Content::Text)
            institutionSpaced(*p);
    }
    if (cardNumber)
        wrongLengthMarked(*cardNumber);
    const State* state = stateCode && cardNumber ? stateOfCard(stateCode, cardNumber) : nullptr;
    for (ReadPart* p : parts) {
        if (state && (p->content == Content::Name || p->content == Content::Text)) {
            spellForState(*p, *state);
            foreignLettersMarked(*p, *state);
        }
        keepAllowedCandidates(*p, state);
    }
}

} // namespace evaluation
