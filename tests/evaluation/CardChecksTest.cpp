// SPDX-License-Identifier: Apache-2.0
// The card's rules applied to readings as the engine gives them: the state code and the card
// number's prefix repair or question each other, letters foreign to the state's alphabet are
// questioned, the state's own spelling wins over look-alike letters, dates keep their shape and a
// card number has its 20 digits.
#include "CardChecks.h"

#include <QStringList>
#include <gtest/gtest.h>

namespace {

using evaluation::Content;
using evaluation::ReadPart;

TEST(CardChecksTest, RulesOfTheCard) {
    // The five readings of a card (state code, name, institution, card number, expiry) joined by
    // "|", and what the rules make of them; "\f" is a character the engine could not read.
    const struct {
        const char* what;
        QString read, want;
    } cases[] = {
        {"state code unreadable, card number names it", "\\f|Novotná|111 - VZP ČR|80203771932002449235|18/08/2030",
         "CZ|Novotná|111 - VZP ČR|80203771932002449235|18/08/2030"},
        {"card prefix unreadable, state code fills it", "HU|Kovács|1 - NEAK Budapest|8\\f348248203639584365|16/03/2029",
         "HU|Kovács|1 - NEAK Budapest|80348248203639584365|16/03/2029"},
        {"state and card number disagree: both questioned",
         "CZ|Søren|1 - Region Hovedstaden|80208645175519014717|14/05/2027",
         "\\f\\f|Søren|1 - Region Hovedstaden|\\f\\f\\f\\f\\f645175519014717|14/05/2027"},
        {"letters foreign to Lithuanian questioned", "LT|Kazłauskas|1 - VLK Vilnius|80440123451234567890|01/02/2028",
         "LT|Kaz\\fauskas|1 - VLK Vilnius|80440123451234567890|01/02/2028"},
        {"Romanian comma below, impossible month, unreadable hyphen",
         "RO|Mihăiţă|1 \\f CNAS Bucureşti|80642095245375214953|29/13/2027",
         "RO|Mihăiță|1 - CNAS București|80642095245375214953|29/\\f\\f/2027"},
        {"Croatian D with stroke, unreadable slash", "HR|Ðurđica|51 - HZZO Zagreb|80191114572978280400|05\\f06/2031",
         "HR|Đurđica|51 - HZZO Zagreb|80191114572978280400|05/06/2031"},
        {"Icelandic eth and thorn stay", "IS|Þórðardóttir|1 - Sjúkratryggingar|80352114198544744169|18/12/2026",
         "IS|Þórðardóttir|1 - Sjúkratryggingar|80352114198544744169|18/12/2026"},
        {"Latvian has no q; a card number a digit short; a stray dot, a lost blank",
         "LV|Qzols|'1 -NVD Rīga .|8042812345123456789|18/12/2026",
         "LV|\\fzols|1 - NVD Rīga|80428\\f\\f\\f\\f\\f\\f\\f\\f\\f\\f\\f\\f\\f\\f|18/12/2026"},
        {"unknown state, unknown prefix", "XY|Mäkinen|1 - Kela|80999114198544744169|18/12/2026",
         "\\f\\f|Mäkinen|1 - Kela|80999114198544744169|18/12/2026"},
    };
    const QList<Content> kinds{Content::StateCode, Content::Name, Content::Text, Content::CardNumber, Content::Date};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        const QStringList read = c.read.split('|');
        std::vector<ReadPart> parts;
        std::vector<ReadPart*> pointers;
        parts.reserve(kinds.size());
        for (int i = 0; i < kinds.size(); ++i)
            pointers.push_back(&parts.emplace_back(ReadPart{kinds[i], read.value(i)}));
        evaluation::checkCard(pointers);
        QStringList got;
        for (const ReadPart& part : parts)
            got << part.text;
        EXPECT_EQ(got.join('|').toStdString(), c.want.toStdString());
    }
}

} // namespace
