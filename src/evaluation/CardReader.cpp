// Reading a page. The card's outline is a rounded frame whose top edge is the first long straight
// run of ink on the page (the form's other rules are half as long); where it lies tells the layout
// and the shift. The regions are then read one by one as single lines, the characters narrowed
// where the layout fixes them.
#include "CardReader.h"

#include "CardLayouts.h"

#include <leptonica/allheaders.h>
#include <tesseract/baseapi.h>
#include <tesseract/resultiterator.h>

#include <QFileInfo>

#include <cstdlib>

namespace evaluation {

namespace {

constexpr int pageDpi = 200;
// A run of ink at least this long is a card edge: the card is 1160 px wide or more, the longest
// other rule of the form about 650 px.
constexpr int minEdgeRun = 850;
// Where the top edge's straight run begins against the card's outline (the rounded corner), and
// the first inked row of the edge against the outline (the frame's pen is centred on it).
constexpr int cornerInset = 30;
constexpr int edgeAbove = 2;
// How far a form may be shifted and still be recognised.
constexpr int maxShift = 150;

struct PixDeleter {
    void operator()(Pix* p) const { pixDestroy(&p); }
};
using PixPtr = std::unique_ptr<Pix, PixDeleter>;

// The page as 8-bit grey at 200 dpi, straightened.
PixPtr loadPage(const QString& path, QString* error) {
    PixPtr raw(pixRead(QFile::encodeName(path).constData()));
    if (!raw) {
        *error = QStringLiteral("Das Bild '%1' kann nicht gelesen werden.").arg(path);
        return {};
    }
    PixPtr grey(pixConvertTo8(raw.get(), 0));
    if (!grey) {
        *error = QStringLiteral("Das Bild '%1' hat ein unbekanntes Format.").arg(path);
        return {};
    }
    const int dpi = pixGetXRes(raw.get());
    if (dpi > 0 && std::abs(dpi - pageDpi) > 5) {
        const float factor = float(pageDpi) / float(dpi);
        grey.reset(pixScaleGrayLI(grey.get(), factor, factor));
    }
    PixPtr straight(pixDeskew(grey.get(), 0));
    if (straight)
        grey = std::move(straight);
    pixSetResolution(grey.get(), pageDpi, pageDpi);
    return grey;
}

struct Edge {
    int left = -1, top = -1;
};

// The first row holding a run of ink of at least minEdgeRun pixels, and where the run starts.
Edge findTopEdge(Pix* grey) {
    const int w = int(pixGetWidth(grey)), h = int(pixGetHeight(grey));
    const int wpl = pixGetWpl(grey);
    l_uint32* data = pixGetData(grey);
    for (int y = 0; y < h; ++y) {
        l_uint32* line = data + y * wpl;
        int runStart = -1;
        for (int x = 0; x <= w; ++x) {
            const bool ink = x < w && GET_DATA_BYTE(line, x) < 128;
            if (ink && runStart < 0)
                runStart = x;
            if (!ink && runStart >= 0) {
                if (x - runStart >= minEdgeRun)
                    return {runStart, y};
                runStart = -1;
            }
        }
    }
    return {};
}

const char* whitelistOf(Content content) {
    switch (content) {
    case Content::Digits:
        return "0123456789";
    case Content::Date:
        return "0123456789/";
    case Content::StateCode:
        return "ABCDEFGHIJKLMNOPQRSTUVWXYZ";
    case Content::ReceiptDate:
        return "0123456789.";
    case Content::Text:
    case Content::Name:
    case Content::Heading:
        break;
    }
    return "";
}

// Names hold letters of any alphabet, blanks, hyphens, apostrophes and abbreviating dots; the
// engine's whitelist cannot say "any letter", so anything else it reads in a name is a smudge or a
// frame mark and is written as unreadable.
bool possibleInName(const QString& symbol) {
    for (const QChar c : symbol)
        if (!c.isLetter() && !c.isMark() && c != QLatin1Char('-') && c != QLatin1Char('\'') && c != QLatin1Char('.') &&
            c != QChar(0x2019))
            return false;
    return true;
}

} // namespace

CardReader::CardReader(double minConfidence, const QString& separator)
    : api_(std::make_unique<tesseract::TessBaseAPI>()), minConfidence_(minConfidence), separator_(separator) {
    if (api_->Init(nullptr, "Latin", tesseract::OEM_LSTM_ONLY) != 0) {
        error_ = QStringLiteral("Tesseract kann das Schriftmodell 'Latin' nicht laden.");
        api_.reset();
        return;
    }
    api_->SetVariable("debug_file", "/dev/null");
}

CardReader::~CardReader() {
    if (api_)
        api_->End();
}

bool CardReader::ready() const {
    return api_ != nullptr;
}

QString CardReader::error() const {
    return error_;
}

QString CardReader::escaped(const QString& symbol) const {
    for (const QChar c : symbol)
        if (c == QLatin1Char('\\') || c.category() == QChar::Other_Control || separator_.contains(c))
            return QStringLiteral("\\f");
    return symbol;
}

QString CardReader::readRegion(int x, int y, int dx, int dy, Content content) {
    api_->SetVariable("tessedit_char_whitelist", whitelistOf(content));
    api_->SetRectangle(x, y, dx, dy);
    if (api_->Recognize(nullptr) != 0)
        return {};
    QString text;
    std::unique_ptr<tesseract::ResultIterator> it(api_->GetIterator());
    if (!it)
        return {};
    do {
        std::unique_ptr<char[]> symbol(it->GetUTF8Text(tesseract::RIL_SYMBOL));
        if (!symbol)
            continue;
        if (it->IsAtBeginningOf(tesseract::RIL_WORD) && !text.isEmpty())
            text += QLatin1Char(' ');
        const QString s = QString::fromUtf8(symbol.get());
        const bool doubtful =
            it->Confidence(tesseract::RIL_SYMBOL) < minConfidence_ || (content == Content::Name && !possibleInName(s));
        text += doubtful ? QStringLiteral("\\f") : escaped(s);
    } while (it->Next(tesseract::RIL_SYMBOL));
    return text;
}

PageReading CardReader::readPage(const QString& path) {
    PageReading reading;
    PixPtr page = loadPage(path, &reading.error);
    if (!page)
        return reading;
    const Edge edge = findTopEdge(page.get());
    const CardLayout* layout = nullptr;
    for (const CardLayout& candidate : cardLayouts()) {
        const int dx = edge.left - cornerInset - candidate.card.x, dy = edge.top + edgeAbove - candidate.card.y;
        if (edge.top >= 0 && std::abs(dx) <= maxShift && std::abs(dy) <= maxShift) {
            layout = &candidate;
            reading.offsetX = dx;
            reading.offsetY = dy;
        }
    }
    if (!layout)
        return reading;
    reading.typ = layout->typ;
    api_->SetPageSegMode(tesseract::PSM_SINGLE_LINE);
    api_->SetImage(page.get());
    api_->SetSourceResolution(pageDpi);
    const auto read = [&](const Region& r, Content content) {
        return readRegion(r.x + reading.offsetX, r.y + reading.offsetY, r.dx, r.dy, content);
    };
    for (const CardLine& line : layout->lines) {
        QStringList parts;
        for (const LinePart& part : line)
            parts << read(part.region, part.content);
        reading.lines << parts.join(QStringLiteral("      "));
    }
    const QString stamp = read(layout->receiptDate, Content::ReceiptDate);
    reading.receiptDate = QDate::fromString(stamp, QStringLiteral("dd.MM.yyyy"));
    api_->Clear();
    return reading;
}

} // namespace evaluation
