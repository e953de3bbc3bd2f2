// SPDX-License-Identifier: Apache-2.0
// The error list: one read-only text box with the error and warning texts the checks collected for
// the record on screen. The main window shows it without blocking when a hand-over fails or asks,
// and hands it the focus with Ctrl+F.
#pragma once

#include "FormDialog.h"

class QPlainTextEdit;

class frmFehler : public FormDialog {
    Q_OBJECT
public:
    // A modeless window; with a parent (the main window) it stays above its owner.
    explicit frmFehler(QWidget* parent = nullptr);

    // Shows text (line breaks CR LF or LF) in the text box, replacing what was there; the empty text
    // empties the list.
    void setErrorText(const QString& text);
    // The text shown, line breaks as LF.
    QString errorText() const;

    // Brings the list to the front and puts the focus into its text box, so the operator can scroll
    // and copy with the keyboard.
    void takeFocus();

private:
    QPlainTextEdit* text_;
};
