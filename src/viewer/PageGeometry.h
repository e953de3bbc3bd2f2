// SPDX-License-Identifier: Apache-2.0
// Where a page point lands on screen: the page is turned by quarter turns clockwise about its top
// left corner, moved back into the positive quadrant and scaled by the zoom. Shared by the viewer
// window and the full-screen view so that both turn and scale a page the same way.
#pragma once

#include <QRectF>
#include <QSize>
#include <QTransform>

#include <array>

namespace pagegeometry {

// The zoom steps, each about 1.41 times the one before (two steps double the size).
inline constexpr std::array<double, 11> zoomSteps{0.125, 0.177, 0.25, 0.354, 0.5, 0.707, 1.0, 1.414, 2.0, 2.828, 4.0};
// The step a newly opened viewer starts with: a 200 dpi page at about its printed size.
inline constexpr int defaultZoomStep = 4;

// quarterTurns reduced to 0..3 (negative counts anticlockwise).
int normalisedTurns(int quarterTurns);

// Size of the turned page before zooming: width and height swap for an odd number of turns.
QSize turnedSize(QSize page, int quarterTurns);

// Maps page pixels to content pixels: turned, moved so that the turned page starts at (0, 0), then
// scaled by zoom.
QTransform pageToContent(QSize page, int quarterTurns, double zoom);

// The largest zoom step at or below which a region of the given size (page pixels, turned as
// given) plus margin content pixels on each side fits into viewport; the smallest step when even
// that one is too large. Never above the step maxStep.
int stepToFit(QSizeF region, int quarterTurns, QSize viewport, int margin, int maxStep);

} // namespace pagegeometry
