// SPDX-License-Identifier: Apache-2.0
// Page conversion and the reduced copies.
#include "PageImage.h"

#include <algorithm>
#include <cmath>

namespace {

QImage forPainting(const QImage& decoded) {
    if (decoded.isNull())
        return {};
    if (decoded.isGrayscale())
        return decoded.convertToFormat(QImage::Format_Grayscale8);
    return decoded.convertToFormat(QImage::Format_RGB32);
}

// Halves a grey or RGB32 image by averaging 2 x 2 blocks (an odd last row or column is dropped).
QImage halve(const QImage& source) {
    const int width = std::max(1, source.width() / 2);
    const int height = std::max(1, source.height() / 2);
    QImage out(width, height, source.format());
    const int lastX = source.width() - 1;
    const int lastY = source.height() - 1;
    if (source.format() == QImage::Format_Grayscale8) {
        for (int y = 0; y < height; ++y) {
            const uchar* a = source.constScanLine(std::min(2 * y, lastY));
            const uchar* b = source.constScanLine(std::min(2 * y + 1, lastY));
            uchar* o = out.scanLine(y);
            for (int x = 0; x < width; ++x) {
                const int x0 = std::min(2 * x, lastX);
                const int x1 = std::min(2 * x + 1, lastX);
                o[x] = uchar((a[x0] + a[x1] + b[x0] + b[x1] + 2) / 4);
            }
        }
        return out;
    }
    for (int y = 0; y < height; ++y) {
        const auto* a = reinterpret_cast<const QRgb*>(source.constScanLine(std::min(2 * y, lastY)));
        const auto* b = reinterpret_cast<const QRgb*>(source.constScanLine(std::min(2 * y + 1, lastY)));
        auto* o = reinterpret_cast<QRgb*>(out.scanLine(y));
        for (int x = 0; x < width; ++x) {
            const QRgb p0 = a[std::min(2 * x, lastX)], p1 = a[std::min(2 * x + 1, lastX)];
            const QRgb p2 = b[std::min(2 * x, lastX)], p3 = b[std::min(2 * x + 1, lastX)];
            o[x] = qRgb((qRed(p0) + qRed(p1) + qRed(p2) + qRed(p3) + 2) / 4,
                        (qGreen(p0) + qGreen(p1) + qGreen(p2) + qGreen(p3) + 2) / 4,
                        (qBlue(p0) + qBlue(p1) + qBlue(p2) + qBlue(p3) + 2) / 4);
        }
    }
    return out;
}

} // namespace

PageImage::PageImage(const QImage& decoded) {
    levels_.push_back(forPainting(decoded));
}

QImage PageImage::level(int level) const {
    level = std::clamp(level, 0, maxLevel);
    while (int(levels_.size()) <= level) {
        const QImage& last = levels_.back();
        if (last.isNull() || last.width() < 2 || last.height() < 2)
            return last;
        levels_.push_back(halve(last));
    }
    return levels_[size_t(level)];
}

int PageImage::levelFor(double zoom) {
    if (zoom >= 1.0 || zoom <= 0.0)
        return 0;
    return std::clamp(int(std::floor(std::log2(1.0 / zoom) + 1e-9)), 0, maxLevel);
}
