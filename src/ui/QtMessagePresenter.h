// SPDX-License-Identifier: Apache-2.0
// Messages of the windows: every zvMsgBox becomes a modal QMessageBox over the active window, with
// German button texts and the icon and default button of the style word. A busy cursor set for a
// long batch is lifted while the box waits for the operator and put back afterwards.
#pragma once

#include "app/MessagePresenter.h"

class QtMessagePresenter : public MessagePresenter {
public:
    // Installs itself as the program's presenter; the destructor restores the console presenter.
    QtMessagePresenter();
    ~QtMessagePresenter() override;
    QtMessagePresenter(const QtMessagePresenter&) = delete;
    QtMessagePresenter& operator=(const QtMessagePresenter&) = delete;

    // Shows the box and returns the answer code of the button pressed (Cancel/No when the box is
    // closed without a choice and the style has such a button, OK otherwise).
    int show(const QString& prompt, int buttons, const QString& title) override;
};
