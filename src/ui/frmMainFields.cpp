// SPDX-License-Identifier: Apache-2.0
// frmMain: the ten data fields. The field table ZVBForm_Felder (rebuilt at every start from the
// window's tab order, so a changed order needs no migration), field lengths from the definitions,
// what happens when a field is entered (remember its text, show its image region, place the cursor)
// and left (copy, check, colour), the colours from the status string, and the F2 search for the
// next faulty field.

#include "FieldPalette.h"
#include "frmMain.h"

#include "app/Database.h"
#include "app/PoolConnection.h"
#include "app/mdlDB.h"
#include "app/mdlMessages.h"
#include "check/mdlCheck.h"
#include "model/FormModel.h"
#include "workflow/mdlStart.h"

#include <QApplication>
#include <QGroupBox>
#include <QLineEdit>
#include <QPushButton>

namespace {
bool f2Flag = false;
} // namespace

bool enteredByF2() {
    return f2Flag;
}

void setEnteredByF2(bool on) {
    f2Flag = on;
}

QLineEdit* frmMain::field(const QString& name) const {
    return datensatz_->findChild<QLineEdit*>(name, Qt::FindDirectChildrenOnly);
}

QList<QLineEdit*> frmMain::fields() const {
    QList<QLineEdit*> list;
    for (const QString& name : fieldNames())
        if (QLineEdit* edit = field(name))
            list << edit;
    return list;
}

bool frmMain::isDataField(const QWidget* widget) const {
    return widget && widget->parentWidget() == datensatz_ && qobject_cast<const QLineEdit*>(widget);
}

// The control's place in the window's tab chain, counting only controls that Tab can reach - the
// number the field table stores as ReihenfolgeNr.
int frmMain::tabIndexOf(const QWidget* widget) const {
    int index = 0;
    for (QWidget* w = nextInFocusChain(); w && w != this; w = w->nextInFocusChain()) {
        if (w == widget)
            return index;
        if (w->focusPolicy() & Qt::TabFocus)
            ++index;
    }
    return -1;
}

void frmMain::buildFieldTable() {
    // On a shared pool the table is the pool's: workstations starting together rebuild it in turn,
    // so it never holds a field twice.
    const PoolLock oneAtATime(PoolLockKey::FormFields);
    Transaction batch;
    execSql(QStringLiteral("DELETE * FROM ZVBForm_Felder"));
    for (QLineEdit* edit : datensatz_->findChildren<QLineEdit*>(QString(), Qt::FindDirectChildrenOnly))
        execSql(QStringLiteral("INSERT INTO ZVBForm_Felder (FeldNr, ReihenfolgeNr) VALUES (?, ?)"),
                {edit->objectName(), tabIndexOf(edit)});
    batch.commit();
}

void frmMain::setFieldLengths() {
    for (QLineEdit* edit : fields()) {
        const qint16 length = FelderArray().GetLaenge(edit->objectName());
        edit->setMaxLength(length > 0 ? length : 32767);
    }
}

// Colours one field (which = its name) or, with "all", every enabled field by the field's code in
// the record's status string Fehlerhaft, at the field's position (GetSatznummer, 1-based).
void frmMain::colourFields(const QString& which) {
    if (current_ < 0 || WerteArray().GetCount() == 0)
        return;
    const QString status = WerteArray().GetValue(QStringLiteral("Fehlerhaft"));
    const bool all = which.compare(QLatin1String("all"), Qt::CaseInsensitive) == 0;
    for (QLineEdit* edit : fields()) {
        if (all ? !edit->isEnabled() : edit->objectName().compare(which, Qt::CaseInsensitive) != 0)
            continue;
        setFieldBackground(edit, colourForStatus(statusCodeOf(status, edit->objectName()), ProgramColours()));
    }
}

void frmMain::placeCursor(QLineEdit* edit) {
    const QString text = edit->text();
    const bool byF2 = enteredByF2();
    setEnteredByF2(false);
    if (byF2 && GetSysFlag(QStringLiteral("Cursor_F2"), false) && text.contains(QLatin1Char('?'))) {
        edit->setSelection(int(text.indexOf(QLatin1Char('?'))), 1);
        return;
    }
    switch (ToInteger(GetSysValue(QStringLiteral("Cursor_Allg")))) {
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

void frmMain::fieldEntered(QLineEdit* edit) {
    enteredField_ = edit;
    enteredText_ = edit->text();
    showFieldImage();
    placeCursor(edit);
}

// Validation of a field being left: its text goes into the values, its check runs and the field
// takes the colour of its new status.
void frmMain::fieldLeft(QLineEdit* edit) {
    if (current_ < 0 || WerteArray().GetCount() == 0)
        return;
    RunReported(QStringLiteral("frmMain.Field_Validate"), [&] {
        WerteArray().SetValue(edit->objectName(), edit->text());
        checkField(edit->objectName());
        // A date the check brought into its full form shows as it will be stored.
        const QString stored = WerteArray().GetValue(edit->objectName());
        if (stored != edit->text())
            edit->setText(stored);
        colourFields(edit->objectName());
    });
}

// Focuses widget; a widget that has the focus already is entered again, so the cursor placement
// and the image follow a new record even when the focus stays in the same field.
void frmMain::focusField(QWidget* widget) {
    if (!widget)
        return;
    if (widget->hasFocus() && isDataField(widget))
        fieldEntered(static_cast<QLineEdit*>(widget));
    else
        widget->setFocus(Qt::OtherFocusReason);
}

void frmMain::focusFirstField() {
    for (QLineEdit* edit : fields())
        if (edit->isEnabled()) {
            focusField(edit);
            return;
        }
}

int frmMain::SucheFehlerhaftesFeld(bool backwards) {
    const int active = tabIndexOf(focusWidget());
    return searchFaultyFrom(backwards ? active - 1 : active + 1, backwards);
}

// The search itself, from tab position start (inclusive) in the direction given.
int frmMain::searchFaultyFrom(int start, bool backwards) {
    int result = 0;
    const bool ran = RunReported(QStringLiteral("SucheFehlerhaftesFeld"), [&] {
        const int howFar = ToInteger(GetSysValue(QStringLiteral("F2_WieWeitSuchen")));
        const int what = ToInteger(GetSysValue(QStringLiteral("F2_WasSuchen")));
        const QColor errorColour = colourOf(ProgramColours().fehler);
        QWidget* found = nullptr;
        {
            QSqlQuery rows =
                execSql(backwards ? QStringLiteral("SELECT * FROM ZVBForm_Felder ORDER BY ReihenfolgeNr DESC;")
                                  : QStringLiteral("SELECT * FROM ZVBForm_Felder ORDER BY ReihenfolgeNr;"));
            while (!found && rows.next()) {
                const int position = rows.value(QStringLiteral("ReihenfolgeNr")).toInt();
                if (backwards ? position > start : position < start)
                    continue;
                QLineEdit* edit = field(rows.value(QStringLiteral("FeldNr")).toString());
                if (!edit || !edit->isEnabled() || !edit->isVisibleTo(this))
                    continue;
                // F2_WasSuchen: 0 and 2 look for "?", 2 and 3 for the error colour; 1 finds nothing.
                const bool questionMark = (what == 0 || what == 2) && edit->text().contains(QLatin1Char('?'));
                const bool errorColoured = (what & 2) && fieldBackground(edit) == errorColour;
                if (questionMark || errorColoured)
                    found = edit;
            }
        }
        if (found) {
            setEnteredByF2(true);
            focusField(found);
            result = 0;
        } else if (howFar == 0) {
            result = 1;
        } else if (howFar == 2) {
            result = 2;
        } else {
            buttonOK_->setFocus(Qt::OtherFocusReason);
            result = 0;
        }
    });
    return ran ? result : 0;
}

// F2 (Shift+F2 backwards): jump to the next faulty field. With none left the record may be handed
// over; after a hand-over with F2_WieWeitSuchen 2 the search goes on in the next record from its
// first field, so the operator walks through a whole batch with F2 alone.
void frmMain::f2Jump(bool backwards) {
    QWidget* from = focusWidget();
    int result = SucheFehlerhaftesFeld(backwards);
    while (result == 1 || result == 2) {
        if (backwards) {
            focusField(from);
            return;
        }
        if (!actionOK())
            return;
        buttonOK_->setFocus(Qt::OtherFocusReason);
        takeAndShowNext();
        if (current_ < 0)
            return;
        setEnteredByF2(true);
        focusFirstField();
        if (result != 2)
            return;
        result = searchFaultyFrom(tabIndexOf(focusWidget()), false);
    }
}
