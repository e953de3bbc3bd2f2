// SPDX-License-Identifier: Apache-2.0
// Scanned pages as TIFF files, the way the evaluation program and the image viewer read them:
// bitonal pages CCITT group 4 (about 50 KB for an A4 page at 200 dpi), grey and colour pages LZW,
// every page with its resolution.
#pragma once

#include "Scanner.h"

// Writes page to path. The file appears complete or not at all: it is written under a temporary
// name and renamed. False, with the reason in error, when it cannot be written (folder missing,
// disk full); nothing is left behind then.
bool writeScanPage(const QString& path, const ScanPage& page, QString& error);
