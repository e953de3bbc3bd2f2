// SPDX-License-Identifier: Apache-2.0
// Each state's personal-number rule on its published examples and on the same numbers with one
// character wrong.

#include "check/PersonalNumberRules.h"

#include <gtest/gtest.h>

namespace {

struct StateNumbers {
    const char* state;
    std::initializer_list<const char*> valid;
    std::initializer_list<const char*> invalid;
};

// Valid numbers: the examples the registers publish with their descriptions of the number (FI:
// the population register's 131052-308T; DK: the CPR office's 070761-4285; PT: the citizen card's
// 000000000ZZ4 of the public administration agency's validation note; NL: the government's test
// number 111222333) and the examples that go with the public descriptions of the other numbers,
// each worked through by hand. Invalid ones change one character, mostly the check digit, or
// break the form.
// clang-format off
const StateNumbers states[] = {
    {"AT", {"1237 010180", "1236030761"}, {"1234 010180", "0237010180", "123701018"}},
    {"BE", {"85.07.30-033.28", "93051822361", "00012556777" /* born 2000 or later */},
           {"85073003329", "00012556778", "8507300332"}},
    {"BG", {"7523169263", "7501020018"}, {"7523169264", "7513169263" /* month 13 */}},
    {"CZ", {"736028/5163", "530101123" /* nine digits before 1954 */}, {"7360285164", "540101123"}},
    {"DE", {"A123456780", "M123456785", "65 170839 J 003" /* pension insurance number */},
           {"A123456781", "1123456780", "65170839J004"}},
    {"DK", {"070761-4285", "010190-1234" /* no modulus 11 since 2007 */}, {"320190-1234", "0101901234X"}},
    {"EE", {"37605030299"}, {"37605030298", "97605030299"}},
    {"ES", {"12345678Z", "X1234567L", "281234567840" /* social security number */},
           {"12345678A", "X1234567Z", "281234567841"}},
    {"FI", {"131052-308T", "010594Y9032", "020300B123N"}, {"131052-308U", "131052Q308T", "311399-999E"}},
    {"FR", {"1 84 12 76 451 089 46", "169052A12345641", "169052B12345668" /* Corsica */},
           {"184127645108947", "169052A12345668", "984127645108946"}},
    {"HR", {"69435151530", "123456789" /* the older insured-person number */}, {"69435151531"}},
    {"IT", {"RSSMRA85T10A562S", "RSSMRA85T10A56NH" /* omocodia */, "RSSGPP50A01H501S"},
           {"RSSMRA85T10A562T", "RSSMRA85Z10A562S", "RSSMRA85T10A562"}},
    {"LT", {"33309240064"}, {"33309240065"}},
    {"LV", {"161175-19997", "32579461005" /* issued since 2017 */}, {"161175-19998"}},
    {"NL", {"111222333", "123456782", "12345672" /* leading zero left off */}, {"111222334", "000000000"}},
    {"NO", {"01010750160"}, {"01010750161", "01010750170"}},
    {"PL", {"44051401359", "78113012357"}, {"44051401358", "44151401359"}},
    {"PT", {"123456789", "000000000ZZ4" /* citizen card */}, {"123456788", "000000000ZZ5"}},
    {"RO", {"1800101221144"}, {"1800101221145", "0800101221144"}},
    {"SE", {"811218-9876", "199512172389"}, {"811218-9875", "19951217238"}},
    {"SI", {"0101006500006"}, {"0101006500007"}},
    {"SK", {"736028/5163"}, {"736028/5164"}},
};
// clang-format on

TEST(PersonalNumberRules, each_state_accepts_its_examples_and_refuses_a_changed_character) {
    for (const StateNumbers& s : states) {
        ASSERT_TRUE(hasPersonalNumberRule(s.state)) << s.state;
        for (const char* number : s.valid)
            EXPECT_TRUE(personalNumberFits(s.state, number)) << s.state << " " << number << " should fit";
        for (const char* number : s.invalid)
            EXPECT_FALSE(personalNumberFits(s.state, number)) << s.state << " " << number << " should not fit";
    }
    // States without a rule take any number; codes are read without regard to case.
    EXPECT_FALSE(hasPersonalNumberRule("GR"));
    EXPECT_TRUE(personalNumberFits("GR", "irgendwas 123"));
    EXPECT_FALSE(personalNumberFits("at", "1234010180"));
}

} // namespace
