// SPDX-License-Identifier: Apache-2.0
// The wait window shown while the evaluation program runs: a line of text, nothing to press. It
// cannot be closed while the program runs and takes the focus back when the operator clicks
// elsewhere, so the main window waits behind it; it closes itself when the program has ended.
#pragma once

#include "FormDialog.h"
#include "scan/WaitShell.h"

class QLabel;

class frmWaitShell : public FormDialog, public WaitView {
    Q_OBJECT
public:
    explicit frmWaitShell(QWidget* owner);

    // Shows the window without blocking, owned by its owner, with text in its label.
    void begin(const QString& text) override;
    // Marks the wait as finished and closes the window.
    void end() override;

    bool running() const { return running_; }

protected:
    void closeEvent(QCloseEvent* event) override;
    void changeEvent(QEvent* event) override;
    void reject() override;

private:
    QLabel* label_;
    bool running_ = false;
};
