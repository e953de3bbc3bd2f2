// SPDX-License-Identifier: Apache-2.0
// Page painting from the reduced copy that suits the zoom; inversion as a difference with white,
// which needs no inverted copy of the page.
#include "PagePainter.h"

#include <QFontMetrics>
#include <QPainter>

namespace pagepainter {

void paintPage(QPainter& painter, const PageImage& page, const QTransform& pageToView, double zoom, const QRect& area,
               bool inverted) {
    if (page.isNull())
        return;
    const QRect pageOnView = pageToView.mapRect(QRectF(QPointF(0, 0), QSizeF(page.size()))).toAlignedRect();
    const QRect target = area & pageOnView;
    if (target.isEmpty())
        return;
    const int level = PageImage::levelFor(zoom);
    const QImage image = page.level(level);
    const double factor = double(page.size().width()) / image.width();
    const double effectiveScale = zoom * factor;
    painter.save();
    painter.setClipRect(target);
    // The whole copy is handed over and the clip limits the work: the painter then samples every
    // strip of a scrolled view from the same source, so strips join without seams.
    painter.setTransform(QTransform::fromScale(factor, double(page.size().height()) / image.height()) * pageToView);
    painter.setRenderHint(QPainter::SmoothPixmapTransform, std::abs(effectiveScale - 1.0) > 1e-6);
    painter.drawImage(QPointF(0, 0), image);
    painter.restore();
    if (inverted) {
        painter.save();
        painter.setCompositionMode(QPainter::CompositionMode_Difference);
        painter.fillRect(target, Qt::white);
        painter.restore();
    }
}

void paintMark(QPainter& painter, const QRect& region, const QTransform& pageToView, const QString& label,
               const QRect& widgetRect) {
    if (region.isEmpty())
        return;
    const QRectF onView = pageToView.mapRect(QRectF(region));
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing, false);
    const double half = markWidth / 2.0;
    painter.setPen(QPen(markColour, markWidth, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(onView.adjusted(-half - 1, -half - 1, half + 1, half + 1));
    if (!label.isEmpty()) {
        QFont font = painter.font();
        font.setBold(true);
        painter.setFont(font);
        const QFontMetrics metrics(font);
        const QSize size(metrics.horizontalAdvance(label) + 8, metrics.height() + 2);
        const int left = int(onView.left()) - markWidth - 1;
        QRect box(QPoint(left, int(onView.top()) - markWidth - 1 - size.height()), size);
        if (box.top() < widgetRect.top())
            box.moveTop(int(onView.bottom()) + markWidth + 2);
        painter.fillRect(box, markColour);
        painter.setPen(Qt::white);
        painter.drawText(box, Qt::AlignCenter, label);
    }
    painter.restore();
}

} // namespace pagepainter
