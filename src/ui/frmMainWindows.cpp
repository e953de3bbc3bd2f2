// SPDX-License-Identifier: Apache-2.0
// frmMain: the small windows it opens - the error list beside the form, the test copy of the form
// on screen, the options and the about window - and the printing of the record on screen.

#include "FieldPalette.h"
#include "QtTranslations.h"
#include "frmAbout.h"
#include "frmFehler.h"
#include "frmMain.h"
#include "frmOptionen.h"
#include "frmTestNotiz.h"

#include "app/mdlMessages.h"
#include "lang/TranslateForm.h"
#include "print/mdlPrint.h"
#include "workflow/mdlStart.h"

#include <QApplication>
#include <QLineEdit>

// The error list belongs to the form and is shown without activating it: the operator reads it
// while typing on in the field. Ctrl+F hands it the keyboard.
void frmMain::showErrorList(const QString& errorText) {
    if (!errorList_) {
        errorList_ = new frmFehler(this);
        errorList_->setAttribute(Qt::WA_ShowWithoutActivating);
    }
    errorList_->setErrorText(errorText);
    errorList_->show();
    errorList_->raise();
}

bool frmMain::handOverToErrorList() {
    if (!errorList_ || !errorList_->isVisible())
        return false;
    errorList_->takeFocus();
    return true;
}

void frmMain::actionBelegZumTest() {
    if (current_ < 0) {
        QApplication::beep();
        return;
    }
    frmTestNotiz::showFor(this, bmpName_->text());
}

// The options may change the language and the hot keys; the form follows the new language at once.
void frmMain::showOptions() {
    frmOptionen options(this);
    if (options.exec() != QDialog::Accepted)
        return;
    ReloadLanguage();
    LoadQtTranslations(GetLanguage());
    translateWindow();
    updateCaption();
    lookout_->follow();
    // The colours are the one setting kept in memory: take the new ones and show them at once.
    LoadColours();
    colourFields(QStringLiteral("all"));
}

// Printing the record on screen: the corrections so far are printed (they are stored first); a
// record whose fields still fail is refused by the printing with its own message.
void frmMain::actionDrucken() {
    if (current_ < 0) {
        QApplication::beep();
        return;
    }
    controlsToValues();
    PrintCommand(current_);
    refreshAfterCheck();
}

void frmMain::showAbout() {
    frmAbout about(this);
    about.exec();
}
