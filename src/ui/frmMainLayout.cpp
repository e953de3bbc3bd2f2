// SPDX-License-Identifier: Apache-2.0
// frmMain: where the window and the viewer stand. On the first start (no stored place) the window
// takes the left part of the screen's work area, wide enough for every value, and the viewer the
// rest beside it, so neither covers the other at 1280 x 800 already. Afterwards both come back where
// the operator left them; the viewer's place is stored under its own name like every window's.

#include "WindowPositions.h"
#include "frmMain.h"

#include <QApplication>
#include <QGuiApplication>
#include <QScreen>
#include <QShowEvent>
#include <QTimer>

namespace {

// The viewer's window, found by its caption like any other program's window would be.
QWidget* viewerWindow() {
    for (QWidget* w : QApplication::topLevelWidgets())
        if (w->windowTitle() == QLatin1String("ZV-Beleg Image Viewer") ||
            w->windowTitle() == QLatin1String("ZV-Beleg-Anzeige"))
            return w;
    return nullptr;
}

QRect workArea(const QWidget* w) {
    const QScreen* screen = w->screen() ? w->screen() : QGuiApplication::primaryScreen();
    return screen ? screen->availableGeometry() : QRect(0, 0, 1280, 800);
}

// Puts the viewer into the part of the work area right of the main window.
void tileViewer(const QWidget* main, QWidget* viewer) {
    const QRect area = workArea(main);
    const QRect beside(QPoint(main->frameGeometry().right() + 1, area.top()), area.bottomRight());
    const QMargins frame = frameMarginsOf(viewer).isNull() ? frameMarginsOf(main) : frameMarginsOf(viewer);
    viewer->move(beside.topLeft());
    viewer->resize(beside.size().shrunkBy(frame).expandedTo(QSize(200, 200)));
}

} // namespace

void frmMain::tileFirstStart() {
    const QRect area = workArea(this);
    const QMargins frame = frameMarginsOf(this);
    // 45 % of the width leaves the larger part to the page; never narrower than the values need.
    const int width =
        qMax(minimumSizeHint().width() + frame.left() + frame.right(), qMin(area.width() * 45 / 100, 820));
    move(area.topLeft());
    resize(QSize(width, area.height()).shrunkBy(frame));
    if (QWidget* viewer = viewerWindow(); viewer && viewer->isVisible())
        tileViewer(this, viewer);
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

// Called whenever the viewer may just have appeared: the first time in a session it takes its
// stored place, or on the first start the tile beside the window.
void frmMain::placeViewer() {
    QWidget* viewer = viewerWindow();
    if (viewerPlaced_ || !viewer || !viewer->isVisible())
        return;
    viewerPlaced_ = true;
    if (!RestoreWindowPosition(viewer))
        tileViewer(this, viewer);
}

void frmMain::saveViewerPosition() {
    QWidget* viewer = viewerWindow();
    if (viewerPlaced_ && viewer && viewer->isVisible())
        SaveWindowPosition(viewer);
}
