// SPDX-License-Identifier: Apache-2.0
// The report-choice question of the windows: when the settings leave the report type open, the
// operator picks "Ambulant", "Stationär" or "Kein Druck" in a small modal dialog.
#pragma once

#include "FormDialog.h"
#include "print/ReportChoice.h"

class frmAskForReport : public FormDialog {
    Q_OBJECT
public:
    explicit frmAskForReport(QWidget* parent = nullptr);

    // Shows the dialog modally and returns the report type of the button pressed: Ambulant 3,
    // Stationär 2, Kein Druck 0; closing the window in any other way answers 0.
    int DoShow();

private:
    int answer_ = ReportType::None;
};

// The question as the printing asks it: a new dialog over the active window for every question.
class WindowsReportChoice : public ReportChoice {
public:
    // Installs itself as the program's question; the destructor restores the default.
    WindowsReportChoice();
    ~WindowsReportChoice() override;
    WindowsReportChoice(const WindowsReportChoice&) = delete;
    WindowsReportChoice& operator=(const WindowsReportChoice&) = delete;

    int DoShow() override;
};
