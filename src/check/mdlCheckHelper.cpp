// SPDX-License-Identifier: Apache-2.0
#include "mdlCheckHelper.h"

#include "app/Clock.h"
#include "app/Errors.h"
#include "app/mdlDB.h"

namespace {

bool isAsciiDigit(QChar c) {
    return c >= QLatin1Char('0') && c <= QLatin1Char('9');
}

// Non-empty and digits only.
bool isDigits(QStringView text) {
    if (text.isEmpty())
        return false;
    for (const QChar c : text)
        if (!isAsciiDigit(c))
            return false;
    return true;
}

VeridonError notANumber(const QString& text) {
    return VeridonError(ErrorNumber::TypeMismatch, Msg::ErrTypeMismatchValue, {text});
}

// A day count of Datum_Bereich: absent when blank, else a whole number.
bool readDays(const QString& text, qint64& days) {
    const QString t = text.trimmed();
    if (t.isEmpty())
        return false;
    bool ok = false;
    days = t.toLongLong(&ok);
    if (!ok)
        throw notANumber(text);
    return true;
}

bool isDateSeparator(QChar c) {
    return c == QLatin1Char('.') || c == QLatin1Char('/') || c == QLatin1Char('-');
}

} // namespace

QChar decimalSeparator() {
    return QLatin1Char(',');
}

qint16 NurZiffern(const QString& value) {
    for (const QChar c : value)
        if (!isAsciiDigit(c))
            return CheckResult::Error;
    return CheckResult::Passed;
}

qint16 Gleitkommazahl(QChar separator, const QString& value) {
    const qsizetype at = value.indexOf(separator);
    if (at < 0)
        return NurZiffern(value);
    if (value.indexOf(separator, at + 1) >= 0)
        return CheckResult::Error;
    const bool digits =
        NurZiffern(value.left(at)) == CheckResult::Passed && NurZiffern(value.mid(at + 1)) == CheckResult::Passed;
    return digits ? CheckResult::Passed : CheckResult::Error;
}

qint16 Laenge(qint32 n, const QString& value) {
    return value.isEmpty() || value.size() == n ? CheckResult::Passed : CheckResult::Error;
}

qint16 Gleitkommazahllaenge(qint32 a, qint32 b, const QString& value, QChar separator) {
    const qsizetype at = value.indexOf(separator);
    if (at < 0) {
        if (NurZiffern(value) != CheckResult::Passed)
            return CheckResult::Error;
        return value.size() <= a ? CheckResult::Passed : CheckResult::Error;
    }
    if (Gleitkommazahl(separator, value) != CheckResult::Passed)
        return CheckResult::Passed; // the syntax is Gleitkommazahl's to report
    const bool fits = at <= a && value.size() - at - 1 <= b;
    return fits ? CheckResult::Passed : CheckResult::Error;
}

qint16 Pflichtfeld(const QString& value) {
    return value.isEmpty() ? CheckResult::Error : CheckResult::Passed;
}

qint16 Bereich(qint64 min, qint64 max, const QString& value) {
    if (value.isEmpty())
        return CheckResult::Passed;
    const QString text = value.trimmed();
    bool ok = false;
    const qint64 number = text.toLongLong(&ok);
    if (!ok) {
        if (isDigits(text))
            return CheckResult::Error; // more digits than any number holds: outside every range
        throw notANumber(value);
    }
    return min <= number && number <= max ? CheckResult::Passed : CheckResult::Error;
}

qint16 Gleitkommazahlbereich(double min, double max, const QString& value) {
    if (value.isEmpty())
        return CheckResult::Passed;
    QString text = value.trimmed();
    text.replace(QLatin1Char(','), QLatin1Char('.'));
    bool ok = false;
    const double number = text.toDouble(&ok);
    if (!ok)
        throw notANumber(value);
    return min <= number && number <= max ? CheckResult::Passed : CheckResult::Error;
}

qint16 Werteliste(const QString& command, const QString& value) {
    if (value.isEmpty())
        return CheckResult::Passed;
    const qsizetype start = command.indexOf(QLatin1Char('(')) + 1;
    qsizetype end = command.indexOf(QLatin1Char(')'), start);
    if (end < 0)
        end = command.size();
    const QStringView list = QStringView(command).mid(start, end - start);
    for (const QStringView item : list.tokenize(QLatin1Char(',')))
        if (item == value)
            return CheckResult::Passed;
    return CheckResult::Error;
}

qint16 Lookup(const QString& column, const QString& table, const QString& condition) {
    const QVariant found = GetValue(column, table, condition);
    return !found.isNull() && !found.toString().isEmpty() ? CheckResult::Passed : CheckResult::Error;
}

QString NormiereZeit(const QString& value) {
    const qsizetype n = value.size();
    const QChar colon = QLatin1Char(':');
    if (n == 5 && value[2] == colon)
        return value;
    if (n == 4 && isDigits(value))
        return value.left(2) + colon + value.right(2);
    if (n == 4 && value[1] == colon)
        return QLatin1Char('0') + value;
    if (n == 3 && !value.contains(colon))
        return QLatin1Char('0') + value.left(1) + colon + value.mid(1);
    if (n == 3 && value[0] == colon)
        return QStringLiteral("00") + value;
    if (n == 3 && value[1] == colon)
        return QLatin1Char('0') + value.left(1) + QStringLiteral(":0") + value.right(1);
    if (n == 2 && isDigits(value))
        return value + QStringLiteral(":00");
    if (n == 1 && isDigits(value))
        return QLatin1Char('0') + value + QStringLiteral(":00");
    return value;
}

qint16 Zeit(const QString& value) {
    if (value.isEmpty())
        return CheckResult::Passed;
    if (value.contains(QLatin1Char('?')))
        return CheckResult::Error;
    const QString time = NormiereZeit(value);
    if (time.size() != 5)
        return CheckResult::Error;
    const QString hoursText = time.left(2);
    const QString minutesText = time.right(2);
    if (!isDigits(hoursText) || !isDigits(minutesText))
        return CheckResult::Error;
    int hours = hoursText.toInt();
    const int minutes = minutesText.toInt();
    if (hours == 24 && minutes == 0)
        hours = 0;
    return hours <= 23 && minutes <= 59 ? CheckResult::Passed : CheckResult::Error;
}

qint16 Waehrung(const QString& value, QChar separator, qint32 n) {
    const qsizetype at = value.indexOf(separator);
    if (at < 0)
        return CheckResult::Error;
    if (Gleitkommazahl(separator, value) != CheckResult::Passed)
        return CheckResult::Error;
    return value.size() - at - 1 == n ? CheckResult::Passed : CheckResult::Error;
}

QDate dateOfNormalised(const QString& normalised) {
    if (normalised.size() != 10 || normalised[2] != QLatin1Char('.') || normalised[5] != QLatin1Char('.'))
        return QDate();
    const QStringView text(normalised);
    if (!isDigits(text.mid(0, 2)) || !isDigits(text.mid(3, 2)) || !isDigits(text.mid(6, 4)))
        return QDate();
    return QDate(text.mid(6, 4).toInt(), text.mid(3, 2).toInt(), text.mid(0, 2).toInt());
}

QString NormiereDatum(const QString& value, bool flag, DateKind kind) {
    // Most stored dates are in form already; they need no taking apart.
    if (dateOfNormalised(value).isValid())
        return value;
    const QString text = value.trimmed();
    QString day, month, year;
    if (isDigits(text)) {
        if (text.size() != 6 && text.size() != 8)
            return value;
        day = text.mid(0, 2);
        month = text.mid(2, 2);
        year = text.mid(4);
    } else {
        QString dotted = text;
        for (QChar& c : dotted)
            if (isDateSeparator(c))
                c = QLatin1Char('.');
        const QStringList parts = dotted.split(QLatin1Char('.'));
        if (parts.size() != 3)
            return value;
        day = parts[0];
        month = parts[1];
        year = parts[2];
        if (!isDigits(day) || day.size() > 2 || !isDigits(month) || month.size() > 2 || !isDigits(year) ||
            (year.size() != 2 && year.size() != 4))
            return value;
    }
    if (day.size() == 1)
        day.prepend(QLatin1Char('0'));
    if (month.size() == 1)
        month.prepend(QLatin1Char('0'));
    if (year.size() == 2) {
        // The latest year the kind allows, and the hundred years up to it.
        const int thisYear = appClock().today().year();
        const int latest = kind == DateKind::Near ? thisYear + 20 : thisYear;
        int full = latest - latest % 100 + year.toInt();
        if (full > latest)
            full -= 100;
        year = QString::number(full);
    }
    const QString result = day + QLatin1Char('.') + month + QLatin1Char('.') + year;
    if (flag && !dateOfNormalised(result).isValid())
        return value;
    return result;
}

qint16 Datum(const QString& value, qint16 mode, const QString& from, const QString& to, DateKind kind) {
    if (value.isEmpty())
        return CheckResult::Passed;
    const QDate date = dateOfNormalised(NormiereDatum(value, false, kind));
    if (mode == DatumMode::Valid)
        return date.isValid() ? CheckResult::Passed : CheckResult::Error;
    if (mode != DatumMode::Range)
        return CheckResult::Error;
    qint64 past = 0;
    qint64 future = 0;
    const bool hasPast = readDays(from, past);
    const bool hasFuture = readDays(to, future);
    if (!date.isValid())
        return CheckResult::Error;
    const qint64 diff = appClock().today().daysTo(date);
    bool passes = false;
    if (!hasPast && hasFuture)
        passes = diff <= future;
    else if (hasPast && !hasFuture)
        passes = diff <= 0 ? -diff <= past : diff >= 2;
    else if (hasPast && hasFuture)
        passes = (diff >= 1 && diff < future) || (diff <= 0 && -diff < past);
    return passes ? CheckResult::Passed : CheckResult::Error;
}
