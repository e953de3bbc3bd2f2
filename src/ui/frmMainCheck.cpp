// SPDX-License-Identifier: Apache-2.0
// frmMain: the checks on screen and the hand-over. A record is checked as a whole when it is shown
// and before it is handed over, a field when it is left; the fields take the colours of their
// status codes. OK hands a record over only when its checks allow it, and the export pass follows
// the hand-over one turn of the event loop later.

#include "ExportQueue.h"
#include "FieldNavigator.h"
#include "FieldPalette.h"
#include "frmMain.h"

#include "app/PoolConnection.h"
#include "app/mdlDB.h"
#include "app/mdlMessages.h"
#include "check/mdlCheck.h"
#include "frmFehler.h"
#include "model/FormModel.h"
#include "workflow/mdlStart.h"
#include "workflow/mdlWorkflow.h"

#include <QApplication>
#include <QLineEdit>

void frmMain::checkAll() {
    QString errorText;
    Check(QStringLiteral("all"), errorText);
}

void frmMain::checkField(const QString& name) {
    QString errorText;
    Check(name, errorText);
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

// Colours one field (which = its name) or, with "all", every enabled field by the field's code in
// the record's status string Fehlerhaft, at the field's position (GetSatznummer, 1-based).
void frmMain::colourFields(const QString& which) {
    if (current_ < 0 || WerteArray().GetCount() == 0)
        return;
    const QString status = WerteArray().GetValue(QStringLiteral("Fehlerhaft"));
    const bool all = which.compare(QLatin1String("all"), Qt::CaseInsensitive) == 0;
    for (QLineEdit* edit : fields_->fields()) {
        if (all ? !edit->isEnabled() : edit->objectName().compare(which, Qt::CaseInsensitive) != 0)
            continue;
        setFieldBackground(edit, colourForStatus(statusCodeOf(status, edit->objectName()), ProgramColours()));
    }
}

// The display after a check: the corrected mark from the values and the fields' colours.
void frmMain::refreshAfterCheck() {
    if (current_ < 0 || WerteArray().GetCount() == 0)
        return;
    korrigiert_->setText(WerteArray().GetValue(QStringLiteral("Korrigiert")));
    colourFields(QStringLiteral("all"));
}

bool frmMain::actionOK() {
    if (current_ < 0) {
        QApplication::beep();
        return false;
    }
    controlsToValues();
    QString errorText;
    bool clean = false;
    RunReported(QStringLiteral("actionOK"),
                [&] { clean = DecideHandOver(errorText, [this](const QString& text) { showErrorList(text); }); });
    if (!clean) {
        QApplication::beep();
        showErrorList(errorText);
        korrigiert_->setText(QStringLiteral("0"));
        refreshAfterCheck();
        fields_->focusFirstFaultyField();
        return false;
    }
    // Without errors, or with warnings the operator accepted: the corrected mark as the values hold
    // it, and nothing left in the error list.
    korrigiert_->setText(WerteArray().GetValue(QStringLiteral("Korrigiert")));
    // The list belongs to this record: it goes with it instead of covering the next one's fields.
    if (errorList_) {
        errorList_->setErrorText(QString());
        errorList_->close();
    }
    refreshAfterCheck();
    const qint32 number = current_;
    current_ = -1;
    // The save is what makes the hand-over durable; the export pass follows one turn of the event
    // loop later, so the next record is on screen without waiting for the export's syncs. Should
    // the program end before that turn, the record waits in state 40 for the next pass.
    const bool done = SaveHandOver(number);
    if (done)
        exports_->queue();
    if (!done && homeUsesPool() && StillHoldsRecord(number)) {
        // The pool's server did not take the save (reported): the record stays on screen, still
        // held by this workstation, and OK saves it once the server answers again. A record another
        // workstation took meanwhile (reported as well) is not this one's to keep on screen.
        current_ = number;
        return false;
    }
    if (!done)
        takeAndShowNext(); // the save failed (reported): the record goes back to the pool and is shown again
    return done;
}
