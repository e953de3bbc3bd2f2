// SPDX-License-Identifier: Apache-2.0
// Page generation and window probing for the viewer tests.
#include "ViewerPages.h"

#include "TiffWriter.h"
#include "viewer/zvbkor.h"

#include <QAbstractScrollArea>
#include <QApplication>
#include <QFile>
#include <QLabel>
#include <QPainter>
#include <QTimer>

#include <gtest/gtest.h>

namespace {

constexpr double inchesPerMetre = 39.3700787;
const QString viewerCaption = QStringLiteral("ZV-Beleg Image Viewer");

} // namespace

QImage makePage(PageKind kind, const QList<Block>& blocks, QSize size, int dpi) {
    QImage page(size, kind == PageKind::Colour ? QImage::Format_RGB32 : QImage::Format_Grayscale8);
    page.fill(Qt::white);
    {
        QPainter p(&page);
        for (const Block& b : blocks) {
            QColor c = b.colour;
            if (kind == PageKind::Grey) // dark greys, well apart from paper and from the view's background
                c = QColor(qGray(c.rgb()) / 2, qGray(c.rgb()) / 2, qGray(c.rgb()) / 2);
            if (kind == PageKind::Bitonal)
                c = Qt::black;
            p.fillRect(b.rect, c);
        }
    }
    if (kind == PageKind::Bitonal)
        page = page.convertToFormat(QImage::Format_Mono, Qt::ThresholdDither);
    const int dotsPerMetre = qRound(dpi * inchesPerMetre);
    page.setDotsPerMeterX(dotsPerMetre);
    page.setDotsPerMeterY(dotsPerMetre);
    return page;
}

QImage standardPage(PageKind kind) {
    QList<Block> blocks{{surnameBlock, blockBlue}, {otherBlock, otherGrey}};
    if (kind == PageKind::Colour)
        blocks.append({notchBlock, notchGreen});
    return makePage(kind, blocks);
}

QString writeTiff(const QTemporaryDir& dir, const QString& name, const QList<QImage>& pages) {
    const QString path = dir.filePath(name);
    QString error;
    EXPECT_TRUE(writeTiffPages(path, pages, &error)) << error.toStdString();
    return path;
}

QList<QWidget*> viewerWindows() {
    QList<QWidget*> found;
    for (QWidget* w : QApplication::topLevelWidgets())
        if (w->windowTitle() == viewerCaption)
            found << w;
    return found;
}

QWidget* viewerWindow() {
    return viewerWindows().value(0);
}

QWidget* fullScreenView() {
    for (QWidget* w : QApplication::topLevelWidgets())
        if (w->objectName() == QLatin1String("zvbkorFullScreen") && w->isVisible())
            return w;
    return nullptr;
}

int32_t showFullScreen(const std::function<void(QWidget*)>& whileUp) {
    QTimer::singleShot(50, [whileUp] {
        if (QWidget* view = fullScreenView())
            whileUp(view);
    });
    QTimer safetyNet; // never hang the suite, and never close a later test's viewer
    safetyNet.callOnTimeout([] { Schliessen(); });
    safetyNet.start(5000);
    return AnzeigeVoll();
}

QImage grabPageArea() {
    auto* area = viewerWindow() ? viewerWindow()->findChild<QAbstractScrollArea*>() : nullptr;
    return area ? area->viewport()->grab().toImage().convertToFormat(QImage::Format_RGB32) : QImage();
}

QString viewerStatus() {
    QWidget* window = viewerWindow();
    auto* label = window ? window->findChild<QLabel*>() : nullptr;
    return label ? label->text() : QString();
}

QRect boxOf(const QImage& image, const std::function<bool(QRgb)>& test) {
    QRect box;
    for (int y = 0; y < image.height(); ++y) {
        const auto* line = reinterpret_cast<const QRgb*>(image.constScanLine(y));
        for (int x = 0; x < image.width(); ++x)
            if (test(line[x]))
                box |= QRect(x, y, 1, 1);
    }
    return box;
}

bool whollyInside(const QRect& block, QSize view, int margin) {
    return !block.isEmpty() && block.left() >= margin && block.top() >= margin &&
           block.right() < view.width() - margin && block.bottom() < view.height() - margin;
}

bool isDarkInk(QRgb p) {
    return qRed(p) < 64 && qGreen(p) < 64 && qBlue(p) < 64;
}

bool isBlockBlue(QRgb p) {
    return qBlue(p) > 150 && qRed(p) < 90 && qGreen(p) < 120;
}

bool isNotchGreen(QRgb p) {
    return qGreen(p) > 120 && qRed(p) < 80 && qBlue(p) < 90;
}

bool isMarkRed(QRgb p) {
    return qRed(p) > 180 && qGreen(p) < 60 && qBlue(p) < 60;
}

bool isPaper(QRgb p) {
    return qRed(p) > 235 && qGreen(p) > 235 && qBlue(p) > 235;
}

int32_t show(const QString& path, const QRect& r, const char* field, const char* offsetX, const char* offsetY) {
    return Anzeigen(QFile::encodeName(path).constData(), field, offsetX, offsetY, r.x(), r.y(), r.width(), r.height());
}
