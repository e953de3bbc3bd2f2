// SPDX-License-Identifier: Apache-2.0
// The fields of the main window: order, focus, cursor placement and the F2 search (see
// FieldNavigator.h).

#include "FieldNavigator.h"

#include "FieldPalette.h"

#include "app/Settings.h"
#include "app/mdlDB.h"
#include "app/mdlMessages.h"
#include "model/FormModel.h"
#include "workflow/DeskTables.h"
#include "workflow/mdlStart.h"

#include <QFocusEvent>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

namespace {

// Focus arrives or leaves because another window or a menu took the keyboard for a while; that is
// no entering or leaving of the field.
bool isPassingFocus(const QFocusEvent* e) {
    return e->reason() == Qt::ActiveWindowFocusReason || e->reason() == Qt::PopupFocusReason;
}

} // namespace

FieldNavigator::FieldNavigator(QWidget* window, QGroupBox* group, const QStringList& names, QPushButton* okButton)
    : QObject(window), window_(window), group_(group), names_(names), okButton_(okButton) {
    for (QLineEdit* edit : fields())
        edit->installEventFilter(this);
}

QLineEdit* FieldNavigator::field(const QString& name) const {
    return group_->findChild<QLineEdit*>(name, Qt::FindDirectChildrenOnly);
}

QList<QLineEdit*> FieldNavigator::fields() const {
    QList<QLineEdit*> list;
    for (const QString& name : names_)
        if (QLineEdit* edit = field(name))
            list << edit;
    return list;
}

bool FieldNavigator::isDataField(const QWidget* widget) const {
    return widget && widget->parentWidget() == group_ && qobject_cast<const QLineEdit*>(widget);
}

QLineEdit* FieldNavigator::activeField() const {
    QWidget* active = window_->focusWidget();
    return isDataField(active) ? static_cast<QLineEdit*>(active) : nullptr;
}

QString FieldNavigator::caption(const QLineEdit* edit) const {
    const auto* label = group_->findChild<QLabel*>(QStringLiteral("lbl") + edit->objectName());
    return label ? label->text().remove(QLatin1Char('&')).remove(QLatin1Char(':')) : edit->objectName();
}

// The control's place in the window's tab chain, counting only controls that Tab can reach - the
// number the field table stores as ReihenfolgeNr.
int FieldNavigator::tabIndexOf(const QWidget* widget) const {
    int index = 0;
    for (QWidget* w = window_->nextInFocusChain(); w && w != window_; w = w->nextInFocusChain()) {
        if (w == widget)
            return index;
        if (w->focusPolicy() & Qt::TabFocus)
            ++index;
    }
    return -1;
}

void FieldNavigator::storeFieldOrder() {
    QList<FieldPlace> places;
    for (QLineEdit* edit : group_->findChildren<QLineEdit*>(QString(), Qt::FindDirectChildrenOnly))
        places.append({edit->objectName(), tabIndexOf(edit)});
    StoreFieldOrder(places);
}

void FieldNavigator::setFieldLengths() {
    for (QLineEdit* edit : fields()) {
        const qint16 length = FelderArray().GetLaenge(edit->objectName());
        edit->setMaxLength(length > 0 ? length : 32767);
    }
}

bool FieldNavigator::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::FocusIn && event->type() != QEvent::FocusOut)
        return false;
    auto* edit = qobject_cast<QLineEdit*>(watched);
    if (!edit || !isDataField(edit))
        return false;
    // A field focused while the window was not active (the first record at start) is entered when
    // the window becomes active; coming back from another window enters nothing.
    const bool delayedEntry = event->type() == QEvent::FocusIn && edit != enteredField_;
    if (isPassingFocus(static_cast<QFocusEvent*>(event)) && !delayedEntry)
        return false;
    // Let the control take the focus change first, so its own selection on Tab does not undo the
    // cursor placement.
    static_cast<QObject*>(edit)->event(event);
    if (event->type() == QEvent::FocusIn)
        enter(edit);
    else
        emit fieldLeft(edit);
    return true;
}

void FieldNavigator::enter(QLineEdit* edit) {
    enteredField_ = edit;
    enteredText_ = edit->text();
    emit fieldEntered(edit);
    placeCursor(edit);
}

bool FieldNavigator::restoreEnteredText(QLineEdit* edit) {
    if (edit != enteredField_)
        return false;
    edit->setText(enteredText_);
    return true;
}

void FieldNavigator::forgetEnteredField() {
    enteredField_ = nullptr;
    enteredText_.clear();
}

void FieldNavigator::placeCursor(QLineEdit* edit) {
    const QString text = edit->text();
    const bool byF2 = enteredByF2_;
    enteredByF2_ = false;
    if (byF2 && setting<Setting::Cursor_F2>() && text.contains(QLatin1Char('?'))) {
        edit->setSelection(int(text.indexOf(QLatin1Char('?'))), 1);
        return;
    }
    switch (setting<Setting::Cursor_allg>()) {
    case 0:
        edit->setSelection(0, int(text.size()));
        break;
    case 1:
        edit->setCursorPosition(0);
        break;
    case 2:
        edit->setCursorPosition(int(text.size()));
        break;
    default:
        break;
    }
}

void FieldNavigator::focusField(QWidget* widget) {
    if (!widget)
        return;
    if (widget->hasFocus() && isDataField(widget))
        enter(static_cast<QLineEdit*>(widget));
    else
        widget->setFocus(Qt::OtherFocusReason);
}

void FieldNavigator::focusFirstField() {
    for (QLineEdit* edit : fields())
        if (edit->isEnabled()) {
            focusField(edit);
            return;
        }
}

void FieldNavigator::focusFieldNamed(const QString& name) {
    QLineEdit* target = field(name);
    if (target && target->isEnabled())
        focusField(target);
    else
        focusFirstField();
}

void FieldNavigator::focusFirstFaultyField() {
    const QColor errorColour = colourOf(ProgramColours().fehler);
    for (QLineEdit* edit : fields())
        if (edit->isEnabled() && fieldBackground(edit) == errorColour) {
            focusField(edit);
            return;
        }
}

bool FieldNavigator::isFaulty(const QLineEdit* edit, int what, const QColor& errorColour) const {
    const bool questionMark = (what == 0 || what == 2) && edit->text().contains(QLatin1Char('?'));
    const bool errorColoured = (what & 2) && fieldBackground(edit) == errorColour;
    return questionMark || errorColoured;
}

int FieldNavigator::SucheFehlerhaftesFeld(bool backwards) {
    const int active = tabIndexOf(window_->focusWidget());
    return searchFaultyFrom(backwards ? active - 1 : active + 1, backwards);
}

// The search itself, from tab position start (inclusive) in the direction given.
int FieldNavigator::searchFaultyFrom(int start, bool backwards) {
    int result = 0;
    const bool ran = RunReported(QStringLiteral("SucheFehlerhaftesFeld"), [&] {
        const int howFar = setting<Setting::F2_WieWeitSuchen>();
        const int what = setting<Setting::F2_WasSuchen>();
        const QColor errorColour = colourOf(ProgramColours().fehler);
        QWidget* found = nullptr;
        for (const FieldPlace& place : ReadFieldOrder(backwards)) {
            if (backwards ? place.position > start : place.position < start)
                continue;
            QLineEdit* edit = field(place.field);
            if (edit && edit->isEnabled() && edit->isVisibleTo(window_) && isFaulty(edit, what, errorColour)) {
                found = edit;
                break;
            }
        }
        if (found) {
            enteredByF2_ = true;
            focusField(found);
            result = 0;
        } else if (howFar == 0) {
            result = 1;
        } else if (howFar == 2) {
            result = 2;
        } else {
            okButton_->setFocus(Qt::OtherFocusReason);
            result = 0;
        }
    });
    return ran ? result : 0;
}

void FieldNavigator::jump(bool backwards, const std::function<bool()>& handOverAndShowNext) {
    QWidget* from = window_->focusWidget();
    int result = 0;
    if (from && group_->isAncestorOf(from)) {
        result = SucheFehlerhaftesFeld(backwards);
    } else {
        const QList<QLineEdit*> all = fields();
        result = searchFaultyFrom(tabIndexOf(backwards ? all.last() : all.first()), backwards);
        if (result == 0 && !backwards && from == okButton_ && window_->focusWidget() == okButton_)
            result = 1;
    }
    while (result == 1 || result == 2) {
        if (backwards) {
            focusField(from);
            return;
        }
        if (!handOverAndShowNext())
            return;
        enteredByF2_ = true;
        focusFirstField();
        if (result != 2)
            return;
        result = searchFaultyFrom(tabIndexOf(window_->focusWidget()), false);
    }
}
