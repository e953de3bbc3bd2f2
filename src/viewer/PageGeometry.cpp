// SPDX-License-Identifier: Apache-2.0
// The page-to-screen arithmetic.
#include "PageGeometry.h"

namespace pagegeometry {

int normalisedTurns(int quarterTurns) {
    return ((quarterTurns % 4) + 4) % 4;
}

QSize turnedSize(QSize page, int quarterTurns) {
    return normalisedTurns(quarterTurns) % 2 ? page.transposed() : page;
}

QTransform pageToContent(QSize page, int quarterTurns, double zoom) {
    // QTransform applies the last call first: rotate, then move back into view, then scale.
    QTransform t;
    t.scale(zoom, zoom);
    switch (normalisedTurns(quarterTurns)) {
    case 1: // (x, y) -> (H - y, x)
        t.translate(page.height(), 0);
        t.rotate(90);
        break;
    case 2: // (x, y) -> (W - x, H - y)
        t.translate(page.width(), page.height());
        t.rotate(180);
        break;
    case 3: // (x, y) -> (y, W - x)
        t.translate(0, page.width());
        t.rotate(270);
        break;
    default:
        break;
    }
    return t;
}

int stepToFit(QSizeF region, int quarterTurns, QSize viewport, int margin, int maxStep) {
    const QSizeF turned = normalisedTurns(quarterTurns) % 2 ? region.transposed() : region;
    for (int step = std::min(maxStep, int(zoomSteps.size()) - 1); step > 0; --step) {
        const double z = zoomSteps[size_t(step)];
        if (turned.width() * z + 2 * margin <= viewport.width() &&
            turned.height() * z + 2 * margin <= viewport.height())
            return step;
    }
    return 0;
}

} // namespace pagegeometry
