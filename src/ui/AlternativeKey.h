// SPDX-License-Identifier: Apache-2.0
// The operator's key for the reader's candidates (setting Key_Alternative, F6 when unset). On a "?"
// for which the evaluation program had second guesses it puts the first guess in the "?"'s place,
// selected, so Enter takes it and typing replaces it as usual; pressed again it shows the next
// guess, and after the last the "?" again. The status bar names the guesses. F6 is free: the form
// uses F2, F3, F5, F8, F10 and F12, the hot keys of the numeric pad stand for F2 to F4, and the pad
// itself sends no function key.
#pragma once

#include "model/AlternativeCycle.h"

class QKeyEvent;
class QLineEdit;
class QStatusBar;

class AlternativeKey {
public:
    // The candidates of the record on screen (LoadAlternatives); number -1 for the empty form.
    void load(qint64 number);

    // True when key is the configured key for candidates.
    static bool matches(const QKeyEvent* key);

    // The key pressed in edit: the next candidate (or the "?" again) replaces the character at the
    // selection and stays selected, and status names the candidates. False when the selection is on
    // no "?" with candidates; nothing changes then.
    bool apply(QLineEdit* edit, QStatusBar* status) const;

    // Names the candidates in status when edit's selection is on a "?" that has some (the F2 jump
    // lands there); says nothing otherwise.
    void describe(const QLineEdit* edit, QStatusBar* status) const;

private:
    AlternativeCycle cycle_;
};
