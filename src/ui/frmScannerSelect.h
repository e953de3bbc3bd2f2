// SPDX-License-Identifier: Apache-2.0
// The choice of this workstation's scanner among the devices SANE finds; the choice is kept in the
// workstation's settings and used by every later scan.
#pragma once

#include "FormDialog.h"
#include "scan/Scanner.h"

class QListWidget;

class frmScannerSelect : public FormDialog {
    Q_OBJECT
public:
    // Lists devices, the workstation's current choice selected.
    frmScannerSelect(const QList<ScanDevice>& devices, QWidget* parent);
    // The device selected in the list; empty when none.
    QString selectedDevice() const;

private:
    QListWidget* list_;
    QList<ScanDevice> devices_;
};
