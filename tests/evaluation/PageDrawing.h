// SPDX-License-Identifier: Apache-2.0
// Form pages for the reading tests: the demo form drawn with given values, shifted on the sheet as
// a sloppy feed does, smudged, and written as a group 4 TIFF the way the scanner stores it.
#pragma once

#include "FormRenderer.h"
#include "TiffWriter.h"

#include <QImage>
#include <QPainter>
#include <QRect>

// A card number as the state issues it: "80", the state's ISO 3166-1 numeric code, then the serial.
inline QString cardNumberOf(const QString& state) {
    static const QHash<QString, QString> codes{{"AT", "040"}, {"CZ", "203"}, {"DE", "276"}, {"HU", "348"},
                                               {"IS", "352"}, {"PL", "616"}, {"RO", "642"}};
    return "80" + codes.value(state, "616") + "000000012345678";
}

// The values of a card; dates as DD.MM.YYYY.
inline QHash<QString, QString> cardValues(const QString& state, const QString& surname, const QString& given) {
    return {{"SCANDAT", "15.11.2026"},
            {"FORM_ID", "E-111N"},
            {"STATE", state},
            {"NACHNAME", surname},
            {"VORNAME", given},
            {"GEBDAT", "03.07.1961"},
            {"PERSONAL_ID", "7801012345"},
            {"INSTITUT_ID", "0110 - NFZ Warszawa"},
            {"CARD_ID", cardNumberOf(state)},
            {"CARD_EXPIRY", "31.03.2027"}};
}

// page moved by (dx, dy) on a white sheet, with ink blots (filled rectangles) painted over it.
inline QImage shiftedPage(const QImage& page, int dx, int dy, const QList<QRect>& blots = {}) {
    QImage grey(page.size(), QImage::Format_Grayscale8);
    grey.fill(Qt::white);
    {
        QPainter p(&grey);
        p.drawImage(dx, dy, page.convertToFormat(QImage::Format_Grayscale8));
        for (const QRect& r : blots)
            p.fillRect(r, Qt::black);
    }
    QImage mono = grey.convertToFormat(QImage::Format_Mono, Qt::ThresholdDither | Qt::MonoOnly);
    mono.setDotsPerMeterX(page.dotsPerMeterX());
    mono.setDotsPerMeterY(page.dotsPerMeterY());
    return mono;
}
