// SPDX-License-Identifier: Apache-2.0
// The card rules. Texts are compared with the escape "\f" counted as one unknown character.
#include "CardChecks.h"

#include <QDate>

namespace evaluation {

namespace {

const QString unknown = QStringLiteral("\\f");

struct State {
    const char16_t* code;
    const char16_t* numeric; // ISO 3166 numeric
    const char16_t* letters; // the lower-case letters beyond a to z its names and institutions use
};

// The EU and EEA states and Switzerland. A letter outside a state's list is not forbidden (a holder
// may bear a foreign name) but too rare to pass unchecked: the engine's usual confusions (l and ł, Å
// and À, ė and è) are between such letters.
const std::vector<State>& states() {
    static const std::vector<State> list{
        {u"AT", u"040", u"äöüß"},
        {u"BE", u"056", u"àâçéèêëîïôûüöäæœ"},
        {u"BG", u"100", u""},
        {u"HR", u"191", u"čćđšž"},
        {u"CY", u"196", u""},
        {u"CZ", u"203", u"áčďéěíňóřšťúůýž"},
        {u"DK", u"208", u"æøåéü"},
        {u"EE", u"233", u"äõöüšž"},
        {u"FI", u"246", u"åäöšž"},
        {u"FR", u"250", u"àâçéèêëîïôûùüÿæœ"},
        {u"DE", u"276", u"äöüß"},
        {u"GR", u"300", u""},
        {u"HU", u"348", u"áéíóöőúüű"},
        {u"IS", u"352", u"áéíóúýðþæö"},
        {u"IE", u"372", u"áéíóú"},
        {u"IT", u"380", u"àèéìíòóù"},
        {u"LV", u"428", u"āčēģīķļņšūž"},
        {u"LI", u"438", u"äöüß"},
        {u"LT", u"440", u"ąčęėįšųūž"},
        {u"LU", u"442", u"äöüéèëàç"},
        {u"MT", u"470", u"ċġħżàèìòù"},
        {u"NL", u"528", u"éëïöüèáó"},
        {u"NO", u"578", u"æøåéü"},
        {u"PL", u"616", u"ąćęłńóśźż"},
        {u"PT", u"620", u"áàâãçéêíóôõú"},
        {u"RO", u"642", u"ăâîșț"},
        {u"SK", u"703", u"áäčďéíĺľňóôŕšťúýž"},
        {u"SI", u"705", u"čćđšž"},
        {u"ES", u"724", u"áéíóúñü"},
        {u"SE", u"752", u"åäöé"},
        {u"CH", u"756", u"äöüéèàçêôâîûëïòù"},
    };
    return list;
}

// The text as a list of characters, each escape one element.
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

// Letters beyond a to z that the state's alphabet lacks become unknown.
QString foreignLettersMarked(const QString& text, const State& state) {
    const QString letters = QString::fromUtf16(state.letters);
    QString out;
    for (const QString& c : charactersOf(text)) {
        const QChar ch = c[0];
        const bool foreign = c.size() == 1 && ch.isLetter() && ch.unicode() > 0x7F && !letters.contains(ch.toLower());
        out += foreign ? unknown : c;
    }
    return out;
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

} // namespace

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
    }
    if (!stateCode || !cardNumber)
        return;
    const State* named = stateByCode(stateCode->text);
    const State* numbered = stateOfCardNumber(cardNumber->text);
    const State* state = nullptr;
    if (named && numbered) {
        // Two clear readings that disagree: either may be the misread one, the operator decides.
        if (named == numbered) {
            state = named;
        } else {
            stateCode->text = unknown + unknown;
            cardNumber->text = QString(unknown).repeated(5) + cardNumber->text.mid(5);
        }
    } else if (named) {
        // The card number's prefix unreadable or misread: where it can be the state's, it is.
        const QString prefix = QStringLiteral("80") + QString::fromUtf16(named->numeric);
        const QStringList chars = charactersOf(cardNumber->text);
        if (chars.size() >= 5 && fits(chars.mid(0, 5).join(QString()), prefix))
            cardNumber->text = prefix + chars.mid(5).join(QString());
        else if (chars.size() >= 5)
            cardNumber->text = QString(unknown).repeated(5) + chars.mid(5).join(QString());
        state = named;
    } else if (numbered) {
        // Three digits read with nothing but digits allowed that name one of the 31 states are
        // surer than a state code the engine could not make out.
        stateCode->text = QString::fromUtf16(numbered->code);
        state = numbered;
    } else {
        stateCode->text = unknown + unknown;
    }
    if (!state)
        return;
    for (ReadPart* p : parts)
        if (p->content == Content::Name || p->content == Content::Text)
            p->text = foreignLettersMarked(inStateSpelling(p->text, *state), *state);
}

} // namespace evaluation
