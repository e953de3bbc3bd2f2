// SPDX-License-Identifier: Apache-2.0
// The look-out for records of the main window (see RecordLookout.h).

#include "RecordLookout.h"

#include "admin/OperatorStats.h"
#include "app/Errors.h"
#include "app/mdlDB.h"
#include "app/mdlMessages.h"
#include "workflow/DeskTables.h"

#include <QApplication>
#include <QLabel>
#include <QLocale>
#include <QTimer>

namespace {

// Records waiting for correction; -1 when the pool cannot be read (the look-out runs every few
// seconds, so a failure is not shown as a message each time: the next look tries again).
int waitingRecords() {
    try {
        return WaitingRecordCount();
    } catch (const VeridonError&) {
        return -1;
    }
}

} // namespace

RecordLookout::RecordLookout(QObject* parent, QLabel* waiting, QLabel* today, std::function<bool()> hasRecord,
                             std::function<void()> takeNext)
    : QObject(parent), waiting_(waiting), today_(today), hasRecord_(std::move(hasRecord)),
      takeNext_(std::move(takeNext)), poll_(new QTimer(this)) {
    poll_->setInterval(pollIntervalMs);
    connect(poll_, &QTimer::timeout, this, [this] {
        if (!hasRecord_() && !QApplication::activeModalWidget())
            lookNow();
    });
}

void RecordLookout::showWaitingCount(int waiting) {
    if (waiting < 0) {
        waiting_->clear();
        return;
    }
    waiting_->setText(waiting == 0
                          ? GetText(QStringLiteral("Txt_NoneWaiting"), QStringLiteral("Kein Beleg wartet"))
                          : GetText(QStringLiteral("Txt_Waiting"), QStringLiteral("Wartende Belege: %1"), {waiting}));
}

// Today's figures of this workstation, after every record; nothing when none are kept (backup off).
void RecordLookout::showTodaysWork() {
    const qint16 workstation = GetKorrID();
    const QLocale number(GetLanguage().toLower()); // "1,4" under German texts
    for (const OperatorDay& day : readOperatorDays(1))
        if (day.workstation == workstation && day.handedOver + day.discarded > 0) {
            today_->setText(
                GetText(QStringLiteral("Txt_TodaysWork"),
                        QString::fromUtf8("Heute %1 übergeben, %2 verworfen, %3 Tasten/Beleg, %4 Belege/Std."),
                        {day.handedOver, day.discarded, number.toString(day.keystrokesPerRecord(), 'f', 1),
                         number.toString(day.recordsPerHour(), 'f', 0)}));
            today_->setToolTip(today_->text());
            return;
        }
    today_->clear();
}

void RecordLookout::lookNow() {
    if (stopped_)
        return;
    const int waiting = waitingRecords();
    if (!hasRecord_() && waiting > 0)
        takeNext_(); // shows the count left after the take
    else
        showWaitingCount(waiting);
}

void RecordLookout::follow() {
    showWaitingCount(waitingRecords());
    showTodaysWork();
    if (hasRecord_()) {
        poll_->stop();
        return;
    }
    if (!poll_->isActive())
        poll_->start();
}

void RecordLookout::stop() {
    stopped_ = true;
    poll_->stop();
}
