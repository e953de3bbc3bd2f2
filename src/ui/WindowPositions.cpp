// SPDX-License-Identifier: Apache-2.0
#include "WindowPositions.h"

#include "admin/mdlWindowPositions.h"
#include "app/mdlMessages.h"

#include <QApplication>
#include <QGuiApplication>
#include <QScreen>
#include <QWidget>

bool RestoreWindowPosition(QWidget* w) {
    if (!w)
        return false;
    bool found = false;
    RunReported(QStringLiteral("RestoreWindowPosition"), [&] {
        WindowPosition position = ReadWindowPosition(w->objectName(), &found);
        if (!found)
            return;
        // Only the primary screen counts, as on a single-monitor workstation.
        if (const QScreen* screen = QGuiApplication::primaryScreen()) {
            const QRect area = screen->geometry();
            position = FitOnScreen(position, area.width(), area.height());
        }
        w->move(position.x, position.y);
        if (position.dx > 0 && position.dy > 0)
            w->resize(position.dx, position.dy);
    });
    return found;
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

QMargins frameMarginsOf(const QWidget* w) {
    const QRect outer = w->frameGeometry();
    const QRect inner = w->geometry();
    return QMargins(inner.left() - outer.left(), inner.top() - outer.top(), outer.right() - inner.right(),
                    outer.bottom() - inner.bottom());
}

QRect workAreaOf(const QWidget* w) {
    const QScreen* screen = w->screen() ? w->screen() : QGuiApplication::primaryScreen();
    return screen ? screen->availableGeometry() : QRect(0, 0, 1280, 800);
}

void PlaceBesideFields(QWidget* w) {
    QWidget* main = nullptr;
    for (QWidget* top : QApplication::topLevelWidgets())
        if (top != w && top->isVisible() && top->objectName() == QLatin1String("frmMain"))
            main = top;
    const QWidget* fieldsBox = main ? main->findChild<QWidget*>(QStringLiteral("Datensatz")) : nullptr;
    if (!fieldsBox)
        return;
    const QRect fields(fieldsBox->mapToGlobal(QPoint(0, 0)), fieldsBox->size());
    const QScreen* screen = main->screen() ? main->screen() : QGuiApplication::primaryScreen();
    const QRect area = screen->availableGeometry();
    // The small window gets the same frame as the main window has (one window manager for both).
    const QMargins frame = frameMarginsOf(main);
    const QSize size = w->size().expandedTo(w->sizeHint()).grownBy(frame);
    const QRect mainFrame = main->frameGeometry();
    constexpr int gap = 8;
    const QPoint candidates[] = {
        {fields.left(), fields.bottom() + gap},
        {mainFrame.right() + gap, fields.top()},
        {mainFrame.left() - gap - size.width(), fields.top()},
        {fields.left(), fields.top() - gap - size.height()},
    };
    QRect chosen;
    for (const QPoint& corner : candidates) {
        const QRect outer(corner, size);
        if (area.contains(outer) && !outer.intersects(fields)) {
            chosen = outer;
            break;
        }
    }
    if (chosen.isNull()) {
        // Nowhere free of the fields: right of the main window, pushed back onto the screen.
        chosen = QRect(candidates[1], size);
        chosen.moveRight(qMin(chosen.right(), area.right()));
        chosen.moveBottom(qMin(chosen.bottom(), area.bottom()));
        chosen.moveLeft(qMax(chosen.left(), area.left()));
        chosen.moveTop(qMax(chosen.top(), area.top()));
    }
    w->move(chosen.topLeft()); // a window's position is that of its frame
}

void RestoreOrPlaceBesideFields(QWidget* w) {
    if (!RestoreWindowPosition(w))
        PlaceBesideFields(w);
}
