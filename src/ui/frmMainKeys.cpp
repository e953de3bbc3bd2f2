// SPDX-License-Identifier: Apache-2.0
// frmMain: the keyboard. The form sees every key before its controls (the filter sits on the
// application and takes only keys meant for this window). A key runs through the key-down table
// first (Insert, Enter, the pad's decimal key, F2, F3, Ctrl+F, Escape, F12) and then, when it types
// a character, through the key-press rules (discarded characters, hot keys from zvbSysKeys,
// overwrite mode). Focus changes of the ten fields are caught here too and passed on to the field
// handlers.

#include "WindowsKeyCodes.h"
#include "frmMain.h"

#include "admin/OperatorStats.h"
#include "app/Database.h"
#include "app/mdlDB.h"
#include "app/mdlMessages.h"

#include <QApplication>
#include <QComboBox>
#include <QFocusEvent>
#include <QGroupBox>
#include <QKeyEvent>
#include <QLineEdit>

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

// Focus arrives or leaves because another window or a menu took the keyboard for a while; that is
// no entering or leaving of the field.
bool isPassingFocus(const QFocusEvent* e) {
    return e->reason() == Qt::ActiveWindowFocusReason || e->reason() == Qt::PopupFocusReason;
}

} // namespace

bool frmMain::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
    case QEvent::KeyPress: {
        auto* widget = qobject_cast<QWidget*>(watched);
        if (!widget || widget->window() != this)
            return false;
        // A key a control did not take travels up to its parents; handle it only once, at the
        // control that has the focus.
        QWidget* focus = QApplication::focusWidget();
        if (widget != (focus && focus->window() == this ? focus : this))
            return false;
        auto* key = static_cast<QKeyEvent*>(event);
        if (!isModifierKey(key->key()))
            noteKeystroke(); // the operator's effort on the record, for the statistics
        return keyDown(key) || keyPress(key);
    }
    case QEvent::FocusIn:
    case QEvent::FocusOut: {
        auto* edit = qobject_cast<QLineEdit*>(watched);
        if (!edit || !isDataField(edit))
            return false;
        // A field focused while the window was not active (the first record at start) is entered
        // when the window becomes active; coming back from another window enters nothing.
        const bool delayedEntry = event->type() == QEvent::FocusIn && edit != enteredField_;
        if (isPassingFocus(static_cast<QFocusEvent*>(event)) && !delayedEntry)
            return false;
        // Let the control take the focus change first, so its own selection on Tab does not undo
        // the cursor placement.
        static_cast<QObject*>(edit)->event(event);
        if (event->type() == QEvent::FocusIn)
            fieldEntered(edit);
        else
            fieldLeft(edit);
        return true;
    }
    default:
        return false;
    }
}

void frmMain::sendKey(int key, Qt::KeyboardModifiers modifiers) {
    QWidget* target = QApplication::focusWidget();
    if (!target || target->window() != this)
        target = this;
    QKeyEvent press(QEvent::KeyPress, key, modifiers);
    QCoreApplication::sendEvent(target, &press);
    QKeyEvent release(QEvent::KeyRelease, key, modifiers);
    QCoreApplication::sendEvent(target, &release);
}

// The key-down table. True when the key was handled and goes no further.
bool frmMain::keyDown(QKeyEvent* key) {
    lastKeyCode_ = windowsKeyCode(key);
    QWidget* active = QApplication::focusWidget();
    if (active && active->window() != this)
        active = nullptr;
    const Qt::KeyboardModifiers mods = key->modifiers();
    const bool pad = mods.testFlag(Qt::KeypadModifier);
    switch (key->key()) {
    case Qt::Key_Insert:
        overwrite_ = !overwrite_;
        return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (active && GetSysFlag(QStringLiteral("Key_EnterLikeTab"), false)) {
            focusNextChild();
            return true;
        }
        return false;
    case Qt::Key_Comma:
    case Qt::Key_Period:
        if (pad && active && GetSysFlag(QStringLiteral("Key_NUMKommaGleichEntf"), false)) {
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
        if (active && datensatz_->isAncestorOf(active)) {
            f2Jump(mods.testFlag(Qt::ShiftModifier));
            return true;
        }
        return false;
    case Qt::Key_F:
        if (mods.testFlag(Qt::ControlModifier))
            return handOverToErrorList();
        return false;
    case Qt::Key_Escape:
        if (QLineEdit* edit = isEditControl(active) ? lineEditOf(active) : nullptr) {
            if (edit == enteredField_)
                edit->setText(enteredText_);
            return true;
        }
        return false;
    case Qt::Key_F12:
        mpVollbild_->trigger();
        return true;
    default:
        return false;
    }
}

// A hot key: the setting (Key_F2, Key_F3 or Key_F4) names a row of zvbSysKeys, whose character and
// key code must both match the key typed.
bool frmMain::hotKeyMatches(const char* setting, int typed) const {
    const qint32 keyId = ToLong(GetSysValue(QLatin1String(setting)));
    if (keyId == 0)
        return false;
    QSqlQuery row =
        execSql(QStringLiteral("SELECT KeyAscii, KeyCode FROM zvbSysKeys WHERE KeyID = ") + QString::number(keyId));
    return row.next() && row.value(0).toInt() == typed && row.value(1).toInt() == lastKeyCode_;
}

// The key-press rules for a key that types a character. True when the character is discarded.
bool frmMain::keyPress(QKeyEvent* key) {
    const int typed = typedCharacter(key);
    if (typed == 0)
        return false;
    bool hot = false;
    const bool ran = RunReported(QStringLiteral("frmMain.Form_KeyPress"), [&] {
        static const struct {
            const char* setting;
            int key;
        } hotKeys[] = {{"Key_F2", Qt::Key_F2}, {"Key_F3", Qt::Key_F3}, {"Key_F4", Qt::Key_F4}};
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
    if (overwrite_ && typed >= 32)
        if (auto* edit = qobject_cast<QLineEdit*>(QApplication::focusWidget()); edit && !edit->hasSelectedText())
            edit->setSelection(edit->cursorPosition(), 1);
    return false;
}
