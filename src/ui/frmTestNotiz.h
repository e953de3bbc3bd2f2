// SPDX-License-Identifier: Apache-2.0
// "Beleg zum Test": the dialog in which the operator puts the form on screen aside for the people
// who tune the evaluation. It shows the record's image name (filled in by the main window) and takes
// a note; OK copies the image and the note into the test folder, Cancel closes without a trace.
#pragma once

#include "FormDialog.h"

class QLineEdit;
class QPlainTextEdit;

class frmTestNotiz : public FormDialog {
    Q_OBJECT
public:
    explicit frmTestNotiz(QWidget* parent = nullptr);

    // Puts imageName (the record's BMPName) into the image-name box.
    void setImageName(const QString& imageName);
    QString imageName() const;
    void setNote(const QString& note);
    QString note() const;

    // Opens the dialog modally for imageName; returns once the operator has pressed OK or Cancel.
    // The result is what BelegZumTest reported, as QDialog::Accepted when the copy was made.
    static int showFor(QWidget* parent, const QString& imageName);

public slots:
    // Copies image and note into the test folder (messages as BelegZumTest shows them) and closes
    // the dialog, whatever the outcome: the operator has read the message by then.
    void accept() override;

private:
    QLineEdit* image_;
    QPlainTextEdit* note_;
};
