// SPDX-License-Identifier: Apache-2.0
// The main window's key rules (see KeyRules.h).

#include "KeyRules.h"

#include "FieldNavigator.h"
#include "ViewerLink.h"
#include "WindowsKeyCodes.h"

#include "admin/OperatorStats.h"
#include "app/Settings.h"
#include "app/mdlDB.h"
#include "app/mdlMessages.h"
#include "workflow/DeskTables.h"

#include <QApplication>
#include <QComboBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMainWindow>
#include <QPushButton>
#include <QStatusBar>

namespace {

bool isEditControl(const QWidget* w) {
    if (qobject_cast<const QLineEdit*>(w))
        return true;
    const auto* combo = qobject_cast<const QComboBox*>(w);
    return combo && combo->isEditable();
}

QLineEdit* lineEditOf(QWidget* w) {
    if (auto* edit = qobject_cast<QLineEdit*>(w))
        return edit;
    if (auto* combo = qobject_cast<QComboBox*>(w))
        return combo->lineEdit();
    return nullptr;
}

// Shift, Ctrl, Alt and their kind only change the next key; they are no keystroke of their own.
bool isModifierKey(int key) {
    return key == Qt::Key_Shift || key == Qt::Key_Control || key == Qt::Key_Alt || key == Qt::Key_AltGr ||
           key == Qt::Key_Meta;
}

// True when key is the key keyName names (a key sequence such as "F10" or "Ctrl+Return"; the
// default when the setting is null, no key when it is empty). The pad's flag does not count, so
// the pad's Enter is Enter.
bool configuredKeyMatches(const QString& keyName, const QKeyEvent* key) {
    const QKeySequence configured = QKeySequence::fromString(keyName, QKeySequence::PortableText);
    if (configured.count() != 1)
        return false;
    const Qt::KeyboardModifiers mods = key->modifiers() & ~Qt::KeypadModifier;
    return configured[0] == QKeyCombination(mods, Qt::Key(key->key()));
}

} // namespace

KeyRules::KeyRules(QMainWindow* window, FieldNavigator& fields, ViewerLink& viewer, DeskActions actions)
    : QObject(window), window_(window), fields_(fields), viewer_(viewer), actions_(std::move(actions)) {
    qApp->installEventFilter(this);
    // A field is noted full as soon as an edit fills it, by typing or by pasting.
    for (QLineEdit* edit : fields_.fields())
        connect(edit, &QLineEdit::textEdited, this, [this, edit] {
            if (edit->text().size() >= edit->maxLength())
                noteFullField(edit);
        });
}

KeyRules::~KeyRules() {
    qApp->removeEventFilter(this);
}

bool KeyRules::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
    case QEvent::KeyPress: {
        auto* widget = qobject_cast<QWidget*>(watched);
        if (!widget || widget->window() != window_)
            return false;
        // A key a control did not take travels up to its parents; handle it only once, at the
        // control that has the focus.
        QWidget* focus = QApplication::focusWidget();
        if (widget != (focus && focus->window() == window_ ? focus : window_))
            return false;
        auto* key = static_cast<QKeyEvent*>(event);
        if (!isModifierKey(key->key()))
            noteKeystroke(); // the operator's effort on the record, for the statistics
        return keyDown(key) || keyPress(key);
    }
    case QEvent::WindowActivate:
        // Qt draws the focus frame only after a Tab and forgets that whenever a window is shown or
        // activated; the operator works by keyboard and must always see where the keys go, in this
        // window and in every dialog and question opened over it.
        if (auto* w = qobject_cast<QWidget*>(watched); w && w->isWindow())
            w->setAttribute(Qt::WA_KeyboardFocusChange);
        return false;
    default:
        return false;
    }
}

void KeyRules::sendKey(int key, Qt::KeyboardModifiers modifiers) {
    QWidget* target = QApplication::focusWidget();
    if (!target || target->window() != window_)
        target = window_;
    QKeyEvent press(QEvent::KeyPress, key, modifiers);
    QCoreApplication::sendEvent(target, &press);
    QKeyEvent release(QEvent::KeyRelease, key, modifiers);
    QCoreApplication::sendEvent(target, &release);
}

// The key-down table. True when the key was handled and goes no further.
bool KeyRules::keyDown(QKeyEvent* key) {
    lastKeyCode_ = windowsKeyCode(key);
    QWidget* active = QApplication::focusWidget();
    if (active && active->window() != window_)
        active = nullptr;
    const Qt::KeyboardModifiers mods = key->modifiers();
    const bool pad = mods.testFlag(Qt::KeypadModifier);
    // The operator's own keys for the two ways a record ends, from wherever the focus is.
    if (configuredKeyMatches(setting<Setting::Key_OK>(), key)) {
        actions_.handOver();
        return true;
    }
    if (configuredKeyMatches(setting<Setting::Key_Verwerfen>(), key)) {
        actions_.discard();
        return true;
    }
    if (viewer_.key(key))
        return true;
    switch (key->key()) {
    case Qt::Key_Insert:
        overwrite_ = !overwrite_;
        return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        // Enter on a button presses it: on "OK / übergeben" it hands the record over.
        if (auto* button = qobject_cast<QPushButton*>(active); button && button->isEnabled()) {
            button->click();
            return true;
        }
        if (active && setting<Setting::Key_EnterLikeTab>()) {
            actions_.nextControl();
            return true;
        }
        return false;
    case Qt::Key_Comma:
    case Qt::Key_Period:
        if (pad && active && setting<Setting::Key_NUMKommaGleichEntf>()) {
            sendKey(Qt::Key_Delete);
            return true;
        }
        return false;
    case Qt::Key_F3:
        if (QLineEdit* edit = isEditControl(active) ? lineEditOf(active) : nullptr) {
            edit->clear();
            return true;
        }
        return false;
    case Qt::Key_F2:
        // From any control of the window: outside the fields the search starts at the first field
        // (backwards: the last).
        actions_.jumpToFaulty(mods.testFlag(Qt::ShiftModifier));
        return true;
    case Qt::Key_F5:
        actions_.lookForRecords();
        return true;
    case Qt::Key_F:
        if (mods.testFlag(Qt::ControlModifier))
            return actions_.focusErrorList();
        return false;
    case Qt::Key_Escape:
        if (QLineEdit* edit = isEditControl(active) ? lineEditOf(active) : nullptr) {
            fields_.restoreEnteredText(edit);
            return true;
        }
        return false;
    case Qt::Key_F12:
        actions_.fullScreen();
        return true;
    default:
        return false;
    }
}

// A hot key: the setting (Key_F2, Key_F3 or Key_F4) names a row of zvbSysKeys, whose character and
// key code must both match the key typed.
bool KeyRules::hotKeyMatches(Setting hotKey, int typed) const {
    const qint32 keyId = readLongSetting(hotKey);
    if (keyId == 0)
        return false;
    const std::optional<StoredHotKey> stored = ReadHotKey(keyId);
    return stored && stored->keyAscii == typed && stored->keyCode == lastKeyCode_;
}

// The key-press rules for a key that types a character. True when the character is discarded.
bool KeyRules::keyPress(QKeyEvent* key) {
    const int typed = typedCharacter(key);
    if (typed == 0)
        return false;
    bool hot = false;
    const bool ran = RunReported(QStringLiteral("frmMain.Form_KeyPress"), [&] {
        static const struct {
            Setting setting;
            int key;
        } hotKeys[] = {{Setting::Key_F2, Qt::Key_F2}, {Setting::Key_F3, Qt::Key_F3}, {Setting::Key_F4, Qt::Key_F4}};
        for (const auto& h : hotKeys)
            if (hotKeyMatches(h.setting, typed)) {
                // The hot key stands for the function key; its character is not typed.
                sendKey(h.key);
                hot = true;
                return;
            }
    });
    if (!ran || hot)
        return true;
    auto* edit = qobject_cast<QLineEdit*>(QApplication::focusWidget());
    if (overwrite_ && typed >= 32 && edit && !edit->hasSelectedText())
        edit->setSelection(edit->cursorPosition(), 1);
    // A character that no longer fits is not taken by the field: say so instead of dropping it.
    if (typed >= 32 && edit && fields_.isDataField(edit) && !edit->hasSelectedText() &&
        edit->text().size() >= edit->maxLength())
        noteFullField(edit);
    return false;
}

// A beep and a note in the status bar: the field holds as many characters as it can take.
void KeyRules::noteFullField(QLineEdit* edit) {
    QApplication::beep();
    window_->statusBar()->showMessage(
        GetText(QStringLiteral("Txt_FieldFull"),
                QString::fromUtf8("Das Feld '%1' ist voll: es nimmt höchstens %2 Zeichen auf."),
                {fields_.caption(edit), edit->maxLength()}),
        8000);
}
