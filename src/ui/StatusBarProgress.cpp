// SPDX-License-Identifier: Apache-2.0
#include "StatusBarProgress.h"

#include <QLabel>
#include <QProgressBar>

StatusBarProgress::StatusBarProgress(QLabel* label, QProgressBar* bar) : label_(label), bar_(bar) {
    setAppProgress(this);
}

StatusBarProgress::~StatusBarProgress() {
    if (&appProgress() == this)
        setAppProgress(nullptr);
}

void StatusBarProgress::status(const QString& text) {
    if (!label_)
        return;
    label_->setText(text);
    label_->repaint();
}

void StatusBarProgress::progress(qint64 done, qint64 total) {
    if (!bar_)
        return;
    if (total <= 0) {
        if (bar_->maximum() != 0 || !bar_->isVisible()) {
            bar_->setRange(0, 0);
            bar_->show();
            bar_->repaint();
        }
        shownPercent_ = -1;
        return;
    }
    const int percent = int(qBound(qint64(0), done * 100 / total, qint64(100)));
    if (percent == shownPercent_ && bar_->isVisible())
        return;
    shownPercent_ = percent;
    bar_->setRange(0, 100);
    bar_->setValue(percent);
    bar_->show();
    bar_->repaint();
}

void StatusBarProgress::finished() {
    shownPercent_ = -1;
    if (bar_)
        bar_->hide();
    if (label_)
        label_->clear();
}
