// SPDX-License-Identifier: Apache-2.0
// frmMain: where the window and the viewer stand. On the first start (no stored place) the window
// takes the left part of the screen's work area, wide enough for every value, and the viewer the
// rest beside it, so neither covers the other at 1280 x 800 already. Afterwards both come back where
// the operator left them; the viewer's place is stored under its own name like every window's
// (ViewerLink).

#include "ViewerLink.h"
#include "WindowPositions.h"
#include "frmMain.h"

#include <QShowEvent>
#include <QTimer>

void frmMain::tileFirstStart() {
    const QRect area = workAreaOf(this);
    const QMargins frame = frameMarginsOf(this);
    // 45 % of the width leaves the larger part to the page; never narrower than the values need.
    const int width =
        qMax(minimumSizeHint().width() + frame.left() + frame.right(), qMin(area.width() * 45 / 100, 820));
    move(area.topLeft());
    resize(QSize(width, area.height()).shrunkBy(frame));
    viewer_->tileBesideWindow();
}

void frmMain::showEvent(QShowEvent* event) {
    QMainWindow::showEvent(event);
    // Only a shown window has a frame; its size is known a moment later, so the tiles are laid
    // once more with the true frames.
    if (firstStart_ && !event->spontaneous())
        QTimer::singleShot(250, this, [this] {
            if (firstStart_)
                tileFirstStart();
            firstStart_ = false;
        });
}
