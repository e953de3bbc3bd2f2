// SPDX-License-Identifier: Apache-2.0
// Import and export report their progress through the Progress seam; in the windows it appears in
// the main window's status bar: the status text in a label, the count in a progress bar that is
// visible only while a batch runs.
#pragma once

#include "app/Progress.h"

#include <QPointer>

class QLabel;
class QProgressBar;

class StatusBarProgress : public Progress {
public:
    // Shows status texts in label and progress in bar (both owned by the status bar). Installs itself
    // as the program's progress sink; the destructor removes it again.
    StatusBarProgress(QLabel* label, QProgressBar* bar);
    ~StatusBarProgress() override;
    StatusBarProgress(const StatusBarProgress&) = delete;
    StatusBarProgress& operator=(const StatusBarProgress&) = delete;

    // Puts text into the label and paints it at once: the batch holds the event loop.
    void status(const QString& text) override;
    // Shows done of total in the bar (a busy bar when total is 0); repaints only when the shown
    // percentage changes, so a batch of thousands of rows is not slowed by painting.
    void progress(qint64 done, qint64 total) override;
    // Hides the bar and clears the text.
    void finished() override;

private:
    QPointer<QLabel> label_;
    QPointer<QProgressBar> bar_;
    int shownPercent_ = -1;
};
