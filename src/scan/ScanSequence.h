// SPDX-License-Identifier: Apache-2.0
// The scan button's sequence, without windows: acquire every page into the scan folder, run the
// evaluation program on the folder, empty a local pool and import the evaluation's result. The
// main window and `veridon-cli scan` run the same sequence and differ only in what they show.
#pragma once

#include "Scanner.h"

class WaitView;

// What the caller asks for beyond the stored settings (the command line's options).
struct ScanRequest {
    QString device;     // empty: this workstation's chosen device, else the first present
    QString source;     // "adf", "flatbed" or empty for the stored choice
    int resolution = 0; // dpi; 0 for the stored choice
};

// The caller's part while the sequence runs. Every hook may do nothing.
class ScanObserver {
public:
    virtual ~ScanObserver() = default;
    // Acquisition starts (true) or has ended (false): the scan controls are disabled meanwhile.
    virtual void acquiring(bool on) { (void)on; }
    // A page has been saved as path; pages is the count of this batch so far.
    virtual void pageSaved(int pages, const QString& path) {
        (void)pages;
        (void)path;
    }
    // Called often while data arrives: a window processes its events here (Escape cancels).
    virtual void idle() {}
    // The view shown while the evaluation program runs; nullptr for none.
    virtual WaitView* waitView() { return nullptr; }
};

struct ScanRun {
    bool deviceFound = false;
    int pages = 0;                // pages saved by this run
    ScanEnd end = ScanEnd::Done;  // how the acquisition ended
    bool pagesInFolder = false;   // the scan folder held "*.tif" pages after the acquisition
    bool evaluated = false;       // the evaluation program ran
    bool imported = false;        // a result file was there and its import ran
    int importedRows = -1;        // what the import returned
    qint32 lastRecordBefore = -1; // the highest LfdNr before the import; later ones are this batch
};

// Runs the whole sequence with scanner:
// 1. No device (or it cannot be opened): "Msg_NoTwain", no acquisition; the rest still runs on
//    what lies in the scan folder. Otherwise every page is saved under GetScanFile's name; a fault
//    of the paper or device stops the batch with a message, and the pages saved stay and go on.
// 2. No "*.tif" in Scan_Pfad: the sequence ends here and the pool is untouched.
// 3./4. The evaluation program "zvscan /USER" (from the home, else beside this program) runs and is
//    awaited. When it cannot be started, a message says so and the sequence ends: the pages stay
//    for the next run and the pool is kept.
// 5. A local pool is emptied ("DELETE * FROM zvbWerte"); a shared pool keeps its records.
// 6. When Import_Datei exists it is imported; the caller then takes the next record.
// Failures inside are reported to the operator; the result says how far the sequence came.
ScanRun RunScanSequence(Scanner& scanner, const ScanRequest& request, ScanObserver& observer);

// The emptying step of a scan before its batch is imported: a pool that only this workstation uses
// is emptied completely, whatever states its records are in; a shared pool is never emptied, so
// the batch is added to the records other workstations are working on. Returns the number of
// records deleted. Throws VeridonError when the database fails.
int EmptyPoolForScan();

// The evaluation program's path: "zvscan" in the home when it is there, else beside this program.
QString evaluationProgram();
