// SPDX-License-Identifier: Apache-2.0
// Full-screen display: the turned page scaled to fit, centred on black.
#include "FullScreenView.h"

#include "PageGeometry.h"
#include "PagePainter.h"

#include <QApplication>
#include <QEventLoop>
#include <QKeyEvent>
#include <QPainter>

FullScreenView::FullScreenView(std::shared_ptr<const PageImage> page, int quarterTurns, bool inverted,
                               const QRect& region, const QString& label)
    : QWidget(nullptr, Qt::Window | Qt::FramelessWindowHint), page_(std::move(page)), turns_(quarterTurns),
      inverted_(inverted), region_(region), label_(label) {
    setObjectName(QStringLiteral("zvbkorFullScreen"));
    // A caption of its own: the main window finds the viewer window by its exact caption.
    setWindowTitle(QStringLiteral("ZV-Beleg Image Viewer – Vollbild"));
    setWindowModality(Qt::ApplicationModal);
    setFocusPolicy(Qt::StrongFocus);
    setCursor(Qt::PointingHandCursor);
}

void FullScreenView::exec() {
    const QPointer<QWidget> previous = QApplication::activeWindow();
    QEventLoop loop;
    loop_ = &loop;
    showFullScreen();
    raise();
    activateWindow();
    setFocus(Qt::ActiveWindowFocusReason);
    grabKeyboard();
    loop.exec(QEventLoop::DialogExec);
    loop_ = nullptr;
    releaseKeyboard();
    hide();
    if (previous)
        previous->activateWindow();
}

void FullScreenView::finish() {
    if (loop_)
        loop_->quit();
}

double FullScreenView::fitZoom() const {
    if (!page_ || page_->isNull())
        return 1.0;
    const QSize turned = pagegeometry::turnedSize(page_->size(), turns_);
    return std::min(double(width()) / turned.width(), double(height()) / turned.height());
}

QTransform FullScreenView::pageToView() const {
    const double zoom = fitZoom();
    const QSize turned = pagegeometry::turnedSize(page_->size(), turns_);
    const QPointF shift((width() - turned.width() * zoom) / 2.0, (height() - turned.height() * zoom) / 2.0);
    return pagegeometry::pageToContent(page_->size(), turns_, zoom) * QTransform::fromTranslate(shift.x(), shift.y());
}

void FullScreenView::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    painter.fillRect(event->rect(), Qt::black);
    if (!page_ || page_->isNull())
        return;
    const QTransform toView = pageToView();
    pagepainter::paintPage(painter, *page_, toView, fitZoom(), event->rect(), inverted_);
    pagepainter::paintMark(painter, region_, toView, label_, rect());
}

void FullScreenView::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape) {
        finish();
        return;
    }
    QWidget::keyPressEvent(event);
}

void FullScreenView::mousePressEvent(QMouseEvent* event) {
    event->accept();
    finish();
}

void FullScreenView::closeEvent(QCloseEvent* event) {
    finish();
    QWidget::closeEvent(event);
}
