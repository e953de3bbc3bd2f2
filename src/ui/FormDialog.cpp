// SPDX-License-Identifier: Apache-2.0
#include "FormDialog.h"

#include "WindowPositions.h"
#include "lang/TranslateForm.h"

FormDialog::FormDialog(const QString& formName, QWidget* parent) : QDialog(parent) {
    setObjectName(formName);
}

void FormDialog::done(int result) {
    SaveWindowPosition(this);
    QDialog::done(result);
}

void FormDialog::formLoaded() {
    TranslateForm(this);
    RestoreWindowPosition(this);
}
