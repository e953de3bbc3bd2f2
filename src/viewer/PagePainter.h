// SPDX-License-Identifier: Apache-2.0
// Painting of a page and of the field mark onto a widget. Only the part of the page inside the
// area to repaint is touched, so scrolling a large colour page costs what the screen shows, not
// what the page holds.
#pragma once

#include "PageImage.h"

#include <QColor>
#include <QRect>
#include <QString>
#include <QTransform>

class QPainter;

namespace pagepainter {

// The mark's colour: a red that neither a bitonal, grey nor typical form page contains.
inline const QColor markColour{220, 0, 0};
// Width of the mark's frame in screen pixels; the frame lies just outside the marked region.
inline constexpr int markWidth = 3;

// Paints the part of page inside area (widget pixels). pageToView maps page pixels to widget
// pixels and must scale both axes by zoom. An inverted page is painted light-on-dark.
void paintPage(QPainter& painter, const PageImage& page, const QTransform& pageToView, double zoom, const QRect& area,
               bool inverted);

// Frames the region (page pixels) and writes label beside the frame, above it when there is room
// and below otherwise. Nothing for an empty region.
void paintMark(QPainter& painter, const QRect& region, const QTransform& pageToView, const QString& label,
               const QRect& widgetRect);

} // namespace pagepainter
