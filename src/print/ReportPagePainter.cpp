// SPDX-License-Identifier: Apache-2.0
#include "ReportPagePainter.h"

#include <QFont>
#include <QFontMetricsF>
#include <QImage>
#include <QPainter>
#include <QPrinter>

namespace {

// A black-and-white template read as {white, black} is turned into {black, white}: only with that
// colour table does the PDF writer keep it a small 1-bit image instead of full colour.
void normaliseMonochrome(QImage& image) {
    const QRgb black = qRgb(0, 0, 0);
    const QRgb white = qRgb(255, 255, 255);
    if (image.depth() != 1 || image.colorCount() != 2 || image.color(0) != white || image.color(1) != black)
        return;
    image.invertPixels();
    image.setColorTable({black, white});
}

} // namespace

bool paintReportPage(QPrinter& printer, const ReportPage& page, QString& error) {
    QImage image(page.bitmapPath);
    normaliseMonochrome(image);
    if (image.isNull() || image.width() == 0 || image.height() == 0) {
        error = QStringLiteral("Die Vorlagedatei '%1' kann nicht gelesen werden.").arg(page.bitmapPath);
        return false;
    }
    printer.setPageOrientation(image.width() > image.height() ? QPageLayout::Landscape : QPageLayout::Portrait);
    printer.setDocName(page.jobName);
    printer.setFullPage(false);

    QPainter painter;
    if (!painter.begin(&printer)) {
        error = QStringLiteral("Der Druckauftrag '%1' kann nicht begonnen werden.").arg(page.jobName);
        return false;
    }
    // Without this the template would be embedded as a JPEG: blurred lines, a much larger file.
    painter.setRenderHint(QPainter::LosslessImageRendering);

    const double areaWidth = printer.width();
    const double areaHeight = printer.height();
    double width = areaWidth;
    double height = areaWidth * image.height() / image.width();
    if (areaWidth / areaHeight > double(image.width()) / image.height()) {
        height = areaHeight;
        width = areaHeight * image.width() / image.height();
    }
    painter.drawImage(QRectF(0, 0, width, height), image);

    QFont font(page.fontName);
    font.setPointSizeF(12);
    font.setBold(true);
    painter.setFont(font);
    painter.setPen(Qt::black);
    const double ascent = QFontMetricsF(font, &printer).ascent();
    const double unitsPerMmX = printer.logicalDpiX() / 25.4;
    const double unitsPerMmY = printer.logicalDpiY() / 25.4;
    for (const ReportText& text : page.texts) {
        if (text.text.isEmpty())
            continue;
        painter.drawText(QPointF(text.xMm * unitsPerMmX, text.yMm * unitsPerMmY + ascent), text.text);
    }
    if (!painter.end()) {
        error = QStringLiteral("Der Druckauftrag '%1' konnte nicht abgeschlossen werden.").arg(page.jobName);
        return false;
    }
    return true;
}
