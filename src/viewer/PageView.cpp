// SPDX-License-Identifier: Apache-2.0
// Scroll bars hold the position in content pixels (the turned, zoomed page); everything else is
// derived from them and from zoom and turn.
#include "PageView.h"

#include "PageGeometry.h"
#include "PagePainter.h"

#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>

using namespace pagegeometry;

namespace {

const QColor background(96, 96, 96);
constexpr int fitMargin = 24; // content pixels kept free around a region brought into view

} // namespace

PageView::PageView(QWidget* parent) : QAbstractScrollArea(parent), zoomStep_(defaultZoomStep) {
    setFocusPolicy(Qt::NoFocus);
    viewport()->setFocusPolicy(Qt::NoFocus);
    horizontalScrollBar()->setFocusPolicy(Qt::NoFocus);
    verticalScrollBar()->setFocusPolicy(Qt::NoFocus);
    viewport()->setCursor(Qt::OpenHandCursor);
    setFrameShape(QFrame::NoFrame);
}

void PageView::setPage(std::shared_ptr<const PageImage> page) {
    if (page != page_) {
        turns_ = 0;
        inverted_ = false;
    }
    page_ = std::move(page);
    updateScrollBars();
    viewport()->update();
    emit viewChanged();
}

void PageView::clearPage() {
    page_.reset();
    zoomStep_ = defaultZoomStep;
    turns_ = 0;
    inverted_ = false;
    mark_ = QRect();
    label_.clear();
    updateScrollBars();
    viewport()->update();
}

double PageView::zoom() const {
    return zoomSteps[size_t(zoomStep_)];
}

QSize PageView::contentSize() const {
    if (!page_)
        return {};
    const QSize turned = turnedSize(page_->size(), turns_);
    return QSize(qRound(turned.width() * zoom()), qRound(turned.height() * zoom()));
}

QPoint PageView::contentOffset(QSize viewport) const {
    const QSize content = contentSize();
    return QPoint(std::max(0, (viewport.width() - content.width()) / 2),
                  std::max(0, (viewport.height() - content.height()) / 2));
}

QTransform PageView::pageToView() const {
    if (!page_)
        return {};
    const QPoint shift =
        contentOffset(viewport()->size()) - QPoint(horizontalScrollBar()->value(), verticalScrollBar()->value());
    return pageToContent(page_->size(), turns_, zoom()) * QTransform::fromTranslate(shift.x(), shift.y());
}

QPointF PageView::viewCentreOnPage(QSize viewport) const {
    if (!page_)
        return {};
    const QPoint shift = contentOffset(viewport) - QPoint(horizontalScrollBar()->value(), verticalScrollBar()->value());
    const QTransform toView =
        pageToContent(page_->size(), turns_, zoom()) * QTransform::fromTranslate(shift.x(), shift.y());
    return toView.inverted().map(QPointF(viewport.width() / 2.0, viewport.height() / 2.0));
}

QPointF PageView::pivot() const {
    const QPointF middle = viewCentreOnPage(viewport()->size());
    if (mark_.isNull())
        return middle;
    const QPointF markCentre = QRectF(mark_).center();
    return viewport()->rect().contains(pageToView().map(markCentre).toPoint()) ? markCentre : middle;
}

void PageView::centreOn(const QPointF& pagePoint) {
    if (!page_)
        return;
    const QPointF content = pageToContent(page_->size(), turns_, zoom()).map(pagePoint);
    horizontalScrollBar()->setValue(qRound(content.x() - viewport()->width() / 2.0));
    verticalScrollBar()->setValue(qRound(content.y() - viewport()->height() / 2.0));
}

void PageView::updateScrollBars() {
    const QSize content = contentSize();
    const QSize view = viewport()->size();
    horizontalScrollBar()->setRange(0, std::max(0, content.width() - view.width()));
    verticalScrollBar()->setRange(0, std::max(0, content.height() - view.height()));
    horizontalScrollBar()->setPageStep(view.width());
    verticalScrollBar()->setPageStep(view.height());
    horizontalScrollBar()->setSingleStep(24);
    verticalScrollBar()->setSingleStep(24);
}

void PageView::showRegion(const QRect& region, const QString& label) {
    mark_ = region.isValid() && !region.isEmpty() ? region : QRect();
    label_ = mark_.isNull() ? QString() : label;
    if (page_ && !mark_.isNull()) {
        const int fitting = stepToFit(QSizeF(mark_.size()), turns_, viewport()->size(), fitMargin, zoomStep_);
        if (fitting != zoomStep_) {
            zoomStep_ = fitting;
            emit viewChanged();
        }
        updateScrollBars();
        centreOn(QRectF(mark_).center());
    } else {
        updateScrollBars();
        horizontalScrollBar()->setValue(0);
        verticalScrollBar()->setValue(0);
    }
    viewport()->update();
}

bool PageView::scrollByKey(int keyCode) {
    if (!page_)
        return false;
    QScrollBar* bar = nullptr;
    int sign = 1;
    switch (keyCode) {
    case 6:
        bar = horizontalScrollBar();
        break;
    case 4:
        bar = horizontalScrollBar();
        sign = -1;
        break;
    case 2:
        bar = verticalScrollBar();
        break;
    case 8:
        bar = verticalScrollBar();
        sign = -1;
        break;
    default:
        return false;
    }
    const int before = bar->value();
    bar->setValue(before + sign * std::max(1, bar->pageStep() / 4));
    return bar->value() != before;
}

bool PageView::zoomBy(int direction) {
    if (!page_)
        return false;
    const int step = std::clamp(zoomStep_ + (direction > 0 ? 1 : -1), 0, int(zoomSteps.size()) - 1);
    if (step == zoomStep_)
        return false;
    const QPointF centre = pivot();
    zoomStep_ = step;
    updateScrollBars();
    centreOn(centre);
    viewport()->update();
    emit viewChanged();
    return true;
}

bool PageView::rotateBy(int quarterTurns) {
    if (!page_ || quarterTurns == 0)
        return false;
    const QPointF centre = pivot();
    turns_ = normalisedTurns(turns_ + quarterTurns);
    updateScrollBars();
    centreOn(centre);
    viewport()->update();
    emit viewChanged();
    return true;
}

bool PageView::toggleInverted() {
    if (!page_)
        return false;
    inverted_ = !inverted_;
    viewport()->update();
    emit viewChanged();
    return true;
}

void PageView::paintEvent(QPaintEvent* event) {
    QPainter painter(viewport());
    painter.fillRect(event->rect(), background);
    if (!page_)
        return;
    const QTransform toView = pageToView();
    pagepainter::paintPage(painter, *page_, toView, zoom(), event->rect(), inverted_);
    pagepainter::paintMark(painter, mark_, toView, label_, viewport()->rect());
}

void PageView::resizeEvent(QResizeEvent* event) {
    // Keep what was in the middle of the view in the middle.
    const bool known = event->oldSize().isValid() && !event->oldSize().isEmpty();
    const QPointF centre = known ? viewCentreOnPage(event->oldSize()) : QPointF();
    updateScrollBars();
    if (known)
        centreOn(centre);
    QAbstractScrollArea::resizeEvent(event);
}

void PageView::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton || !page_)
        return QAbstractScrollArea::mousePressEvent(event);
    dragging_ = true;
    dragStart_ = event->position().toPoint();
    dragScroll_ = QPoint(horizontalScrollBar()->value(), verticalScrollBar()->value());
    viewport()->setCursor(Qt::ClosedHandCursor);
}

void PageView::mouseMoveEvent(QMouseEvent* event) {
    if (!dragging_)
        return QAbstractScrollArea::mouseMoveEvent(event);
    const QPoint moved = event->position().toPoint() - dragStart_;
    horizontalScrollBar()->setValue(dragScroll_.x() - moved.x());
    verticalScrollBar()->setValue(dragScroll_.y() - moved.y());
}

void PageView::mouseReleaseEvent(QMouseEvent* event) {
    if (!dragging_)
        return QAbstractScrollArea::mouseReleaseEvent(event);
    dragging_ = false;
    viewport()->setCursor(Qt::OpenHandCursor);
}

void PageView::wheelEvent(QWheelEvent* event) {
    if (event->modifiers() & Qt::ControlModifier) {
        if (event->angleDelta().y() != 0)
            zoomBy(event->angleDelta().y() > 0 ? 1 : -1);
        event->accept();
        return;
    }
    QAbstractScrollArea::wheelEvent(event);
}
