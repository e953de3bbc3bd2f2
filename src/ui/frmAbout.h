// SPDX-License-Identifier: Apache-2.0
// The about window: what the program is, its version, and which home folder and database this
// instance works on (the first thing support asks for).
#pragma once

#include "FormDialog.h"

class frmAbout : public FormDialog {
    Q_OBJECT
public:
    explicit frmAbout(QWidget* parent = nullptr);
};
