// SPDX-License-Identifier: Apache-2.0
// The main window's keyboard. Every key meant for the window reaches these rules before the
// control with the focus (an event filter on the application that lets keys of other windows
// pass). A key runs through the key-down table first - the operator's keys for hand-over and
// discard (Key_OK, Key_Verwerfen), the viewer's zoom and scroll keys, Insert, Enter (on a button it
// presses it, so Enter on "OK / übergeben" hands the record over), the pad's decimal key, F2, F3,
// F5, Ctrl+F, Escape and F12 - and then, when it types a character, through the key-press rules:
// the hot keys of zvbSysKeys that stand for F2 to F4 (character and key code must both match, so the
// pad's "+" can be a hot key while the other "+" types), overwrite mode, and the beep with a note
// when a field is full.
#pragma once

#include <QObject>
#include <functional>

enum class Setting;
class FieldNavigator;
class QKeyEvent;
class QLineEdit;
class QMainWindow;
class ViewerLink;

// What the keys do beyond the controls: the window's actions they stand for.
struct DeskActions {
    std::function<void()> handOver;         // the hand-over key: OK, then the next record
    std::function<void()> discard;          // the discard key
    std::function<void(bool)> jumpToFaulty; // F2, Shift+F2 (true: backwards)
    std::function<void()> lookForRecords;   // F5
    std::function<bool()> focusErrorList;   // Ctrl+F; false when no error list is shown
    std::function<void()> fullScreen;       // F12
    std::function<void()> nextControl;      // Enter like Tab (Key_EnterLikeTab)
};

class KeyRules : public QObject {
    Q_OBJECT

public:
    // Watches the keys of window (from the application) and the typing in its fields.
    KeyRules(QMainWindow* window, FieldNavigator& fields, ViewerLink& viewer, DeskActions actions);
    ~KeyRules() override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool keyDown(QKeyEvent* key);
    bool keyPress(QKeyEvent* key);
    bool hotKeyMatches(Setting hotKey, int typed) const;
    void noteFullField(QLineEdit* edit);
    void sendKey(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);

    QMainWindow* window_;
    FieldNavigator& fields_;
    ViewerLink& viewer_;
    DeskActions actions_;
    bool overwrite_ = false;
    int lastKeyCode_ = 0; // the key code of the last key down, for the hot keys
};
