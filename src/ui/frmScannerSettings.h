// SPDX-License-Identifier: Apache-2.0
// The settings of one scanner, built from what the device offers: source (feeder or flatbed), mode,
// bit depth, resolution and page size. The values the device accepts are kept for that device and
// set again before every scan.
#pragma once

#include "FormDialog.h"
#include "scan/Scanner.h"

class frmScannerSettings : public FormDialog {
    Q_OBJECT
public:
    // scanner has device open; the controls show its current values.
    frmScannerSettings(Scanner& scanner, const QString& device, QWidget* parent);

    // Sets the chosen values on the device and keeps those it accepted; the refusals are returned.
    QStringList apply();

private:
    Scanner& scanner_;
    QString device_;
    QList<ScanOption> options_;
};
