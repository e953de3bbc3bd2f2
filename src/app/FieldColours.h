// SPDX-License-Identifier: Apache-2.0
// The six field colours and the mapping from a field's status code to its colour. Colours are
// Windows colour references 0x00BBGGRR, stored in the settings as "&H" followed by hex digits.
#pragma once

#include <QString>

struct FieldColours {
    qint32 ok = 0x00FF00;         // Color_OK: checks passed (code "0")
    qint32 noCheck = 0xFFFFFF;    // Color_NoCheck: no checks (code "1")
    qint32 syntaxOk = 0xE0FFE0;   // Color_Syntaxok: syntax correct (code "2")
    qint32 fehler = 0xA0A0FF;     // Color_Fehler: faulty (code "3")
    qint32 ausgegraut = 0xC0C0C0; // Color_Ausgegraut: greyed out (code "4")
    qint32 warnung = 0x80FFFF;    // Color_Warnung: warning (code "5")
};

// The colour settings' column names and default texts, in loading order.
struct ColourSetting {
    const char* column;
    const char* defaultText;
    qint32 FieldColours::*member;
};
inline constexpr ColourSetting colourSettings[] = {
    {"Color_OK", "&HFF00", &FieldColours::ok},
    {"Color_NoCheck", "&HFFFFFF", &FieldColours::noCheck},
    {"Color_Syntaxok", "&HE0FFE0", &FieldColours::syntaxOk},
    {"Color_Fehler", "&HA0A0FF", &FieldColours::fehler},
    {"Color_Ausgegraut", "&HC0C0C0", &FieldColours::ausgegraut},
    {"Color_Warnung", "&H80FFFF", &FieldColours::warnung},
};

// "&HA0A0FF" (or a plain decimal number) as a 32-bit colour. Throws VeridonError (type mismatch)
// for any other text.
qint32 parseColourText(const QString& text);

// The colour for a status code "0".."5"; any other code (or none) gets the no-check colour.
qint32 colourForStatus(const QString& code, const FieldColours& colours);

// The colour reference 0x00BBGGRR as red, green and blue.
inline int colourRed(qint32 ref) {
    return ref & 0xFF;
}
inline int colourGreen(qint32 ref) {
    return (ref >> 8) & 0xFF;
}
inline int colourBlue(qint32 ref) {
    return (ref >> 16) & 0xFF;
}
