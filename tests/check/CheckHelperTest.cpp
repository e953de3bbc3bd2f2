// SPDX-License-Identifier: Apache-2.0
// The check primitives, one table per primitive, with the boundary values an operator meets. Each
// row names the primitive and the value when it fails.

#include "HomeTest.h"
#include "app/Errors.h"
#include "check/mdlCheckHelper.h"

#include <functional>

namespace {

constexpr qint16 ok = CheckResult::Passed;
constexpr qint16 bad = CheckResult::Error;
const QChar comma = QLatin1Char(',');

// Expects check to pass every value of passing and to fail every value of failing.
void expectEach(const char* primitive, const std::function<qint16(const QString&)>& check,
                std::initializer_list<const char*> passing, std::initializer_list<const char*> failing) {
    for (const char* value : passing)
        EXPECT_EQ(check(QString::fromUtf8(value)), ok) << primitive << " on \"" << value << "\" should pass";
    for (const char* value : failing)
        EXPECT_EQ(check(QString::fromUtf8(value)), bad) << primitive << " on \"" << value << "\" should fail";
}

// Expects normalise to turn each "typed -> normal" row's typed text into its normal form.
void expectNormal(const std::function<QString(const QString&)>& normalise, std::initializer_list<const char*> rows) {
    for (const char* row : rows) {
        const QStringList parts = QString::fromUtf8(row).split(" -> ");
        EXPECT_EQ(normalise(parts[0]), parts[1]) << row;
    }
}

TEST(CheckPrimitives, numbers_and_lengths) {
    expectEach("NurZiffern", NurZiffern, {"80040001234567890123", ""}, {"12a", " 12", "1,5", "-5", "١٢"});
    EXPECT_EQ(NurZiffern(QString()), ok) << "null reads as the empty text";

    expectEach("Gleitkommazahl(,)", [](const QString& v) { return Gleitkommazahl(comma, v); },
               {"12,50", "1250", "", ",", ",5", "5,"}, {"12.50", "1,2,3", "1,a"});
    expectEach("Gleitkommazahl(.)", [](const QString& v) { return Gleitkommazahl(QLatin1Char('.'), v); }, {"12.50"},
               {"12,50"});

    expectEach("Laenge(5)", [](const QString& v) { return Laenge(5, v); }, {"", "12345", "Öß123"}, {"1234", "123456"});

    // A malformed number (1,2,3; 12345,a) is left to Gleitkommazahl and passes here.
    expectEach("Gleitkommazahllaenge(3,2)", [](const QString& v) { return Gleitkommazahllaenge(3, 2, v, comma); },
               {"123", "123,45", "", "1,2,3", "12345,a"}, {"1234", "1,234", "1234,5", "12a"});

    expectEach("Pflichtfeld", Pflichtfeld, {" ", "Huber"}, {""});
    EXPECT_EQ(Pflichtfeld(QString()), bad);

    // An amount without its separator fails, even the empty one.
    expectEach("Waehrung(2)", [](const QString& v) { return Waehrung(v, comma, 2); }, {"12,50", ",50"},
               {"10,5", "12,500", "12", "12.50", "1,2,50", "a,50", ""});
}

TEST(CheckPrimitives, ranges_include_both_ends) {
    expectEach("Bereich(1,12)", [](const QString& v) { return Bereich(1, 12, v); }, {"1", "12", "007", ""},
               {"0", "13"});
    EXPECT_EQ(Bereich(1, 99999, "80040001234567890123"), bad) << "longer than any number";
    EXPECT_THROW(Bereich(1, 12, "1a"), VeridonError);

    expectEach("Gleitkommazahlbereich(0.5,2.5)", [](const QString& v) { return Gleitkommazahlbereich(0.5, 2.5, v); },
               {"2", "2,5", ""}, {"3", "0,4", "3,7"});
    EXPECT_THROW(Gleitkommazahlbereich(0.5, 2.5, "zwei"), VeridonError);
}

TEST(CheckPrimitives, werteliste_items_compare_exactly_with_their_blanks) {
    const auto list = [](const char* command) {
        return [command](const QString& v) {
            return Werteliste(QString::fromUtf8(command), v);
        };
    };
    expectEach("Werteliste(J,N)", list("Werteliste(J,N)"), {"N", ""}, {"j"});
    expectEach("Werteliste(E111,E128,EHIC)", list("Werteliste(E111,E128,EHIC)"), {"EHIC"}, {"EHI", "E111,E128"});
    expectEach("Werteliste(A, B)", list("Werteliste(A, B)"), {" B"}, {"B"});
    expectEach("Werteliste(,X)", list("Werteliste(,X)"), {"X"}, {});
    // The list ends at the first closing parenthesis.
    expectEach("Werteliste(A,B)C)", list("Werteliste(A,B)C)"), {"B"}, {"B)C"});
}

TEST(CheckPrimitives, times_are_brought_to_hh_mm_within_the_day) {
    // Other forms stay as typed.
    expectNormal(NormiereZeit, {"930 -> 09:30", "9:30 -> 09:30", ":30 -> 00:30", "9:5 -> 09:05", "7 -> 07:00",
                                "14:45 -> 14:45", "9.30 Uhr -> 9.30 Uhr"});
    // Only the outer characters are read: 12.30 passes.
    expectEach("Zeit", Zeit, {"930", "7", "23:59", "24:00", "", "12.30"},
               {"24:30", "12:60", "25", "9a0", "12?0", "123456"});
}

// Dates on the fixed test day, Sunday 15 November 2026.
class Dates : public HomeTest {
protected:
    Dates() : HomeTest(TempHome::Content::Empty) {}
    static QString day(int offset) { return QDate(2026, 11, 15).addDays(offset).toString("dd.MM.yyyy"); }

    // Datum_Bereich(from,to) on the days offset from today: passing ones, then failing ones.
    static void expectRange(const char* from, const char* to, std::initializer_list<int> passing,
                            std::initializer_list<int> failing) {
        for (int offset : passing)
            EXPECT_EQ(Datum(day(offset), DatumMode::Range, from, to), ok) << from << ',' << to << " on " << offset;
        for (int offset : failing)
            EXPECT_EQ(Datum(day(offset), DatumMode::Range, from, to), bad) << from << ',' << to << " on " << offset;
    }
};

TEST_F(Dates, reading_forms_are_brought_to_dd_mm_yyyy) {
    const auto loose = [](const QString& v) {
        return NormiereDatum(v, false);
    };
    expectNormal(loose, {"150385 -> 15.03.1985", "15031985 -> 15.03.1985", "1.3.85 -> 01.03.1985",
                         "03.7.61 -> 03.07.1961", "01/03/2029 -> 01.03.2029", "1-3-2029 -> 01.03.2029",
                         " 01.03.85  -> 01.03.1985", "31.2.26 -> 31.02.2026"});
    // Two-digit years up to this year are this century.
    expectNormal(loose, {"01.01.00 -> 01.01.2000", "311226 -> 31.12.2026", "010127 -> 01.01.1927"});
    // Other shapes come back unchanged.
    expectNormal(loose, {"1503851 -> 1503851", "15.11 -> 15.11", "15.111.2026 -> 15.111.2026", "15.11.026 -> 15.11.026",
                         "15. Nov 2026 -> 15. Nov 2026", " -> "});
    EXPECT_EQ(NormiereDatum("31.2.26", true), "31.2.26") << "the strict flag keeps an impossible date as typed";
    EXPECT_EQ(NormiereDatum("28.2.26", true), "28.02.2026");
    clock.set(QDateTime(QDate(2030, 1, 2), QTime(8, 0)));
    EXPECT_EQ(NormiereDatum("010127", false), "01.01.2027") << "the century boundary moves with the clock";
}

TEST_F(Dates, datum_bereich_bounds_count_days_from_today) {
    // Only a bound into the past: tomorrow fails, two or more days ahead pass.
    expectRange("30", "", {0, -30, 2, 5}, {-31, 1});
    // Only a bound into the future: every past date passes.
    expectRange("", "10", {10, -20000}, {11});
    // Both bounds are exclusive.
    expectRange("30", "10", {0, 1, 9, -29}, {10, -30});
    EXPECT_EQ(Datum(day(0), DatumMode::Range, "", ""), bad) << "a range needs a bound";
    EXPECT_EQ(Datum("31.02.2026", DatumMode::Range, "30", "10"), bad);
    EXPECT_EQ(Datum("", DatumMode::Range, "30", "10"), ok);
    EXPECT_THROW(Datum(day(0), DatumMode::Range, "dreißig", ""), VeridonError);
}

} // namespace
