// SPDX-License-Identifier: Apache-2.0
// The scrolling page area of the viewer window: shows one page at one of the zoom steps, turned by
// quarter turns and optionally inverted, with the current field's region framed. It never takes
// the keyboard focus; the mouse pans (drag) and zooms (Ctrl + wheel).
#pragma once

#include "PageImage.h"

#include <QAbstractScrollArea>
#include <QPoint>
#include <QRect>
#include <QString>

#include <memory>

class PageView : public QAbstractScrollArea {
    Q_OBJECT
public:
    explicit PageView(QWidget* parent = nullptr);

    // Shows page. A page other than the one shown before starts upright and not inverted; the zoom
    // stays. The mark is kept until showRegion replaces it.
    void setPage(std::shared_ptr<const PageImage> page);
    // Shows nothing, lets go of the page and returns to the starting zoom, upright and not inverted.
    void clearPage();
    const std::shared_ptr<const PageImage>& page() const { return page_; }

    // Frames region (page pixels) with label and brings its centre to the middle of the view,
    // zooming out step by step while the region with a margin does not fit. An empty region
    // removes the mark and shows the page from its top left corner.
    void showRegion(const QRect& region, const QString& label);

    // Scrolls by a quarter of the view for the numeric-pad digits 6 (right), 4 (left), 2 (down)
    // and 8 (up), in screen directions whatever the page's turn. Returns false for any other code,
    // without a page, or when the view is already at that edge.
    bool scrollByKey(int keyCode);
    // One zoom step in (direction > 0) or out (direction <= 0) about the pivot (see below). Returns
    // false without a page or at the first or last step.
    bool zoomBy(int direction);
    // Turns the page by quarter turns (positive: clockwise) about the pivot. Returns false without a
    // page or for 0. The pivot is the marked region's centre while that is in view (the field
    // stays in sight), else the middle of the view.
    bool rotateBy(int quarterTurns);
    // Switches between normal and inverted display. Returns false without a page.
    bool toggleInverted();

    double zoom() const;
    int quarterTurns() const { return turns_; }
    bool inverted() const { return inverted_; }
    const QRect& markedRegion() const { return mark_; }
    const QString& markLabel() const { return label_; }

signals:
    // The zoom, turn, inversion or page changed (for the window's status line).
    void viewChanged();

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    QSize contentSize() const;
    QPoint contentOffset(QSize viewport) const;
    QTransform pageToView() const;
    QPointF viewCentreOnPage(QSize viewport) const;
    QPointF pivot() const;
    void centreOn(const QPointF& pagePoint);
    void updateScrollBars();

    std::shared_ptr<const PageImage> page_;
    int zoomStep_;
    int turns_ = 0;
    bool inverted_ = false;
    QRect mark_;
    QString label_;
    bool dragging_ = false;
    QPoint dragStart_;
    QPoint dragScroll_;
};
