// SPDX-License-Identifier: Apache-2.0
// The personal-number rules of the states from Croatia to Slovenia (in the order of their codes):
// form and check digit of the number each prints in field 6 of its health insurance card.

#include "PersonalNumberDigits.h"

#include <QList>

namespace personal_number {

namespace {

// The luhn sum of values read from the right, every second one doubled (less 9 above 9).
bool luhn(const QList<int>& values) {
    int sum = 0;
    for (qsizetype i = 0; i < values.size(); ++i) {
        int v = values.at(values.size() - 1 - i);
        if (i % 2 == 1) {
            v *= 2;
            if (v > 9)
                v -= 9;
        }
        sum += v;
    }
    return sum % 10 == 0;
}

// Codice fiscale: the value of a character in an odd place (1st, 3rd, ...) for the check letter.
int italianOddValue(QChar c) {
    static const int values[] = {1,  0,  5, 7, 9, 13, 15, 17, 19, 21, 2,  4,  18,
                                 20, 11, 3, 6, 8, 12, 14, 16, 10, 22, 25, 24, 23};
    const int index = c.isDigit() ? c.unicode() - u'0' : c.unicode() - u'A';
    return values[index];
}

// Portuguese document number of the citizen card: letters count 10..35.
int portugueseValue(QChar c) {
    return c.isDigit() ? c.unicode() - u'0' : c.unicode() - u'A' + 10;
}

} // namespace

// OIB, the personal identification number (Act on the personal identification number, NN 60/08):
// eleven digits, the last by ISO 7064 MOD 11,10. Older cards show the nine-digit number of the
// insured person (MBO), whose check rule is not published: accepted by its form.
bool croatia(const QString& number) {
    const QString n = withoutHyphens(number);
    if (isDigits(n, 9))
        return true;
    if (!isDigits(n, 11))
        return false;
    int product = 10;
    for (qsizetype i = 0; i < 10; ++i) {
        int sum = (product + digitAt(n, i)) % 10;
        if (sum == 0)
            sum = 10;
        product = sum * 2 % 11;
    }
    const int check = 11 - product;
    return (check == 10 ? 0 : check) == digitAt(n, 10);
}

// Codice fiscale (decree of the Ministry of Finance of 23 December 1976): six letters of the
// names, yy, the month's letter, the day (+40 for women), the place of birth (a letter and three
// digits) and the check letter. When two people would get the same code, digits from the right are
// replaced by the letters L M N P Q R S T U V (omocodia); the check letter is then computed on the
// letters as printed.
bool italy(const QString& number) {
    const QString n = withoutHyphens(number);
    if (n.size() != 16)
        return false;
    static const QString omocodia = QStringLiteral("LMNPQRSTUV");
    static const QString months = QStringLiteral("ABCDEHLMPRST");
    for (qsizetype i = 0; i < 16; ++i) {
        const QChar c = n.at(i);
        const bool letter = c >= QLatin1Char('A') && c <= QLatin1Char('Z');
        const bool digitPlace = (i >= 6 && i <= 7) || (i >= 9 && i <= 10) || (i >= 12 && i <= 14);
        if (digitPlace ? !(c.isDigit() && c.unicode() < 128) && !omocodia.contains(c) : !letter)
            return false;
    }
    if (!months.contains(n.at(8)))
        return false;
    int sum = 0;
    for (qsizetype i = 0; i < 15; ++i) {
        const QChar c = n.at(i);
        sum += i % 2 == 0 ? italianOddValue(c) : (c.isDigit() ? c.unicode() - u'0' : c.unicode() - u'A');
    }
    return n.at(15) == QChar(u'A' + sum % 26);
}

// Personas kods (Population Register Act): ddmmyy, a century digit, three digits and the check
// digit = (1101 - weights 1,6,3,7,9,10,5,8,4,2) mod 11. Codes issued from July 2017 begin with 32
// and carry neither the birth date nor a check digit.
bool latvia(const QString& number) {
    const QString n = withoutHyphens(number);
    if (!isDigits(n, 11))
        return false;
    if (n.startsWith(QLatin1String("32")))
        return true;
    const int check = (1101 - weightedSum(n, {1, 6, 3, 7, 9, 10, 5, 8, 4, 2})) % 11;
    return check == digitAt(n, 10);
}

// Burgerservicenummer: nine digits (a leading zero is sometimes left off) passing the "11-proef":
// weights 9..2 and -1 for the last digit give a multiple of 11.
bool netherlands(const QString& number) {
    QString n = withoutHyphens(number);
    if (isDigits(n, 8))
        n.prepend(QLatin1Char('0'));
    if (!isDigits(n, 9) || n == QLatin1String("000000000"))
        return false;
    return (weightedSum(n, {9, 8, 7, 6, 5, 4, 3, 2, -1}) % 11 + 11) % 11 == 0;
}

// Fødselsnummer (population register; also D numbers, day +40): ddmmyy, three digits and two check
// digits, k1 by weights 3,7,6,1,8,9,4,5,2 and k2 by 5,4,3,2,7,6,5,4,3,2, each 11 - sum mod 11
// (11 gives 0, 10 is never issued).
bool norway(const QString& number) {
    const QString n = withoutHyphens(number);
    if (!isDigits(n, 11))
        return false;
    const auto check = [](int sum) {
        const int k = 11 - sum % 11;
        return k == 11 ? 0 : k;
    };
    return check(weightedSum(n, {3, 7, 6, 1, 8, 9, 4, 5, 2})) == digitAt(n, 9) &&
           check(weightedSum(n, {5, 4, 3, 2, 7, 6, 5, 4, 3, 2})) == digitAt(n, 10);
}

// PESEL (Act on the population register): yymmdd with the century in the month (+80 for the
// 1800s, +20 2000s, +40 2100s), four digits and the check digit = (10 - weights 1,3,7,9,... mod 10)
// mod 10.
bool poland(const QString& number) {
    const QString n = withoutHyphens(number);
    if (!isDigits(n, 11))
        return false;
    const int month = int(numberAt(n, 2, 2)) % 20;
    if (month < 1 || month > 12)
        return false;
    return (10 - weightedSum(n, {1, 3, 7, 9, 1, 3, 7, 9, 1, 3}) % 10) % 10 == digitAt(n, 10);
}

// The Portuguese card shows the tax number (NIF, decree-law 463/79) or the civil identification
// number with its check digit, both nine digits with the check = 11 - (weights 9..2 mod 11), 10 and
// 11 giving 0; the citizen card's full document number (Law 7/2007: the civil number, its check
// digit, two letters or digits and a version digit) is checked by its luhn sum, letters A..Z
// counting 10..35.
bool portugal(const QString& number) {
    const QString n = withoutHyphens(number);
    if (isDigits(n, 9)) {
        const int check = 11 - weightedSum(n, {9, 8, 7, 6, 5, 4, 3, 2}) % 11;
        return (check >= 10 ? 0 : check) == digitAt(n, 8);
    }
    if (n.size() != 12 || !isDigits(n.left(9), 9) || digitAt(n, 11) < 0)
        return false;
    QList<int> values;
    for (const QChar c : n) {
        if (!(c.isDigit() && c.unicode() < 128) && !(c >= QLatin1Char('A') && c <= QLatin1Char('Z')))
            return false;
        values << portugueseValue(c);
    }
    return luhn(values);
}

// CNP, the personal numeric code (population register): sex and century, yymmdd, the county, a
// serial and the check digit = weights 2,7,9,1,4,6,3,5,8,2,7,9 mod 11 (10 gives 1).
bool romania(const QString& number) {
    const QString n = withoutHyphens(number);
    if (!isDigits(n, 13) || digitAt(n, 0) == 0)
        return false;
    const int rest = weightedSum(n, {2, 7, 9, 1, 4, 6, 3, 5, 8, 2, 7, 9}) % 11;
    return (rest == 10 ? 1 : rest) == digitAt(n, 12);
}

// Personnummer (Skatteverket, SKV 704; also the samordningsnummer, day +60): yymmdd or yyyymmdd,
// a separator "-" or "+" (past a hundred years), three digits and a luhn check digit over the ten
// digits from yy on.
bool sweden(const QString& number) {
    QString n = withoutHyphens(number);
    n.remove(QLatin1Char('+'));
    if (isDigits(n, 12))
        n = n.mid(2);
    if (!isDigits(n, 10))
        return false;
    QList<int> values;
    for (qsizetype i = 0; i < 10; ++i)
        values << digitAt(n, i);
    return luhn(values);
}

// EMŠO, the unique master citizen number (Central Population Register Act): ddmmyyy, the register
// area, a serial and the check digit = 11 - (weights 7,6,5,4,3,2,7,6,5,4,3,2 mod 11), 11 giving 0
// and 10 never issued.
bool slovenia(const QString& number) {
    const QString n = withoutHyphens(number);
    if (!isDigits(n, 13))
        return false;
    const int rest = weightedSum(n, {7, 6, 5, 4, 3, 2, 7, 6, 5, 4, 3, 2}) % 11;
    return (rest == 0 ? 0 : 11 - rest) == digitAt(n, 12);
}

} // namespace personal_number
