// SPDX-License-Identifier: Apache-2.0
// The main window's calls to the image viewer (see ViewerLink.h).

#include "ViewerLink.h"

#include "FieldNavigator.h"
#include "WindowPositions.h"

#include "app/Settings.h"
#include "app/mdlDB.h"
#include "app/mdlMessages.h"
#include "model/FormModel.h"
#include "model/ImageFiles.h"
#include "viewer/zvbkor.h"

#include <QAction>
#include <QApplication>
#include <QFileInfo>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QScreen>

namespace {

// The viewer's window, found by its caption like any other program's window would be; nullptr
// while it is not shown.
QWidget* viewerWindow() {
    for (QWidget* w : QApplication::topLevelWidgets())
        if (w->isVisible() && (w->windowTitle() == QLatin1String("ZV-Beleg Image Viewer") ||
                               w->windowTitle() == QLatin1String("ZV-Beleg-Anzeige")))
            return w;
    return nullptr;
}

// The image file of record, or "" when there is none to show (an empty or path-like name, a
// missing file).
QString recordImageFile(qint32 record) {
    if (record < 0 || WerteArray().GetCount() == 0)
        return QString();
    const QString file = RecordImageFile(WerteArray().GetValue(QStringLiteral("BMPName")));
    return !file.isEmpty() && QFileInfo(file).isFile() ? file : QString();
}

QAction* pageAction(QObject* parent, const char* name, const char* text, void (*run)()) {
    auto* action = new QAction(QString::fromUtf8(text), parent);
    action->setObjectName(QLatin1String(name));
    QObject::connect(action, &QAction::triggered, parent, run);
    return action;
}

} // namespace

ViewerLink::ViewerLink(QWidget* window, const FieldNavigator& fields)
    : QObject(window), zoomIn(pageAction(window, "mpZoomIn", "Ver&größern", [] { AnzeigeZoom(1); })),
      zoomOut(pageAction(window, "mpZoomOut", "Ver&kleinern", [] { AnzeigeZoom(0); })),
      left(pageAction(window, "mpLeft", "Nach &links", [] { AnzeigeTaste(4); })),
      right(pageAction(window, "mpRight", "Nach &rechts", [] { AnzeigeTaste(6); })),
      up(pageAction(window, "mpUp", "Nach &oben", [] { AnzeigeTaste(8); })),
      down(pageAction(window, "mpDown", "Nach &unten", [] { AnzeigeTaste(2); })), window_(window), fields_(fields) {}

ViewerLink::~ViewerLink() {
    Schliessen();
}

void ViewerLink::setActionsEnabled(bool on) {
    for (QAction* a : {zoomIn, zoomOut, left, right, up, down})
        a->setEnabled(on);
}

bool ViewerLink::key(const QKeyEvent* key) {
    const Qt::KeyboardModifiers mods = key->modifiers() & ~(Qt::KeypadModifier | Qt::ShiftModifier);
    QAction* item = nullptr;
    if (mods == Qt::ControlModifier) {
        if (key->key() == Qt::Key_Plus || key->key() == Qt::Key_Equal)
            item = zoomIn;
        else if (key->key() == Qt::Key_Minus)
            item = zoomOut;
    } else if (mods == Qt::AltModifier) {
        switch (key->key()) {
        case Qt::Key_Left:
            item = left;
            break;
        case Qt::Key_Right:
            item = right;
            break;
        case Qt::Key_Up:
            item = up;
            break;
        case Qt::Key_Down:
            item = down;
            break;
        default:
            break;
        }
    }
    if (!item)
        return false;
    if (item->isEnabled())
        item->trigger();
    return true;
}

// A page that belongs to another record never stays beside this one.
void ViewerLink::showPage(qint32 record) {
    if (record < 0 || !setting<Setting::GUI_BildanzeigeEnabled>())
        return;
    const QString bmpName = WerteArray().GetValue(QStringLiteral("BMPName"));
    const QString candidate = RecordImageFile(bmpName);
    if (candidate.isEmpty()) {
        close();
        return;
    }
    RunReported(QStringLiteral("ShowFieldImage"), [&] {
        if (!QFileInfo(candidate).isFile()) {
            const QString notice =
                GetText(QStringLiteral("Txt_ImageMissing"), QStringLiteral("Die Bilddatei '%1' des Belegs %2 fehlt."),
                        {bmpName, record});
            Anzeigen(candidate.toUtf8().constData(), notice.toUtf8().constData(), "0", "0", 0, 0, 0, 0);
            place();
            raise();
            return;
        }
        const QString& file = candidate;
        qint32 x = 0, y = 0, dx = 0, dy = 0;
        QString label;
        const QLineEdit* active = fields_.activeField();
        if (active && FelderArray().Exists(active->objectName())) {
            const QString name = active->objectName();
            const qint16 layout = ToInteger(WerteArray().GetValue(QStringLiteral("TYP")));
            x = FelderArray().GetX(name, layout);
            y = FelderArray().GetY(name, layout);
            dx = FelderArray().GetDX(name, layout);
            dy = FelderArray().GetDY(name, layout);
            label = fields_.caption(active);
        }
        const QByteArray offsetX = WerteArray().GetValue(QStringLiteral("BMOffsetX")).trimmed().toUtf8();
        const QByteArray offsetY = WerteArray().GetValue(QStringLiteral("BMOffsetY")).trimmed().toUtf8();
        Anzeigen(file.toUtf8().constData(), label.toUtf8().constData(), offsetX.constData(), offsetY.constData(), x, y,
                 dx, dy);
        place();
        raise();
    });
}

void ViewerLink::close() {
    if (viewerWindow()) {
        savePosition();
        Schliessen();
    }
}

void ViewerLink::fullScreen(qint32 record) {
    const QString file = recordImageFile(record);
    if (file.isEmpty())
        return;
    RunReported(QStringLiteral("FullScreenImage"), [&] {
        if (!viewerWindow())
            Anzeigen(file.toUtf8().constData(), "", "0", "0", 0, 0, 0, 0);
        AnzeigeVoll();
        Schliessen();
    });
}

// Brings the viewer to the top without activating it: the keyboard stays with the form.
void ViewerLink::raise() {
    if (QWidget* viewer = viewerWindow())
        viewer->raise();
}

void ViewerLink::tileBesideWindow() {
    QWidget* viewer = viewerWindow();
    if (!viewer)
        return;
    const QRect area = workAreaOf(window_);
    const QRect beside(QPoint(window_->frameGeometry().right() + 1, area.top()), area.bottomRight());
    const QMargins frame = frameMarginsOf(viewer).isNull() ? frameMarginsOf(window_) : frameMarginsOf(viewer);
    viewer->move(beside.topLeft());
    viewer->resize(beside.size().shrunkBy(frame).expandedTo(QSize(200, 200)));
}

// Called whenever the viewer may just have appeared: the first time in a session it takes its
// stored place, or on the first start the tile beside the window.
void ViewerLink::place() {
    QWidget* viewer = viewerWindow();
    if (placed_ || !viewer)
        return;
    placed_ = true;
    if (!RestoreWindowPosition(viewer))
        tileBesideWindow();
}

void ViewerLink::savePosition() {
    QWidget* viewer = viewerWindow();
    if (placed_ && viewer)
        SaveWindowPosition(viewer);
}
