// SPDX-License-Identifier: Apache-2.0
// frmMain: the record on screen and what the operator does with it - take and show the next record,
// hand it over (OK), discard it (Verwerfen), and leave the program. The database side of each action
// is the workflow module; this file moves values between the controls and the record in hand.

#include "ExportQueue.h"
#include "FieldNavigator.h"
#include "FieldPalette.h"
#include "ViewerLink.h"
#include "WindowPositions.h"
#include "frmMain.h"

#include "app/mdlDB.h"
#include "app/mdlMessages.h"
#include "model/FormModel.h"
#include "workflow/mdlWorkflow.h"

#include <QApplication>
#include <QCloseEvent>
#include <QGroupBox>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>

void frmMain::takeAndShowNext() {
    current_ = TakeNextRecord();
    if (current_ >= 0)
        showRecord();
    else
        showEmpty();
    lookout_->follow();
}

void frmMain::valuesToControls() {
    ZVBWerteArray& values = WerteArray();
    for (QLineEdit* edit : fields_->fields())
        edit->setText(values.GetValue(edit->objectName()));
    lfdNr_->setText(values.GetValue(QStringLiteral("LfdNr")));
    bmpName_->setText(values.GetValue(QStringLiteral("BMPName")));
    korrigiert_->setText(values.GetValue(QStringLiteral("Korrigiert")));
}

// Writes the controls into the values ("all" fields): the ten fields and the corrected mark.
void frmMain::controlsToValues() {
    if (current_ < 0 || WerteArray().GetCount() == 0)
        return;
    ZVBWerteArray& values = WerteArray();
    for (QLineEdit* edit : fields_->fields())
        values.SetValue(edit->objectName(), edit->text());
    values.SetValue(QStringLiteral("Korrigiert"), korrigiert_->text());
}

void frmMain::updateCaption() {
    const QString detail = current_ < 0 ? QString()
                                        : GetText(QStringLiteral("Caption_frmMainBeleg"),
                                                  QStringLiteral("- Beleg %1 (%2)"), {current_, bmpName_->text()});
    setWindowTitle(GetText(QStringLiteral("Caption_frmMain"), QStringLiteral("Veridon %1"), {detail}));
}

void frmMain::showRecord() {
    datensatz_->setEnabled(true);
    valuesToControls();
    checkAll();
    refreshAfterCheck();
    updateCaption();
    fields_->forgetEnteredField();
    // The stored focus field; a name the form does not have leaves the first field.
    fields_->focusFieldNamed(focusFieldName_);
    viewer_->showPage(current_);
}

void frmMain::showEmpty() {
    for (QLineEdit* edit : fields_->fields()) {
        edit->clear();
        resetFieldBackground(edit);
    }
    lfdNr_->clear();
    bmpName_->clear();
    korrigiert_->clear();
    fields_->forgetEnteredField();
    if (datensatz_->isAncestorOf(focusWidget()))
        buttonBeenden_->setFocus(Qt::OtherFocusReason);
    // Nothing to type into without a record; the actions beep.
    datensatz_->setEnabled(false);
    updateCaption();
    viewer_->close();
}

void frmMain::onOK() {
    if (actionOK())
        takeAndShowNext();
}

void frmMain::onVerwerfen() {
    actionVerwerfen(false);
}

bool frmMain::actionVerwerfen(bool silent) {
    if (current_ < 0) {
        QApplication::beep();
        return false;
    }
    controlsToValues();
    if (!DiscardRecord(current_, silent))
        return false;
    current_ = -1;
    takeAndShowNext();
    return true;
}

void frmMain::actionBeenden() {
    close();
}

// Leaving: the open field is validated, an open record needs a Yes and is then discarded (the
// announced loss), the workstation's records go back to the pool, and the images no record names
// any more leave the image folder. Cancelling the question puts the operator back where he was.
void frmMain::closeEvent(QCloseEvent* event) {
    if (closing_) {
        event->accept();
        return;
    }
    QPointer<QWidget> before = focusWidget();
    buttonBeenden_->setFocus(Qt::OtherFocusReason);
    if (!ConfirmLeave(current_)) {
        event->ignore();
        // Back to the field the operator worked in, also when he reached "Beenden" by mouse.
        QWidget* back = before && fields_->isDataField(before) ? before.data() : fields_->enteredField();
        if (back && back->isEnabled())
            back->setFocus(Qt::OtherFocusReason);
        return;
    }
    closing_ = true;
    lookout_->stop();
    // A hand-over whose export pass has not run yet is exported before leaving.
    exports_->runNow();
    if (current_ >= 0) {
        controlsToValues();
        DiscardRecord(current_, true);
        current_ = -1;
    }
    ReleaseOwnRecords();
    viewer_->savePosition();
    viewer_->close();
    SaveWindowPosition(this);
    // Other windows of the program close with the main window, the last opened first.
    const QWidgetList others = QApplication::topLevelWidgets();
    for (qsizetype i = others.size() - 1; i >= 0; --i)
        if (others[i] != this && others[i]->isVisible())
            others[i]->close();
    DeleteUnreferencedImages();
    event->accept();
}
