// SPDX-License-Identifier: Apache-2.0
// Names of scanned pages: unique per workstation and day, so several workstations can share one
// scan folder and pages of a batch that was not evaluated yet are never overwritten.
#pragma once

#include <QString>

// The next free scan file name: Scan_Pfad (with "/"), the day of the year in three digits, the
// workstation's Scan_RechnerId and the daily counter as four upper-case hex digits, then ".tif"
// (e.g. ".../scan/04507001A.tif"). On the first call of a new day of the year the counter starts
// again at 1. Names that exist on disk are skipped; the settings row keeps the counter after the
// name returned. Throws VeridonError (overflow) when the counter would pass 32767; the caller
// reports it.
QString GetScanFile();
