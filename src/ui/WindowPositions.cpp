// SPDX-License-Identifier: Apache-2.0
#include "WindowPositions.h"

#include "admin/mdlWindowPositions.h"
#include "app/mdlMessages.h"

#include <QGuiApplication>
#include <QScreen>
#include <QWidget>

void RestoreWindowPosition(QWidget* w) {
    if (!w)
        return;
    RunReported(QStringLiteral("RestoreWindowPosition"), [&] {
        WindowPosition position = ReadWindowPosition(w->objectName());
        // Only the primary screen counts, as on a single-monitor workstation.
        if (const QScreen* screen = QGuiApplication::primaryScreen()) {
            const QRect area = screen->geometry();
            position = FitOnScreen(position, area.width(), area.height());
        }
        w->move(position.x, position.y);
        if (position.dx > 0 && position.dy > 0)
            w->resize(position.dx, position.dy);
    });
}

void SaveWindowPosition(QWidget* w) {
    if (!w || w->isMinimized())
        return;
    RunReported(QStringLiteral("SaveWindowPosition"), [&] {
        QPoint corner = w->pos();
        QSize size = w->size();
        const QRect normal = w->normalGeometry();
        if ((w->isMaximized() || w->isFullScreen()) && normal.isValid()) {
            // normalGeometry() is the inside; shift it by the frame's offset to get the outer corner.
            corner = normal.topLeft() - (w->geometry().topLeft() - w->pos());
            size = normal.size();
        }
        WriteWindowPosition(w->objectName(), {corner.x(), corner.y(), size.width(), size.height()});
    });
}
