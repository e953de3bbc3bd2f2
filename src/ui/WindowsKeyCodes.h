// SPDX-License-Identifier: Apache-2.0
// Hot keys are stored in zvbSysKeys as a character code (KeyAscii) and a key code (KeyCode) in the
// numbering of the Windows virtual keys, so a stored "+ (Ziffernblock)" is 43 and 107. This maps Qt's
// key events onto those numbers.
#pragma once

class QKeyEvent;

// The virtual key code of the key pressed: letters 65-90, digits 48-57, numeric pad digits 96-105,
// pad "*" 106, "+" 107, "-" 109, decimal 110, "/" 111, F1-F24 112-135, and the editing and cursor
// keys. 0 for a key without a code here.
int windowsKeyCode(const QKeyEvent* event);

// The character code of the key typed (its text's first character), 0 when it types nothing.
int typedCharacter(const QKeyEvent* event);
