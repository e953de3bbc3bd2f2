// SPDX-License-Identifier: Apache-2.0
// Painting one report page on a Qt printer (a real printer or a PDF file): the bitmap template in
// the printable area, the values in bold at their millimetre positions. Shared by both back ends.
#pragma once

#include "ReportPrinter.h"

class QPrinter;

// Paints page as one job on printer, which is set up (device, resolution, paper) but not started.
// The orientation follows the bitmap: landscape when it is wider than high. The bitmap is scaled to
// the largest size with its own proportions that fits the printable area, at its top-left corner;
// each text's top-left corner goes to its position in millimetres from that corner, converted to
// device units (the painter itself is never scaled, so the font keeps its 12 points). Returns false
// and sets error when the bitmap cannot be read or the job cannot be started.
bool paintReportPage(QPrinter& printer, const ReportPage& page, QString& error);
