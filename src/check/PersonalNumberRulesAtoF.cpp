// SPDX-License-Identifier: Apache-2.0
// The personal-number rules of the states from Austria to France (in the order of their codes):
// form and check digit of the number each prints in field 6 of its health insurance card.

#include "PersonalNumberDigits.h"

#include <QDate>

namespace personal_number {

namespace {

// A day and month that exist in some year of the century (29 February included).
bool isDayOfYear(int day, int month) {
    return QDate(2000, month, day).isValid();
}

// The value of a letter A..Z as 1..26, or -1.
int letterNumber(QChar c) {
    return c >= QLatin1Char('A') && c <= QLatin1Char('Z') ? c.unicode() - u'A' + 1 : -1;
}

// The check digit of German insurance numbers: each digit times its weight, the products' cross
// sums added, the last digit of the total.
int crossSumCheck(const QString& digits, std::initializer_list<int> weights) {
    int sum = 0;
    qsizetype i = 0;
    for (const int w : weights) {
        const int product = digitAt(digits, i++) * w;
        sum += product / 10 + product % 10;
    }
    return sum % 10;
}

// Krankenversichertennummer (the unchangeable part of the insurance number on the health card,
// section 290 SGB V; check digit by the GKV-Spitzenverband's rules for it): a letter and nine
// digits. The letter counts as its two-digit place in the alphabet, weights 1,2,1,2,...
bool germanHealthInsuranceNumber(const QString& n) {
    if (n.size() != 10 || letterNumber(n.at(0)) < 0 || !isDigits(n.mid(1), 9))
        return false;
    const QString digits = QString::number(letterNumber(n.at(0))).rightJustified(2, QLatin1Char('0')) + n.mid(1, 8);
    return crossSumCheck(digits, {1, 2, 1, 2, 1, 2, 1, 2, 1, 2}) == digitAt(n, 9);
}

// Rentenversicherungsnummer (section 2 of the Versicherungsnummern-, Kontoführungs- und
// Versicherungsverlaufsverordnung): area (2 digits), birth date ddmmyy, the initial of the birth
// name, a two-digit serial and the check digit; the letter counts as its two-digit place.
bool germanPensionInsuranceNumber(const QString& n) {
    if (n.size() != 12 || !isDigits(n.left(8), 8) || letterNumber(n.at(8)) < 0 || !isDigits(n.mid(9), 3))
        return false;
    const QString digits =
        n.left(8) + QString::number(letterNumber(n.at(8))).rightJustified(2, QLatin1Char('0')) + n.mid(9, 2);
    return crossSumCheck(digits, {2, 1, 2, 5, 7, 1, 2, 1, 2, 1, 2, 1}) == digitAt(n, 11);
}

} // namespace

// Versicherungsnummer (section 31 ASVG): a three-digit serial that never begins with 0, the check
// digit, the birth date ddmmyy (which may be a made-up date). Weights 3,7,9,-,5,8,4,2,1,6 mod 11;
// a sum that leaves 10 is never issued.
bool austria(const QString& number) {
    const QString n = withoutHyphens(number);
    if (!isDigits(n, 10) || digitAt(n, 0) == 0)
        return false;
    const int sum = weightedSum(n, {3, 7, 9, 0, 5, 8, 4, 2, 1, 6});
    return sum % 11 == digitAt(n, 3);
}

// National register number (Rijksregisternummer/numéro de registre national, also the bis
// number): yymmdd, a serial, two check digits = 97 - (first nine digits mod 97); for holders born
// from 2000 on the nine digits are preceded by a 2 before the division.
bool belgium(const QString& number) {
    const QString n = withoutHyphens(number);
    if (!isDigits(n, 11))
        return false;
    const qint64 base = numberAt(n, 0, 9);
    const qint64 check = numberAt(n, 9, 2);
    return 97 - base % 97 == check || 97 - (2000000000 + base) % 97 == check;
}

// EGN (the unified civil number): yymmdd with 20 added to the month for 1800-1899 and 40 for
// 2000-2099, three digits, check digit = weights 2,4,8,5,10,9,7,3,6 mod 11 (10 gives 0).
bool bulgaria(const QString& number) {
    const QString n = withoutHyphens(number);
    if (!isDigits(n, 10))
        return false;
    const int month = int(numberAt(n, 2, 2)) % 20;
    if (month < 1 || month > 12 || numberAt(n, 2, 2) > 52 || !isDayOfYear(int(numberAt(n, 4, 2)), month))
        return false;
    const int rest = weightedSum(n, {2, 4, 8, 5, 10, 9, 7, 3, 6}) % 11;
    return (rest == 10 ? 0 : rest) == digitAt(n, 9);
}

// Rodné číslo (Czech Act 133/2000 Coll. section 13, Slovak Act 301/1995 Coll.): yymmdd with 50
// added to a woman's month (20 or 70 when a day's numbers ran out, from 2004), then three digits
// for numbers issued before 1954 or four since; a ten-digit number divides by 11, except the
// numbers of 1954-1985 whose first nine digits leave 10 and which end in 0.
bool czechOrSlovakia(const QString& number) {
    const QString n = withoutHyphens(number);
    if (!isDigits(n, 9) && !isDigits(n, 10))
        return false;
    const int coded = int(numberAt(n, 2, 2));
    const int month = coded > 50 ? coded - 50 : coded;
    const int plain = month > 20 ? month - 20 : month;
    if (plain < 1 || plain > 12 || (month > 12 && month < 21) || !isDayOfYear(int(numberAt(n, 4, 2)), plain))
        return false;
    if (n.size() == 9)
        return numberAt(n, 0, 2) < 54;
    return numberAt(n, 0, 10) % 11 == 0 || (numberAt(n, 0, 9) % 11 == 10 && digitAt(n, 9) == 0);
}

// The German card shows the Krankenversichertennummer; older cards and E forms carry the
// Rentenversicherungsnummer. Both are accepted.
bool germany(const QString& number) {
    const QString n = withoutHyphens(number);
    return germanHealthInsuranceNumber(n) || germanPensionInsuranceNumber(n);
}

// CPR number: ddmmyy and four digits. The modulus-11 check was given up in 2007 (the CPR office
// issues numbers without it since), so only the form and the birth date are checked.
bool denmark(const QString& number) {
    const QString n = withoutHyphens(number);
    return isDigits(n, 10) && isDayOfYear(int(numberAt(n, 0, 2)), int(numberAt(n, 2, 2)));
}

// Isikukood (Estonian standard EVS 585) and asmens kodas (Lithuania), built alike: a digit for
// century and sex, yymmdd, three digits, check digit = weights 1..9,1 mod 11; when that leaves 10,
// weights 3..9,1,2,3 mod 11; 10 again gives 0.
bool estoniaOrLithuania(const QString& number) {
    const QString n = withoutHyphens(number);
    if (!isDigits(n, 11) || digitAt(n, 0) < 1 || digitAt(n, 0) > 8)
        return false;
    int rest = weightedSum(n, {1, 2, 3, 4, 5, 6, 7, 8, 9, 1}) % 11;
    if (rest == 10)
        rest = weightedSum(n, {3, 4, 5, 6, 7, 8, 9, 1, 2, 3}) % 11;
    return (rest == 10 ? 0 : rest) == digitAt(n, 10);
}

// The Spanish card shows the DNI or, for foreigners, the NIE (Real Decreto 1553/2005: eight
// digits and the letter of their remainder by 23; the NIE begins X, Y or Z for 0, 1, 2); the
// Social Security's affiliation number (NAF: province, eight digits, two check digits = the first
// ten digits mod 97, the eight read without leading zeros below 10 million) is accepted as well.
bool spain(const QString& number) {
    const QString n = withoutHyphens(number);
    static const QString letters = QStringLiteral("TRWAGMYFPDXBNJZSQVHLCKE");
    if (n.size() == 9) {
        QString digits = n.left(8);
        const qsizetype foreign = QStringLiteral("XYZ").indexOf(digits.at(0));
        if (foreign >= 0)
            digits[0] = QLatin1Char(char('0' + foreign));
        return isDigits(digits, 8) && letters.at(numberAt(digits, 0, 8) % 23) == n.at(8);
    }
    if (!isDigits(n, 12))
        return false;
    const qint64 middle = numberAt(n, 2, 8);
    const qint64 value = middle < 10000000 ? numberAt(n, 0, 2) * 100000000 + middle : numberAt(n, 0, 10);
    return value % 97 == numberAt(n, 10, 2);
}

// Henkilötunnus (Population Information Act 661/2009; century signs of decree 128/2010 and of
// 2023): ddmmyy, the century sign (+ 1800s; - Y X W V U 1900s; A B C D E F 2000s), three digits
// and the check character of ddmmyy followed by the three digits mod 31.
bool finland(const QString& n) {
    static const QString checks = QStringLiteral("0123456789ABCDEFHJKLMNPRSTUVWXY");
    if (n.size() != 11 || !QStringLiteral("+-YXWVUABCDEF").contains(n.at(6)))
        return false;
    const QString digits = n.left(6) + n.mid(7, 3);
    if (!isDigits(digits, 9) || !isDayOfYear(int(numberAt(digits, 0, 2)), int(numberAt(digits, 2, 2))))
        return false;
    return checks.at(numberAt(digits, 0, 9) % 31) == n.at(10);
}

// NIR, the number of the national register of persons (INSEE): sex, yy, mm, the department (2A
// and 2B for Corsica, counted as 19 and 18 in the key), commune, serial, and the key = 97 -
// (the first thirteen characters mod 97).
bool france(const QString& number) {
    QString n = withoutHyphens(number);
    if (n.size() != 15)
        return false;
    if (n.mid(5, 2) == QLatin1String("2A"))
        n.replace(5, 2, QStringLiteral("19"));
    else if (n.mid(5, 2) == QLatin1String("2B"))
        n.replace(5, 2, QStringLiteral("18"));
    if (!isDigits(n, 15) || !QStringLiteral("123478").contains(n.at(0)))
        return false;
    return 97 - numberAt(n, 0, 13) % 97 == numberAt(n, 13, 2);
}

} // namespace personal_number
