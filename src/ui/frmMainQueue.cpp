// frmMain: the look-out for records. Records arrive while the window is open (a scan at another
// workstation, an import from the command line). An empty form looks for them every few seconds
// and at once on F5 and takes the first that arrives; the status bar always says how many wait.

#include "frmMain.h"

#include "app/Errors.h"
#include "app/mdlDB.h"
#include "app/mdlMessages.h"

#include <QApplication>
#include <QLabel>
#include <QTimer>

namespace {

// Records waiting for correction; -1 when the pool cannot be read (the look-out runs every few
// seconds, so a failure is not shown as a message each time: the next look tries again).
int waitingRecords() {
    try {
        return CountRows(QStringLiteral("LfdNr"), GetValuesTable(), QStringLiteral("Workflow_Status=10"));
    } catch (const VeridonError&) {
        return -1;
    }
}

} // namespace

void frmMain::showWaitingCount(int waiting) {
    if (waiting < 0) {
        waitingText_->clear();
        return;
    }
    waitingText_->setText(
        waiting == 0 ? GetText(QStringLiteral("Txt_NoneWaiting"), QStringLiteral("Kein Beleg wartet"))
                     : GetText(QStringLiteral("Txt_Waiting"), QStringLiteral("Wartende Belege: %1"), {waiting}));
}

void frmMain::lookForRecords() {
    if (closing_)
        return;
    const int waiting = waitingRecords();
    if (current_ < 0 && waiting > 0)
        takeAndShowNext(); // shows the count left after the take
    else
        showWaitingCount(waiting);
}

// After every take: the count, and the look-out runs exactly while the form is empty. A dialog open
// over the window (options, a question) holds it back; the next tick after it closes looks again.
void frmMain::followQueue() {
    showWaitingCount(waitingRecords());
    if (current_ >= 0) {
        poll_->stop();
        return;
    }
    if (!poll_->isActive())
        poll_->start();
}
