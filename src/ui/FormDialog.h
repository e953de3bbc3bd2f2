// SPDX-License-Identifier: Apache-2.0
// What every dialog window of the program does around its own content: it carries its form name as
// objectName, translates itself and takes its stored place when it has been built, and stores its
// place whenever it closes (OK, Cancel, Escape or the window's close button all end in done()).
#pragma once

#include <QDialog>

class FormDialog : public QDialog {
    Q_OBJECT
public:
    // formName becomes the objectName, under which texts and window positions are stored.
    FormDialog(const QString& formName, QWidget* parent);

    // Stores the window position, then closes as QDialog::done does.
    void done(int result) override;

protected:
    // Called by a derived window at the end of building its controls and before it fills in data:
    // translates the captions (TranslateForm) and restores the window position.
    void formLoaded();
};
