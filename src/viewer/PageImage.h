// SPDX-License-Identifier: Apache-2.0
// A decoded scan page ready for painting: grey pages (bitonal ones included) as 8-bit grey, colour
// pages as 32-bit RGB, plus reduced copies for zoomed-out views. The copies are made on first use
// by averaging 2 x 2 blocks, which keeps thin strokes of bitonal text visible where plain sampling
// would drop them; painting then scales a copy by a factor between 0.5 and 1 at most.
#pragma once

#include <QImage>

#include <vector>

class PageImage {
public:
    // Takes a decoded page in any format and converts it for painting. A null image gives an
    // empty page (isNull()).
    explicit PageImage(const QImage& decoded);

    bool isNull() const { return levels_.front().isNull(); }
    // Size of the page in its own pixels.
    QSize size() const { return levels_.front().size(); }
    // The page itself (level 0) or its copy reduced by 2^level in each direction (made now when
    // first asked for); levels beyond maxLevel or below a 2 x 2 copy answer the smallest copy.
    QImage level(int level) const;
    // The reduction level to paint at zoom: the smallest copy that still has at least one pixel for
    // each pixel on screen.
    static int levelFor(double zoom);

    static constexpr int maxLevel = 4;

private:
    mutable std::vector<QImage> levels_; // index = level; grows on demand
};
