// SPDX-License-Identifier: Apache-2.0
// The card's rules applied to readings as the engine gives them: the state code and the card
// number's prefix repair or question each other, letters foreign to the state's alphabet are
// questioned, the state's own spelling wins over look-alike letters, dates keep their shape and a
// card number has its 20 digits.
#include "CardChecks.h"

#include <QList>
#include <gtest/gtest.h>

namespace {

using evaluation::Content;
using evaluation::ReadPart;

TEST(CardChecksTest, RulesOfTheCard) {
    struct Case {
        const char* what;
        QString state, name, institution, card, expiry;
        QString wantState, wantName, wantInstitution, wantCard, wantExpiry;
    };
    const QString u = QStringLiteral("\\f");
    const QList<Case> cases{
        {"state code unreadable, card number names it", u, "Novotná", "111 - VZP ČR", "80203771932002449235",
         "18/08/2030", "CZ", "Novotná", "111 - VZP ČR", "80203771932002449235", "18/08/2030"},
        {"card prefix unreadable, state code fills it", "HU", "Kovács", "1 - NEAK Budapest",
         "8" + u + "348248203639584365", "16/03/2029", "HU", "Kovács", "1 - NEAK Budapest", "80348248203639584365",
         "16/03/2029"},
        {"state and card number disagree: both questioned", "CZ", "Søren", "1 - Region Hovedstaden",
         "80208645175519014717", "14/05/2027", u + u, "Søren", "1 - Region Hovedstaden",
         u.repeated(5) + "645175519014717", "14/05/2027"},
        {"letters foreign to Lithuanian questioned", "LT", "Kazłauskas", "1 - VLK Vilnius", "80440123451234567890",
         "01/02/2028", "LT", "Kaz" + u + "auskas", "1 - VLK Vilnius", "80440123451234567890", "01/02/2028"},
        {"Romanian comma below, impossible month, unreadable hyphen", "RO", "Mihăiţă", "1 " + u + " CNAS Bucureşti",
         "80642095245375214953", "29/13/2027", "RO", "Mihăiță", "1 - CNAS București", "80642095245375214953",
         "29/" + u + u + "/2027"},
        {"Croatian D with stroke, unreadable slash", "HR", "Ðurđica", "51 - HZZO Zagreb", "80191114572978280400",
         "05" + u + "06/2031", "HR", "Đurđica", "51 - HZZO Zagreb", "80191114572978280400", "05/06/2031"},
        {"Icelandic eth and thorn stay", "IS", "Þórðardóttir", "1 - Sjúkratryggingar", "80352114198544744169",
         "18/12/2026", "IS", "Þórðardóttir", "1 - Sjúkratryggingar", "80352114198544744169", "18/12/2026"},
        {"Latvian has no q; a card number a digit short; a stray dot, a lost blank", "LV", "Qzols", "'1 -NVD Rīga .",
         "8042812345123456789", "18/12/2026", "LV", u + "zols", "1 - NVD Rīga", "80428" + u.repeated(14), "18/12/2026"},
        {"unknown state, unknown prefix", "XY", "Mäkinen", "1 - Kela", "80999114198544744169", "18/12/2026", u + u,
         "Mäkinen", "1 - Kela", "80999114198544744169", "18/12/2026"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        ReadPart state{Content::StateCode, c.state}, name{Content::Name, c.name},
            institution{Content::Text, c.institution}, card{Content::CardNumber, c.card},
            expiry{Content::Date, c.expiry};
        std::vector<ReadPart*> parts{&state, &name, &institution, &card, &expiry};
        evaluation::checkCard(parts);
        EXPECT_EQ(state.text.toStdString(), c.wantState.toStdString());
        EXPECT_EQ(name.text.toStdString(), c.wantName.toStdString());
        EXPECT_EQ(institution.text.toStdString(), c.wantInstitution.toStdString());
        EXPECT_EQ(card.text.toStdString(), c.wantCard.toStdString());
        EXPECT_EQ(expiry.text.toStdString(), c.wantExpiry.toStdString());
    }
}

} // namespace
