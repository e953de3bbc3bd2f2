// SPDX-License-Identifier: Apache-2.0
// The two card layouts. Layout 4 reads six lines (heading, state, surname, given names with date
// of birth, personal number with institution, card number with expiry), layout 5 seven (heading,
// state, surname, given names, date of birth with personal number, institution, card number with
// expiry).
#include "CardLayouts.h"

namespace evaluation {

namespace {

// The heading sits inside the card's top edge, above its rule.
Region headingOf(const Region& card) {
    return {card.x + 30, card.y + 20, card.dx - 60, 60};
}

} // namespace

const std::array<CardLayout, 2>& cardLayouts() {
    using C = Content;
    static const std::array<CardLayout, 2> layouts{{
        {4,
         {150, 430, 1180, 660},
         {1230, 290, 280, 70},
         {
             {{headingOf({150, 430, 1180, 660}), C::Heading}},
             {{{190, 540, 110, 64}, C::StateCode}},
             {{{190, 650, 1000, 60}, C::Name}},
             {{{190, 760, 600, 60}, C::Name}, {{830, 760, 340, 60}, C::Date}},
             {{{190, 870, 440, 60}, C::Text}, {{670, 870, 620, 60}, C::Text}},
             {{{190, 980, 600, 60}, C::CardNumber}, {{830, 980, 340, 60}, C::Date}},
         }},
        {5,
         {330, 1060, 1160, 760},
         {150, 1980, 280, 70},
         {
             {{headingOf({330, 1060, 1160, 760}), C::Heading}},
             {{{370, 1170, 110, 64}, C::StateCode}},
             {{{370, 1280, 1000, 60}, C::Name}},
             {{{370, 1390, 1000, 60}, C::Name}},
             {{{370, 1500, 340, 60}, C::Date}, {{760, 1500, 560, 60}, C::Text}},
             {{{370, 1610, 1000, 60}, C::Text}},
             {{{370, 1720, 600, 60}, C::CardNumber}, {{1010, 1720, 340, 60}, C::Date}},
         }},
    }};
    return layouts;
}

} // namespace evaluation
