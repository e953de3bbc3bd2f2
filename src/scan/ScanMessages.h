// SPDX-License-Identifier: Apache-2.0
// The scan sequence's own messages to the operator, German by default and translatable through
// sysTexts like every other message. "%1" is the number of pages saved before the fault.
#pragma once

#include "app/MessageIds.h"

namespace ScanMsg {
// clang-format off
inline constexpr MessageText Jammed{"Msg_ScanJammed", "Papierstau im Scanner!\\nDie %1 Seite(n) vor dem Stau sind gespeichert und werden ausgewertet.\\nBitte den Stau beheben und die übrigen Belege erneut scannen."};
inline constexpr MessageText CoverOpen{"Msg_ScanCoverOpen", "Die Abdeckung des Scanners ist offen!\\nDie %1 bereits gescannte(n) Seite(n) sind gespeichert und werden ausgewertet.\\nBitte die Abdeckung schließen und die übrigen Belege erneut scannen."};
inline constexpr MessageText FeederEmpty{"Msg_ScanFeederEmpty", "Im Einzug des Scanners liegen keine Belege.\\nBitte die Belege einlegen und erneut scannen."};
inline constexpr MessageText DeviceGone{"Msg_ScanDeviceGone", "Der Scanner antwortet nicht mehr (Kabel oder Strom?).\\nDie %1 bereits gescannte(n) Seite(n) sind gespeichert und werden ausgewertet.\\nBitte den Scanner prüfen und die übrigen Belege erneut scannen."};
inline constexpr MessageText Failed{"Msg_ScanFailed", "Das Scannen wurde vom Gerät abgebrochen.\\nDie %1 bereits gescannte(n) Seite(n) sind gespeichert und werden ausgewertet."};
inline constexpr MessageText NoEvaluation{"Msg_ScanNoEvaluation", "Das Auswertungsprogramm '%1' konnte nicht gestartet werden.\\nDie gescannten Seiten bleiben im Scanordner und die wartenden Belege bleiben erhalten."};
inline constexpr MessageText PagesScanned{"Txt_ScanPages", "Gescannte Seiten: %1"};
inline constexpr MessageText Cancelled{"Txt_ScanCancelled", "Scannen abgebrochen, %1 Seite(n) gespeichert"};
// clang-format on
} // namespace ScanMsg
