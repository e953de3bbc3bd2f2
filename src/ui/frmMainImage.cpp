// SPDX-License-Identifier: Apache-2.0
// frmMain: the scanned page beside the form. On every focus gain of a field and after every record
// display the viewer is positioned on the field's region of the page; the viewer stays on top of the
// form without ever taking its keyboard focus. Nothing is shown, and nothing is said, when the
// display is switched off, the record has no bare image name or its file is missing.

#include "frmMain.h"

#include "app/mdlDB.h"
#include "app/mdlMessages.h"
#include "model/FormModel.h"
#include "model/ImageFiles.h"
#include "viewer/zvbkor.h"

#include <QAction>
#include <QApplication>
#include <QFileInfo>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>

namespace {

// The viewer's window, found by its caption like any other program's window would be.
QWidget* viewerWindow() {
    for (QWidget* w : QApplication::topLevelWidgets())
        if (w->isVisible() && (w->windowTitle() == QLatin1String("ZV-Beleg Image Viewer") ||
                               w->windowTitle() == QLatin1String("ZV-Beleg-Anzeige")))
            return w;
    return nullptr;
}

} // namespace

// The image file of the record on screen, or "" when there is none to show (steps 2 and 3 of the
// display's tests: empty or path-like name, missing file).
QString frmMain::recordImageFile() const {
    if (current_ < 0 || WerteArray().GetCount() == 0)
        return QString();
    const QString file = RecordImageFile(WerteArray().GetValue(QStringLiteral("BMPName")));
    return !file.isEmpty() && QFileInfo(file).isFile() ? file : QString();
}

void frmMain::showFieldImage() {
    if (current_ < 0 || !GetSysFlag(QStringLiteral("GUI_BildanzeigeEnabled"), false))
        return;
    const QString file = recordImageFile();
    if (file.isEmpty())
        return;
    RunReported(QStringLiteral("ShowFieldImage"), [&] {
        qint32 x = 0, y = 0, dx = 0, dy = 0;
        QString label;
        QWidget* active = focusWidget();
        if (isDataField(active) && FelderArray().Exists(active->objectName())) {
            const QString name = active->objectName();
            const qint16 layout = ToInteger(WerteArray().GetValue(QStringLiteral("TYP")));
            x = FelderArray().GetX(name, layout);
            y = FelderArray().GetY(name, layout);
            dx = FelderArray().GetDX(name, layout);
            dy = FelderArray().GetDY(name, layout);
            const auto* buddy = datensatz_->findChild<QLabel*>(QStringLiteral("lbl") + name);
            label = buddy ? buddy->text().remove(QLatin1Char('&')).remove(QLatin1Char(':')) : name;
        }
        const QByteArray offsetX = WerteArray().GetValue(QStringLiteral("BMOffsetX")).trimmed().toUtf8();
        const QByteArray offsetY = WerteArray().GetValue(QStringLiteral("BMOffsetY")).trimmed().toUtf8();
        Anzeigen(file.toUtf8().constData(), label.toUtf8().constData(), offsetX.constData(), offsetY.constData(), x, y,
                 dx, dy);
        raiseViewer();
    });
}

void frmMain::closeImage() {
    if (viewerWindow())
        Schliessen();
}

// Full screen: the page of the record on screen until the operator ends it, then the viewer closes.
void frmMain::fullScreenImage() {
    const QString file = recordImageFile();
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
void frmMain::raiseViewer() {
    if (QWidget* viewer = viewerWindow())
        viewer->raise();
}

void frmMain::connectImageActions() {
    connect(mpRight_, &QAction::triggered, this, [] { AnzeigeTaste(6); });
    connect(mpUp_, &QAction::triggered, this, [] { AnzeigeTaste(8); });
    connect(mpDown_, &QAction::triggered, this, [] { AnzeigeTaste(2); });
    connect(mpLeft_, &QAction::triggered, this, [] { AnzeigeTaste(4); });
    connect(mpZoomIn_, &QAction::triggered, this, [] { AnzeigeZoom(1); });
    connect(mpZoomOut_, &QAction::triggered, this, [] { AnzeigeZoom(0); });
}
