// SPDX-License-Identifier: Apache-2.0
// Where the two printed versions (layouts 4 and 5) of the demo form put the card and each field's
// value. The form generator draws from these tables and nothing else, and the field definitions'
// coordinate columns (T4_x .. T5_dy of ZVBFelder) must carry the same numbers, so that the image
// display shows each field's own region of the scanned card. A test holds the two side by side.
//
// Unit: pixels of the page as scanned at 200 dpi (an A4 page is 1654 x 2339), origin at the top
// left corner, x to the right, y downwards. A region holds the value only; its small caption lies
// just above it, outside the region, so reading a region gives the bare value.
#pragma once

#include <array>
#include <string_view>

namespace formlayout {

inline constexpr int pageDpi = 200;
inline constexpr int pageWidth = 1654;  // 210 mm at 200 dpi
inline constexpr int pageHeight = 2339; // 297 mm at 200 dpi

struct Box {
    int x, y, dx, dy;
};

// One field of the form: the column of zvbWerte it shows, the caption printed above it, and where
// its value lies on the page.
struct FieldBox {
    std::string_view field;
    std::string_view caption;
    Box box;
};

// One printed version of the form.
struct Layout {
    int typ;                         // the record's TYP: 4 or 5
    Box card;                        // the card's outline
    Box title;                       // the form's heading line
    Box notes;                       // the block of instructions
    Box signature;                   // place, date and signature line
    std::array<FieldBox, 10> fields; // the ten form fields, in the form's tab order
};

// Layout 4: heading and form number at the top, the card high on the page, the receipt stamp at
// the top right. The card is read in six lines: title, state, surname, given names with date of
// birth, personal number with institution, card number with expiry date.
inline constexpr Layout layout4{
    4,
    {150, 430, 1180, 660},
    {150, 150, 1000, 60},
    {150, 1180, 1350, 330},
    {150, 1950, 1350, 120},
    {{
        {"FORM_ID", "Formular", {1230, 150, 280, 70}},
        {"SCANDAT", "Eingangsdatum", {1230, 290, 280, 70}},
        {"STATE", "1. Staat", {190, 540, 110, 64}},
        {"NACHNAME", "3. Name", {190, 650, 1000, 60}},
        {"VORNAME", "4. Vornamen", {190, 760, 600, 60}},
        {"GEBDAT", "5. Geburtsdatum", {830, 760, 340, 60}},
        {"PERSONAL_ID", "6. Persönliche Kennnummer", {190, 870, 440, 60}},
        {"INSTITUT_ID", "7. Kennnummer des Trägers", {670, 870, 620, 60}},
        {"CARD_ID", "8. Kennnummer der Karte", {190, 980, 600, 60}},
        {"CARD_EXPIRY", "9. Ablaufdatum", {830, 980, 340, 60}},
    }},
};

// Layout 5: form number at the top left, instructions above the card, the card low and to the
// right, the receipt stamp at the bottom left. The card is read in seven lines: title, state,
// surname, given names, date of birth with personal number, institution, card number with expiry.
inline constexpr Layout layout5{
    5,
    {330, 1060, 1160, 760},
    {480, 150, 1020, 60},
    {150, 420, 1350, 330},
    {150, 2120, 1350, 100},
    {{
        {"FORM_ID", "Formular", {150, 150, 280, 70}},
        {"SCANDAT", "Eingangsdatum", {150, 1980, 280, 70}},
        {"STATE", "1. Staat", {370, 1170, 110, 64}},
        {"NACHNAME", "3. Name", {370, 1280, 1000, 60}},
        {"VORNAME", "4. Vornamen", {370, 1390, 1000, 60}},
        {"GEBDAT", "5. Geburtsdatum", {370, 1500, 340, 60}},
        {"PERSONAL_ID", "6. Persönliche Kennnummer", {760, 1500, 560, 60}},
        {"INSTITUT_ID", "7. Kennnummer des Trägers", {370, 1610, 1000, 60}},
        {"CARD_ID", "8. Kennnummer der Karte", {370, 1720, 600, 60}},
        {"CARD_EXPIRY", "9. Ablaufdatum", {1010, 1720, 340, 60}},
    }},
};

// The layout of a record's TYP: 4 selects layout 4, every other value layout 5, as the field
// definitions do.
inline constexpr const Layout& layoutFor(int typ) {
    return typ == 4 ? layout4 : layout5;
}

} // namespace formlayout
