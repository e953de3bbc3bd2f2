// SPDX-License-Identifier: Apache-2.0
// The card checks: each state's personal-number rule on its published examples and on the same
// numbers with one character wrong, then EhicKarte and PersonenNr in the engine on a stored card -
// the warning the operator reads, the field's warning code and a record that still counts as
// faulty until the operator confirms it.

#include "HomeTest.h"
#include "RecordRows.h"
#include "app/Database.h"
#include "check/PersonalNumberRules.h"
#include "check/mdlCheck.h"
#include "model/FormModel.h"

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

class CardChecks : public HomeTest {
protected:
    void SetUp() override {
        FelderArray().Fill();
        RowValues row = demoForm(0); // Maria Huber's Austrian card
        row.insert("Workflow_Status", 10);
        lfdNr = insertRecord(row);
        QSqlQuery stored = execSql("SELECT * FROM zvbWerte WHERE LfdNr=?", {lfdNr});
        ASSERT_TRUE(stored.next());
        WerteArray().Fill(stored);
    }
    void TearDown() override {
        WerteArray().Clear();
        FelderArray().EmptyArray();
    }
    // Checks the whole record with the given field values and returns the result; errors holds
    // the text the operator reads.
    qint16 checkWith(std::initializer_list<std::pair<const char*, const char*>> values) {
        for (const auto& [field, value] : values)
            WerteArray().SetValue(field, value);
        errors.clear();
        return Check("all", errors);
    }
    QString code(const QString& field) { return statusCodeOf(WerteArray().GetValue("Fehlerhaft"), field); }

    qint32 lfdNr = 0;
    QString errors;
};

TEST_F(CardChecks, the_card_number_must_carry_80_and_the_issuing_states_country_number) {
    struct Row {
        const char* state;
        const char* card;
        qint16 result;
    };
    const QString warning = "\r\nKennnummer der Karte ist keine Kartennummer (20 Ziffern, beginnend mit 80 und der "
                            "Ländernummer) des Staates ";
    const Row rows[] = {
        {"AT", "80040001234567890123", 0}, {"GR", "80300001234567890123", 0},
        {"EL", "80300001234567890123", 0}, {"UK", "80826001234567890123", 0},
        {"GB", "80826001234567890123", 0}, {"AT", "80276001234567890123", 3},
        {"AT", "81040001234567890123", 3}, {"D?", "80276001234567890123", 2 /* the "?" of the state */},
    };
    for (const Row& r : rows) {
        SCOPED_TRACE(std::string(r.state) + " " + r.card);
        EXPECT_EQ(checkWith({{"STATE", r.state}, {"CARD_ID", r.card}}), r.result);
        if (r.result == 3) {
            EXPECT_EQ(errors, warning + r.state);
            EXPECT_EQ(code("CARD_ID"), "5");
            EXPECT_EQ(WerteArray().GetValue("Korrigiert"), "0") << "a warning is not yet a clean record";
        } else {
            EXPECT_FALSE(errors.contains("Kennnummer der Karte")) << errors.toStdString();
        }
    }
}

TEST_F(CardChecks, a_wrong_personal_number_or_asterisks_warn_unless_the_state_prints_them) {
    EXPECT_EQ(checkWith({{"PERSONAL_ID", "1234030761"}}), 3);
    EXPECT_EQ(errors, "\r\nPersönliche Kennnummer passt nicht zu Aufbau und Prüfziffer der persönlichen Kennnummer "
                      "des Staates AT");
    EXPECT_EQ(code("PERSONAL_ID"), "5");
    // An Austrian e-card without entitlement prints asterisks in place of the number.
    EXPECT_EQ(checkWith({{"PERSONAL_ID", "**********"}}), 0) << errors.toStdString();
    EXPECT_EQ(code("PERSONAL_ID"), "0");
    EXPECT_EQ(checkWith({{"STATE", "NL"}, {"CARD_ID", "80528000012345678901"}, {"PERSONAL_ID", "*********"}}), 3);
    EXPECT_TRUE(errors.endsWith("des Staates NL")) << errors.toStdString();
    // An error elsewhere outranks the warning.
    EXPECT_EQ(checkWith({{"NACHNAME", ""}}), 2);
    EXPECT_EQ(code("PERSONAL_ID"), "5");
}

TEST_F(CardChecks, master_data_without_the_country_numbers_is_reported_not_taken_as_the_cards_fault) {
    execSql("ALTER TABLE sysStates DROP COLUMN State_IsoNumeric");
    EXPECT_EQ(checkWith({}), 2);
    EXPECT_TRUE(errors.contains("Der Befehl 'EhicKarte(STATE)' im Feld 'Kennnummer der Karte' kann nicht ausgeführt "
                                "werden: "))
        << errors.toStdString();
    EXPECT_TRUE(errors.contains("State_IsoNumeric")) << errors.toStdString();

    execSql("UPDATE ZVBFelder SET pruefungen='PersonenNr(LAND)' WHERE VarName='PERSONAL_ID'");
    FelderArray().Fill();
    EXPECT_EQ(checkWith({}), 2);
    EXPECT_TRUE(errors.contains("Das Feld 'LAND' gibt es im Beleg nicht.")) << errors.toStdString();
    EXPECT_TRUE(messages.messages().isEmpty()) << messages.prompts().join("|").toStdString();
}

} // namespace
