// The check primitives, one group per primitive, with the boundary values an operator meets.

#include "HomeTest.h"
#include "app/Errors.h"
#include "check/mdlCheckHelper.h"

namespace {

constexpr qint16 ok = CheckResult::Passed;
constexpr qint16 bad = CheckResult::Error;
const QChar comma = QLatin1Char(',');

TEST(NurZiffern, digits_only_pass_and_anything_else_fails) {
    EXPECT_EQ(NurZiffern("80040001234567890123"), ok);
    EXPECT_EQ(NurZiffern(""), ok);
    EXPECT_EQ(NurZiffern(QString()), ok) << "null reads as the empty text";
    EXPECT_EQ(NurZiffern("12a"), bad);
    EXPECT_EQ(NurZiffern(" 12"), bad);
    EXPECT_EQ(NurZiffern("1,5"), bad);
    EXPECT_EQ(NurZiffern("-5"), bad);
    EXPECT_EQ(NurZiffern(QString::fromUtf8("١٢")), bad) << "only the digits 0-9 count";
}

TEST(Gleitkommazahl, the_workstation_writes_decimals_with_a_comma) {
    EXPECT_EQ(decimalSeparator(), comma);
    EXPECT_EQ(Gleitkommazahl(comma, "12,50"), ok);
    EXPECT_EQ(Gleitkommazahl(comma, "1250"), ok);
    EXPECT_EQ(Gleitkommazahl(comma, "12.50"), bad) << "a point is not the separator";
    EXPECT_EQ(Gleitkommazahl(comma, "1,2,3"), bad);
    EXPECT_EQ(Gleitkommazahl(comma, "1,a"), bad);
    EXPECT_EQ(Gleitkommazahl(comma, ""), ok);
}

TEST(Gleitkommazahl, either_part_may_be_empty) {
    EXPECT_EQ(Gleitkommazahl(comma, ","), ok);
    EXPECT_EQ(Gleitkommazahl(comma, ",5"), ok);
    EXPECT_EQ(Gleitkommazahl(comma, "5,"), ok);
}

TEST(Gleitkommazahl, another_separator_can_be_named) {
    EXPECT_EQ(Gleitkommazahl(QLatin1Char('.'), "12.50"), ok);
    EXPECT_EQ(Gleitkommazahl(QLatin1Char('.'), "12,50"), bad);
}

TEST(Laenge, empty_or_exactly_n_characters) {
    EXPECT_EQ(Laenge(5, ""), ok);
    EXPECT_EQ(Laenge(5, "1234"), bad);
    EXPECT_EQ(Laenge(5, "12345"), ok);
    EXPECT_EQ(Laenge(5, "123456"), bad);
    EXPECT_EQ(Laenge(2, QString::fromUtf8("Öß")), ok) << "characters, not bytes";
}

TEST(Gleitkommazahllaenge, digits_before_and_after_the_separator_are_limited) {
    EXPECT_EQ(Gleitkommazahllaenge(3, 2, "123", comma), ok);
    EXPECT_EQ(Gleitkommazahllaenge(3, 2, "1234", comma), bad);
    EXPECT_EQ(Gleitkommazahllaenge(3, 2, "123,45", comma), ok);
    EXPECT_EQ(Gleitkommazahllaenge(3, 2, "1,234", comma), bad);
    EXPECT_EQ(Gleitkommazahllaenge(3, 2, "1234,5", comma), bad);
    EXPECT_EQ(Gleitkommazahllaenge(3, 2, "12a", comma), bad) << "without a separator the value must be digits";
    EXPECT_EQ(Gleitkommazahllaenge(3, 2, "", comma), ok);
}

TEST(Gleitkommazahllaenge, a_malformed_number_is_left_to_gleitkommazahl) {
    EXPECT_EQ(Gleitkommazahllaenge(3, 2, "1,2,3", comma), ok);
    EXPECT_EQ(Gleitkommazahllaenge(3, 2, "12345,a", comma), ok);
}

TEST(Pflichtfeld, only_the_empty_value_fails) {
    EXPECT_EQ(Pflichtfeld(""), bad);
    EXPECT_EQ(Pflichtfeld(QString()), bad);
    EXPECT_EQ(Pflichtfeld(" "), ok) << "a value of blanks is filled";
    EXPECT_EQ(Pflichtfeld("Huber"), ok);
}

TEST(Bereich, both_ends_are_included) {
    EXPECT_EQ(Bereich(1, 12, "1"), ok);
    EXPECT_EQ(Bereich(1, 12, "12"), ok);
    EXPECT_EQ(Bereich(1, 12, "007"), ok);
    EXPECT_EQ(Bereich(1, 12, "0"), bad);
    EXPECT_EQ(Bereich(1, 12, "13"), bad);
    EXPECT_EQ(Bereich(1, 12, ""), ok);
    EXPECT_EQ(Bereich(-5, 5, "0"), ok);
}

TEST(Bereich, a_card_number_longer_than_any_number_is_out_of_range) {
    EXPECT_EQ(Bereich(1, 99999, "80040001234567890123"), bad);
}

TEST(Bereich, a_value_that_is_no_number_is_a_runtime_error) {
    EXPECT_THROW(Bereich(1, 12, "1a"), VeridonError);
}

TEST(Gleitkommazahlbereich, the_value_is_read_as_a_decimal_number) {
    EXPECT_EQ(Gleitkommazahlbereich(0.5, 2.5, "2"), ok);
    EXPECT_EQ(Gleitkommazahlbereich(0.5, 2.5, "3"), bad);
    EXPECT_EQ(Gleitkommazahlbereich(0.5, 2.5, "2,5"), ok);
    EXPECT_EQ(Gleitkommazahlbereich(0.5, 2.5, "0,4"), bad);
    EXPECT_EQ(Gleitkommazahlbereich(0.5, 2.5, "3,7"), bad);
    EXPECT_EQ(Gleitkommazahlbereich(0.5, 2.5, ""), ok);
    EXPECT_THROW(Gleitkommazahlbereich(0.5, 2.5, "zwei"), VeridonError);
}

TEST(Werteliste, items_compare_exactly) {
    EXPECT_EQ(Werteliste("Werteliste(J,N)", "N"), ok);
    EXPECT_EQ(Werteliste("Werteliste(J,N)", "j"), bad) << "case matters";
    EXPECT_EQ(Werteliste("Werteliste(J,N)", ""), ok);
    EXPECT_EQ(Werteliste("Werteliste(E111,E128,EHIC)", "EHIC"), ok);
    EXPECT_EQ(Werteliste("Werteliste(E111,E128,EHIC)", "EHI"), bad);
    EXPECT_EQ(Werteliste("Werteliste(E111,E128,EHIC)", "E111,E128"), bad);
}

TEST(Werteliste, blanks_belong_to_the_item) {
    EXPECT_EQ(Werteliste("Werteliste(A, B)", " B"), ok);
    EXPECT_EQ(Werteliste("Werteliste(A, B)", "B"), bad);
    EXPECT_EQ(Werteliste("Werteliste(,X)", "X"), ok) << "a leading comma gives an empty first item";
}

TEST(Werteliste, the_list_ends_at_the_first_closing_parenthesis) {
    EXPECT_EQ(Werteliste("Werteliste(A,B)C)", "B"), ok);
    EXPECT_EQ(Werteliste("Werteliste(A,B)C)", "B)C"), bad);
}

TEST(Zeit, operator_short_forms_are_brought_to_hh_mm) {
    EXPECT_EQ(NormiereZeit("930"), "09:30");
    EXPECT_EQ(NormiereZeit("0930"), "09:30");
    EXPECT_EQ(NormiereZeit("9:30"), "09:30");
    EXPECT_EQ(NormiereZeit(":30"), "00:30");
    EXPECT_EQ(NormiereZeit("9:5"), "09:05");
    EXPECT_EQ(NormiereZeit("23"), "23:00");
    EXPECT_EQ(NormiereZeit("7"), "07:00");
    EXPECT_EQ(NormiereZeit("14:45"), "14:45");
    EXPECT_EQ(NormiereZeit("9.30 Uhr"), "9.30 Uhr") << "other forms stay as typed";
}

TEST(Zeit, hours_and_minutes_must_lie_within_the_day) {
    EXPECT_EQ(Zeit("930"), ok);
    EXPECT_EQ(Zeit("7"), ok);
    EXPECT_EQ(Zeit("23:59"), ok);
    EXPECT_EQ(Zeit("24:00"), ok) << "midnight at the end of the day";
    EXPECT_EQ(Zeit("24:30"), bad);
    EXPECT_EQ(Zeit("12:60"), bad);
    EXPECT_EQ(Zeit("25"), bad);
    EXPECT_EQ(Zeit("9a0"), bad);
    EXPECT_EQ(Zeit("12?0"), bad);
    EXPECT_EQ(Zeit("123456"), bad);
    EXPECT_EQ(Zeit(""), ok);
}

TEST(Zeit, only_the_outer_characters_are_read) {
    EXPECT_EQ(Zeit("12.30"), ok);
}

TEST(Waehrung, the_amount_needs_exactly_n_decimals) {
    EXPECT_EQ(Waehrung("12,50", comma, 2), ok);
    EXPECT_EQ(Waehrung(",50", comma, 2), ok);
    EXPECT_EQ(Waehrung("10,5", comma, 2), bad);
    EXPECT_EQ(Waehrung("12,500", comma, 2), bad);
    EXPECT_EQ(Waehrung("12", comma, 2), bad);
    EXPECT_EQ(Waehrung("12.50", comma, 2), bad);
    EXPECT_EQ(Waehrung("1,2,50", comma, 2), bad);
    EXPECT_EQ(Waehrung("a,50", comma, 2), bad);
    EXPECT_EQ(Waehrung("", comma, 2), bad) << "an amount without its separator, even the empty one, fails";
}

// Dates on the fixed test day, Sunday 15 November 2026.
class Dates : public HomeTest {
protected:
    Dates() : HomeTest(TempHome::Content::Empty) {}
    static QString day(int offset) { return QDate(2026, 11, 15).addDays(offset).toString("dd.MM.yyyy"); }
    static qint16 range(const QString& value, const QString& from, const QString& to) {
        return Datum(value, DatumMode::Range, from, to);
    }
};

TEST_F(Dates, reading_forms_are_brought_to_dd_mm_yyyy) {
    EXPECT_EQ(NormiereDatum("15.11.2026", false), "15.11.2026");
    EXPECT_EQ(NormiereDatum("150385", false), "15.03.1985");
    EXPECT_EQ(NormiereDatum("15031985", false), "15.03.1985");
    EXPECT_EQ(NormiereDatum("1.3.85", false), "01.03.1985");
    EXPECT_EQ(NormiereDatum("3.07.1961", false), "03.07.1961");
    EXPECT_EQ(NormiereDatum("03.7.61", false), "03.07.1961");
    EXPECT_EQ(NormiereDatum("01/03/2029", false), "01.03.2029");
    EXPECT_EQ(NormiereDatum("1-3-2029", false), "01.03.2029");
    EXPECT_EQ(NormiereDatum(" 01.03.85 ", false), "01.03.1985");
}

TEST_F(Dates, two_digit_years_up_to_this_year_are_this_century) {
    EXPECT_EQ(NormiereDatum("01.01.00", false), "01.01.2000");
    EXPECT_EQ(NormiereDatum("311226", false), "31.12.2026");
    EXPECT_EQ(NormiereDatum("010127", false), "01.01.1927");
    EXPECT_EQ(NormiereDatum("01.01.99", false), "01.01.1999");
    clock.set(QDateTime(QDate(2030, 1, 2), QTime(8, 0)));
    EXPECT_EQ(NormiereDatum("010127", false), "01.01.2027") << "the boundary moves with the clock";
}

TEST_F(Dates, other_shapes_come_back_unchanged) {
    EXPECT_EQ(NormiereDatum("1503851", false), "1503851");
    EXPECT_EQ(NormiereDatum("15.11", false), "15.11");
    EXPECT_EQ(NormiereDatum("15.111.2026", false), "15.111.2026");
    EXPECT_EQ(NormiereDatum("15.11.026", false), "15.11.026");
    EXPECT_EQ(NormiereDatum("15. Nov 2026", false), "15. Nov 2026");
    EXPECT_EQ(NormiereDatum("", false), "");
}

TEST_F(Dates, the_strict_flag_keeps_an_impossible_date_as_typed) {
    EXPECT_EQ(NormiereDatum("31.2.26", false), "31.02.2026");
    EXPECT_EQ(NormiereDatum("31.2.26", true), "31.2.26");
    EXPECT_EQ(NormiereDatum("28.2.26", true), "28.02.2026");
}

TEST_F(Dates, datum_accepts_every_valid_date_in_a_reading_form) {
    EXPECT_EQ(Datum("15.11.2026", DatumMode::Valid, "", ""), ok);
    EXPECT_EQ(Datum("150385", DatumMode::Valid, "", ""), ok);
    EXPECT_EQ(Datum("29.02.2028", DatumMode::Valid, "", ""), ok);
    EXPECT_EQ(Datum("29.02.2027", DatumMode::Valid, "", ""), bad);
    EXPECT_EQ(Datum("15.13.2026", DatumMode::Valid, "", ""), bad);
    EXPECT_EQ(Datum("15.11.2?26", DatumMode::Valid, "", ""), bad);
    EXPECT_EQ(Datum("", DatumMode::Valid, "", ""), ok);
    EXPECT_EQ(Datum("15.11.2026", 3, "", ""), bad) << "an unknown mode fails";
}

TEST_F(Dates, only_a_bound_into_the_past) {
    EXPECT_EQ(range(day(0), "30", ""), ok);
    EXPECT_EQ(range(day(-30), "30", ""), ok);
    EXPECT_EQ(range(day(-31), "30", ""), bad);
    EXPECT_EQ(range(day(1), "30", ""), bad);
    EXPECT_EQ(range(day(2), "30", ""), ok) << "two or more days ahead pass";
    EXPECT_EQ(range(day(5), "30", ""), ok);
}

TEST_F(Dates, only_a_bound_into_the_future) {
    EXPECT_EQ(range(day(10), "", "10"), ok);
    EXPECT_EQ(range(day(11), "", "10"), bad);
    EXPECT_EQ(range(day(-20000), "", "10"), ok) << "every past date passes";
}

TEST_F(Dates, both_bounds_are_exclusive) {
    EXPECT_EQ(range(day(0), "30", "10"), ok);
    EXPECT_EQ(range(day(1), "30", "10"), ok);
    EXPECT_EQ(range(day(9), "30", "10"), ok);
    EXPECT_EQ(range(day(10), "30", "10"), bad);
    EXPECT_EQ(range(day(-29), "30", "10"), ok);
    EXPECT_EQ(range(day(-30), "30", "10"), bad);
}

TEST_F(Dates, a_range_needs_a_bound_and_a_valid_date) {
    EXPECT_EQ(range(day(0), "", ""), bad);
    EXPECT_EQ(range("31.02.2026", "30", "10"), bad);
    EXPECT_EQ(range("", "30", "10"), ok);
    EXPECT_THROW(range(day(0), "dreißig", ""), VeridonError);
}

class LookupPrimitive : public HomeTest {};

TEST_F(LookupPrimitive, finds_a_value_in_a_master_table) {
    EXPECT_EQ(Lookup("State_ID", "sysStates", "[State_ID]='AT'"), ok);
    EXPECT_EQ(Lookup("State_ID", "sysStates", "[State_ID]='at'"), ok) << "texts compare without case";
    EXPECT_EQ(Lookup("State_ID", "sysStates", "[State_ID]='XX'"), bad);
    EXPECT_EQ(Lookup("State_ID", "sysStates", "[State_ID]='AT' AND State_XmlType=4"), bad);
    EXPECT_THROW(Lookup("State_ID", "Staaten", "[State_ID]='AT'"), VeridonError);
}

} // namespace
