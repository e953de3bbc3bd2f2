// SPDX-License-Identifier: Apache-2.0
// The six field colours and the mapping from a field's status code to its colour. Colours are
// Windows colour references 0x00BBGGRR, stored in the settings as "&H" followed by hex digits.
#pragma once

#include "Settings.h"

#include <QString>

struct FieldColours {
    qint32 ok = 0x00FF00;         // Color_OK: checks passed (code "0")
    qint32 noCheck = 0xFFFFFF;    // Color_NoCheck: no checks (code "1")
    qint32 syntaxOk = 0xE0FFE0;   // Color_Syntaxok: syntax correct (code "2")
    qint32 fehler = 0xA0A0FF;     // Color_Fehler: faulty (code "3")
    qint32 ausgegraut = 0xC0C0C0; // Color_Ausgegraut: greyed out (code "4")
    qint32 warnung = 0x80FFFF;    // Color_Warnung: warning (code "5")
};

// The colour settings and their default texts, in loading order.
struct ColourSetting {
    Setting setting;
    const char* defaultText;
    qint32 FieldColours::*member;
};
inline constexpr ColourSetting colourSettings[] = {
    {Setting::Color_OK, settingDefaultText(Setting::Color_OK), &FieldColours::ok},
    {Setting::Color_NoCheck, settingDefaultText(Setting::Color_NoCheck), &FieldColours::noCheck},
    {Setting::Color_Syntaxok, settingDefaultText(Setting::Color_Syntaxok), &FieldColours::syntaxOk},
    {Setting::Color_Fehler, settingDefaultText(Setting::Color_Fehler), &FieldColours::fehler},
    {Setting::Color_Ausgegraut, settingDefaultText(Setting::Color_Ausgegraut), &FieldColours::ausgegraut},
    {Setting::Color_Warnung, settingDefaultText(Setting::Color_Warnung), &FieldColours::warnung},
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
