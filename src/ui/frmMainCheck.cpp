// SPDX-License-Identifier: Apache-2.0
// frmMain: the checks on screen and the hand-over. A record is checked as a whole when it is shown
// and before it is handed over, a field when it is left; the fields take the colours of their
// status codes. OK hands a record over only when its checks allow it.

#include "frmMain.h"

#include "app/PoolConnection.h"
#include "app/mdlMessages.h"
#include "check/mdlCheck.h"
#include "frmFehler.h"
#include "model/FormModel.h"
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
        focusFirstFaultyField();
        return false;
    }
    // Without errors, or with warnings the operator accepted: the corrected mark as the values hold
    // it, and nothing left in the error list.
    korrigiert_->setText(WerteArray().GetValue(QStringLiteral("Korrigiert")));
    if (errorList_)
        errorList_->setErrorText(QString());
    refreshAfterCheck();
    const qint32 number = current_;
    current_ = -1;
    const bool done = CompleteHandOver(number);
    if (!done && homeUsesPool()) {
        // The pool's server did not take the save (reported): the record stays on screen, still
        // held by this workstation, and OK saves it once the server answers again.
        current_ = number;
        return false;
    }
    if (!done)
        takeAndShowNext(); // the save failed (reported): the record goes back to the pool and is shown again
    return done;
}
