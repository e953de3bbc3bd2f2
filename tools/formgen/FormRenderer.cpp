// SPDX-License-Identifier: Apache-2.0
// Painting of the demo form. The page is drawn in grey with smooth type and then cut to black and
// white at the middle grey, which gives the look of a bitonal scan.
#include "FormRenderer.h"

#include <QFont>
#include <QFontMetrics>
#include <QPainter>
#include <QPainterPath>

using formlayout::Box;
using formlayout::Layout;

namespace {

constexpr double inchesPerMetre = 39.3700787;
const QString fontFamily = QStringLiteral("Liberation Sans");
constexpr int valuePixels = 40;   // type size of the values, about 14 pt at 200 dpi
constexpr int captionPixels = 20; // the small captions above the values
constexpr int valuePadding = 8;   // space between a region's edge and its value

QRect toRect(const Box& b) {
    return QRect(b.x, b.y, b.dx, b.dy);
}

QFont font(int pixels, bool bold = false) {
    QFont f(fontFamily);
    f.setPixelSize(pixels);
    f.setBold(bold);
    f.setStyleHint(QFont::SansSerif);
    return f;
}

QString fromView(std::string_view text) {
    return QString::fromUtf8(text.data(), qsizetype(text.size()));
}

// The value, left-aligned and centred vertically in its region; the type shrinks until the text
// fits between the paddings.
void drawValue(QPainter& p, const QRect& region, const QString& text) {
    int pixels = valuePixels;
    QFont f = font(pixels);
    while (pixels > 12 && QFontMetrics(f).horizontalAdvance(text) > region.width() - 2 * valuePadding) {
        --pixels;
        f = font(pixels);
    }
    p.setFont(f);
    p.drawText(region.adjusted(valuePadding, 0, -valuePadding, 0), Qt::AlignLeft | Qt::AlignVCenter, text);
}

// The caption sits just above the region, or above the printed frame of a framed field.
void drawCaption(QPainter& p, const QRect& region, const QString& caption, int gap) {
    p.setFont(font(captionPixels));
    const QRect line(region.left() + valuePadding, region.top() - captionPixels - gap, region.width(),
                     captionPixels + 4);
    p.drawText(line, Qt::AlignLeft | Qt::AlignBottom, caption);
}

void drawCard(QPainter& p, const Layout& layout) {
    const QRect card = toRect(layout.card);
    p.setPen(QPen(Qt::black, 4));
    p.setBrush(Qt::NoBrush);
    p.drawRoundedRect(card, 36, 36);
    p.setFont(font(34, true));
    p.setPen(Qt::black);
    const QRect title(card.left() + 40, card.top() + 24, card.width() - 80, 50);
    p.drawText(title, Qt::AlignLeft | Qt::AlignVCenter, QStringLiteral("EUROPÄISCHE KRANKENVERSICHERUNGSKARTE"));
    p.setPen(QPen(Qt::black, 3));
    p.drawLine(card.left() + 40, card.top() + 84, card.right() - 40, card.top() + 84);
}

void drawHeading(QPainter& p, const Layout& layout) {
    p.setPen(Qt::black);
    p.setFont(font(40, true));
    p.drawText(toRect(layout.title), Qt::AlignLeft | Qt::AlignVCenter,
               QStringLiteral("Nachweis des Krankenversicherungsschutzes"));
    p.setFont(font(26));
    p.drawText(toRect(layout.notes), Qt::AlignLeft | Qt::AlignTop | Qt::TextWordWrap,
               QStringLiteral("Bitte kopieren Sie die Vorderseite Ihrer Europäischen Krankenversicherungskarte "
                              "vollständig in das Kartenfeld. Die Angaben werden maschinell gelesen; bitte "
                              "schreiben Sie nichts in das Kartenfeld und knicken Sie den Vordruck nicht.\n\n"
                              "Mit meiner Unterschrift bestätige ich, dass die Karte am Tag der Behandlung "
                              "gültig war und auf meinen Namen ausgestellt ist."));
    const QRect sign = toRect(layout.signature);
    const int lineY = sign.bottom() - 40;
    const int half = sign.width() / 2;
    p.setPen(QPen(Qt::black, 2));
    p.drawLine(sign.left(), lineY, sign.left() + half - 60, lineY);
    p.drawLine(sign.left() + half, lineY, sign.right(), lineY);
    p.setFont(font(22));
    p.drawText(QRect(sign.left(), lineY + 6, half, 30), Qt::AlignLeft | Qt::AlignTop, QStringLiteral("Ort, Datum"));
    p.drawText(QRect(sign.left() + half, lineY + 6, half, 30), Qt::AlignLeft | Qt::AlignTop,
               QStringLiteral("Unterschrift der versicherten Person"));
    p.setFont(font(20));
    p.drawText(QRect(150, formlayout::pageHeight - 60, 1350, 30), Qt::AlignLeft | Qt::AlignVCenter,
               QStringLiteral("Vordruck %1 · Bitte nur mit der Karte einreichen").arg(layout.typ));
}

// The two fields outside the card sit in printed boxes: the form number and the receipt stamp.
// The frame lies outside the region so that the region holds the value alone.
void drawFieldFrame(QPainter& p, const QRect& region, bool stamp) {
    p.setBrush(Qt::NoBrush);
    p.setPen(QPen(Qt::black, stamp ? 4 : 2));
    const QRect frame = region.adjusted(-10, -10, 10, 10);
    if (stamp)
        p.drawRoundedRect(frame, 14, 14);
    else
        p.drawRect(frame);
}

} // namespace

QString printedValue(std::string_view field, const QString& value) {
    if (field == "GEBDAT" || field == "CARD_EXPIRY") {
        QString date = value;
        return date.replace(QLatin1Char('.'), QLatin1Char('/'));
    }
    return value;
}

QImage renderForm(const Layout& layout, const QHash<QString, QString>& values) {
    QImage page(formlayout::pageWidth, formlayout::pageHeight, QImage::Format_Grayscale8);
    page.fill(Qt::white);
    const int dotsPerMetre = qRound(formlayout::pageDpi * inchesPerMetre);
    page.setDotsPerMeterX(dotsPerMetre);
    page.setDotsPerMeterY(dotsPerMetre);
    {
        QPainter p(&page);
        p.setRenderHint(QPainter::Antialiasing);
        p.setRenderHint(QPainter::TextAntialiasing);
        drawHeading(p, layout);
        drawCard(p, layout);
        for (const auto& field : layout.fields) {
            const QRect region = toRect(field.box);
            const bool framed = field.field == "FORM_ID" || field.field == "SCANDAT";
            if (framed)
                drawFieldFrame(p, region, field.field == "SCANDAT");
            p.setPen(Qt::black);
            drawCaption(p, region, fromView(field.caption), framed ? 20 : 8);
            const QString value = values.value(fromView(field.field));
            if (!value.isEmpty())
                drawValue(p, region, printedValue(field.field, value));
        }
    }
    QImage bitonal = page.convertToFormat(QImage::Format_Mono, Qt::ThresholdDither | Qt::MonoOnly);
    bitonal.setDotsPerMeterX(dotsPerMetre);
    bitonal.setDotsPerMeterY(dotsPerMetre);
    return bitonal;
}
