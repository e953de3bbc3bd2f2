// SPDX-License-Identifier: Apache-2.0
// Page writing in a build without libtiff: never called, since that build has no scanner devices.
#include "ScanPageWriter.h"

bool writeScanPage(const QString& path, const ScanPage&, QString& error) {
    error = QStringLiteral("Die Seite '%1' kann ohne TIFF-Unterstützung nicht gespeichert werden.").arg(path);
    return false;
}
