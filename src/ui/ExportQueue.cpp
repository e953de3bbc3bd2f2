// SPDX-License-Identifier: Apache-2.0
// The export pass one turn after a hand-over (see ExportQueue.h).

#include "ExportQueue.h"

#include "export/mdlExport.h"

#include <QTimer>

ExportQueue::ExportQueue(QObject* parent) : QObject(parent), timer_(new QTimer(this)) {
    timer_->setSingleShot(true);
    timer_->setInterval(0);
    connect(timer_, &QTimer::timeout, this, &ExportQueue::runNow);
}

void ExportQueue::queue() {
    const bool armed = queued_ || running_;
    queued_ = true;
    // A timer, not a queued call: the event loop sends the posted events (the next record's
    // painting) before it runs its timers, so the record is on screen before the pass starts.
    if (!armed)
        timer_->start();
}

void ExportQueue::runNow() {
    if (running_)
        return;
    running_ = true;
    while (queued_) {
        queued_ = false;
        ExportZVBWerte();
    }
    running_ = false;
}
