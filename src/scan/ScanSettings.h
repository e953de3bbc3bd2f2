// SPDX-License-Identifier: Apache-2.0
// What the workstation remembers about its scanner: which device it uses (the settings row of this
// workstation) and, per device, the options the operator chose in the device settings dialog.
#pragma once

#include "Scanner.h"

#include <QList>
#include <QPair>

// The device chosen for this workstation (Scan_Geraet); empty when none was chosen.
QString chosenScanDevice();
// Keeps device as this workstation's choice.
void chooseScanDevice(const QString& device);
// The device to scan with: the chosen one when it is present, else the first one found; empty when
// there is none.
QString scanDeviceToUse(const QList<ScanDevice>& present);

// The options stored for device, as name and value, in the order they were stored.
QList<QPair<QString, QString>> storedScanOptions(const QString& device);
// Replaces the stored options of device.
void storeScanOptions(const QString& device, const QList<QPair<QString, QString>>& options);

// Prepares an open device for a batch of forms: the feeder when it has one, bitonal, 200 dpi and
// A4 as far as the device offers them; then the options stored for it, which win. An option the
// device refuses is left as the device has it. Returns the refusals for the log.
QStringList applyScanDefaults(Scanner& scanner, const QString& device);
