// SPDX-License-Identifier: Apache-2.0
// Reads the card on one scanned form page: straightens the page, finds the card's outline and with
// it the layout (4 or 5) and the form's shift against the defined layout, and reads the card's
// lines with Tesseract (LSTM, the Latin script model that knows every EU alphabet). Characters the
// engine is not sure of are written as the escape code "\f", which the import turns into "?".
// One reader holds one engine: use one reader per thread.
#pragma once

#include "CardChecks.h"
#include "CardLayouts.h"
#include <QDate>

#include <QString>
#include <QStringList>

#include <memory>
#include <vector>

namespace tesseract {
class TessBaseAPI;
}
struct Pix;

namespace evaluation {

// What a page gave.
struct PageReading {
    int typ = 0;     // 4 or 5; 0 when no card was found
    int offsetX = 0; // the form's shift against its layout, in pixels at 200 dpi
    int offsetY = 0;
    QDate receiptDate; // the date in the receipt stamp; invalid when not readable
    QStringList lines; // the card's raw lines (6 for layout 4, 7 for layout 5), escapes in
    // per line, for each "\f" in it in order, the characters the engine saw there, best first
    // (empty where it has none)
    std::vector<std::vector<QStringList>> alternatives;
    QString error; // why the page could not be read at all (file unreadable)
};

class CardReader {
public:
    // minConfidence: characters with a lower confidence (0..100, LSTM confidences of clean print lie
    // between 96 and 99.7) are written as "\f"; 0 writes
    // every character as read. separator: the result file's separator, never written inside a value.
    CardReader(double minConfidence, const QString& separator);
    ~CardReader();
    CardReader(const CardReader&) = delete;
    CardReader& operator=(const CardReader&) = delete;

    // False, with the reason in error(), when the engine or its Latin model could not be loaded.
    bool ready() const;
    QString error() const;

    // Reads the page in the TIFF file at path (bitonal or grey, any resolution; the first page).
    PageReading readPage(const QString& path);

private:
    // One character as the engine read it, with the others it considered there, best first; a
    // blank between words has confidence 100.
    struct Symbol {
        QString text;
        float confidence;
        QStringList choices = {};
        float rival = 0; // the weight of the same letter in the other case among the choices (0..100)
    };
    // Reads the image and rectangle set on the engine as one line; scale: the image's enlargement
    // against the page at 200 dpi.
    std::vector<Symbol> recognise(Content content, double scale);
    // The symbols as the result file takes them, doubtful ones as "\f" with their choices.
    ReadPart written(const std::vector<Symbol>& symbols, Content content) const;
    QString escaped(const QString& symbol) const;

    std::unique_ptr<tesseract::TessBaseAPI> api_;
    double minConfidence_;
    QString separator_;
    QString error_;
};

} // namespace evaluation
