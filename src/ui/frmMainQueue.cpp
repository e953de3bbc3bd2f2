// SPDX-License-Identifier: Apache-2.0
// frmMain: the look-out for records. Records arrive while the window is open (a scan at another
// workstation, an import from the command line). An empty form looks for them every few seconds
// and at once on F5 and takes the first that arrives; the status bar always says how many wait,
// and beside that what this workstation has done today.

#include "frmMain.h"

#include "admin/OperatorStats.h"
#include "app/Errors.h"
#include "app/mdlDB.h"
#include "app/mdlMessages.h"

#include <QApplication>
#include <QLabel>
#include <QLocale>
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

// Today's figures of this workstation, after every record; nothing when none are kept (backup off).
void frmMain::showTodaysWork() {
    const qint16 workstation = GetKorrID();
    const QLocale number(GetLanguage().toLower()); // "1,4" under German texts
    for (const OperatorDay& day : readOperatorDays(1))
        if (day.workstation == workstation && day.handedOver + day.discarded > 0) {
            todaysWork_->setText(
                GetText(QStringLiteral("Txt_TodaysWork"),
                        QString::fromUtf8("Heute %1 übergeben, %2 verworfen, %3 Tasten/Beleg, %4 Belege/Std."),
                        {day.handedOver, day.discarded, number.toString(day.keystrokesPerRecord(), 'f', 1),
                         number.toString(day.recordsPerHour(), 'f', 0)}));
            todaysWork_->setToolTip(todaysWork_->text());
            return;
        }
    todaysWork_->clear();
}

void frmMain::lookForRecords() {
    if (closing_ || scanning_)
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
    showTodaysWork();
    if (current_ >= 0) {
        poll_->stop();
        return;
    }
    if (!poll_->isActive())
        poll_->start();
}
