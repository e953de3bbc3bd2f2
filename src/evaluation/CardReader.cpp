// SPDX-License-Identifier: Apache-2.0
// Reading a page. The card's outline is a rounded frame whose top edge is the first long straight
// run of ink on the page (the form's other rules are half as long); where it lies tells the layout
// and the shift. The regions are then read one by one as single lines, the characters narrowed
// where the layout fixes them, each a second time enlarged from the grey page; the card's rules
// (CardChecks) judge the result.
#include "CardReader.h"

#include "CardChecks.h"
#include "CardLayouts.h"

#include <leptonica/allheaders.h>
#include <tesseract/baseapi.h>
#include <tesseract/resultiterator.h>

#include <QFileInfo>

#include <algorithm>
#include <cstdio>
#include <cstdlib>

namespace evaluation {

namespace {

constexpr int pageDpi = 200;
// A run of ink at least this long is a card edge: the card is 1160 px wide or more, the longest
// other rule of the form about 650 px.
constexpr int minEdgeRun = 850;
// The shortest straight run of the card's left side (the card is 660 px high or more).
constexpr int minSideRun = 450;
// The first inked row and column of the frame against the outline: the frame's pen is centred on it.
constexpr int edgeOutside = 2;
// How far a form may be shifted and still be recognised.
constexpr int maxShift = 150;
// The widest gap between the words of one value: about two letters of the card's type.
constexpr int maxWordGap = 45;
// The narrowest gap between two characters that is a blank (a blank of the card's type is about 11
// pixels, the space between letters 2 to 5).
constexpr int minBlank = 9;

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

// Whether the bitonal page holds ink at (x, y) or at a neighbour across the line's direction, so
// that an edge drifting by a pixel along its length stays one run.
bool inkNear(Pix* bitonal, int x, int y, bool horizontal) {
    const int wpl = pixGetWpl(bitonal);
    l_uint32* data = pixGetData(bitonal);
    for (int d = -1; d <= 1; ++d) {
        const int px = horizontal ? x : x + d, py = horizontal ? y + d : y;
        if (GET_DATA_BIT(data + py * wpl, px))
            return true;
    }
    return false;
}

// Whether the line at position `at` (a row when horizontal, else a column) holds, between from and
// to, a run of ink at least minLength long. Gaps of a few pixels (toner loss) do not end a run, but
// a run must be nearly all ink: lines of text have far more white between their letters.
bool holdsEdge(Pix* bitonal, int at, int from, int to, int minLength, bool horizontal) {
    constexpr int maxGap = 6;
    int runStart = -1, lastInk = -1, inkCount = 0;
    for (int p = from; p < to; ++p) {
        if (!(horizontal ? inkNear(bitonal, p, at, true) : inkNear(bitonal, at, p, false)))
            continue;
        if (runStart < 0 || p - lastInk > maxGap) {
            runStart = p;
            inkCount = 0;
        }
        lastInk = p;
        ++inkCount;
        if (lastInk - runStart >= minLength && inkCount * 10 >= (lastInk - runStart) * 9)
            return true;
    }
    return false;
}

struct Edge {
    int left = -1, top = -1;
};

// The card's top left corner as the first rows and columns of its frame: the first row holding a
// run of ink as long as the card is wide, and below it the first column holding one as long as the
// card's side (the rounded corners shorten both runs).
Edge findCard(Pix* bitonal) {
    const int w = int(pixGetWidth(bitonal)), h = int(pixGetHeight(bitonal));
    Edge edge;
    for (int y = 1; y < h - 1 && edge.top < 0; ++y)
        if (holdsEdge(bitonal, y, 0, w, minEdgeRun, true))
            edge.top = y + 1;
    if (edge.top < 0)
        return {};
    const int bottom = std::min(h, edge.top + 600);
    for (int x = 1; x < w - 1 && edge.left < 0; ++x)
        if (holdsEdge(bitonal, x, edge.top, bottom, minSideRun, false))
            edge.left = x + 1;
    return edge.left < 0 ? Edge{} : edge;
}

const char* whitelistOf(Content content) {
    switch (content) {
    case Content::CardNumber:
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

// Names hold letters of any alphabet, blanks between names, hyphens, apostrophes and abbreviating
// dots; the engine's whitelist cannot say "any letter", so anything else it reads in a name is a
// smudge or a frame mark and is written as unreadable.
bool possibleInName(const QString& symbol) {
    for (const QChar c : symbol)
        if (!c.isLetter() && !c.isMark() && !QStringView(u" -'.\u2019").contains(c))
            return false;
    return true;
}

// The weight (the choice iterator's confidence, 0..100; the chosen character has about 93) from
// which the same letter in the other case makes a character doubtful even where both reads agree on
// it: capital and small š, ž, c, o, s, v, w, x, z differ only in size, which the engine judges
// from the line's other letters, and an acronym in mixed case misleads it.
constexpr float rivalLimit = 30.0f;
// Letters whose capital and small forms differ only in size.
const QString sizeOnly = QStringLiteral(u"cćčoóöőôõøsśšşșuúüůűvwxzźżž");
// Confidences of merged characters: two reads that differ, and two that agree on a close call.
constexpr float disagreement = -1.0f;
constexpr float closeCall = -2.0f;

// The second and third reads' enlargements.
constexpr double secondScale = 1.5;
constexpr double thirdScale = 2.0;

// Whether two readings are the same letter: s and t with cedilla or comma below are one letter in
// Romanian, the only alphabet here that has either (the card's rules then write the comma).
bool sameLetter(const QString& a, const QString& b) {
    static const QString cedilla = QStringLiteral(u"şŞţŢ"), comma = QStringLiteral(u"șȘțȚ");
    const auto folded = [](QString t) {
        for (qsizetype k = 0; k < cedilla.size(); ++k)
            t.replace(cedilla[k], comma[k]);
        return t;
    };
    return a == b || folded(a) == folded(b);
}

// The two reads of one part merged: a character both read alike stands (two reads at different
// grains rarely make the same mistake); where they differ, it is doubtful, and both readings with
// everything else either read considered there are its choices. Reads of different lengths cannot
// be set side by side: the first stands, judged by its confidences.
template <typename Symbols> Symbols agreed(const Symbols& first, const Symbols& second) {
    if (first.size() != second.size())
        return first;
    Symbols out = first;
    for (size_t i = 0; i < out.size(); ++i) {
        if (sameLetter(out[i].text, second[i].text)) {
            // Both agree, but where the engine gave the other case nearly as much weight in either
            // read to a letter whose cases differ only in size, after a capital (inside an
            // acronym, where the line's other letters cannot tell its size), it is a coin toss:
            // marked. At a word's start the case is known, and after a small letter the engine
            // judges it well.
            const bool afterCapital = i > 0 && first[i - 1].text.size() == 1 && first[i - 1].text[0].isUpper();
            const bool close = afterCapital && sizeOnly.contains(first[i].text.toLower()) &&
                               std::max(first[i].rival, second[i].rival) >= rivalLimit;
            out[i].confidence = close ? closeCall : 100.0f;
            for (const QString& c : second[i].choices)
                if (!out[i].choices.contains(c))
                    out[i].choices << c;
            continue;
        }
        out[i].confidence = disagreement;
        QStringList choices{first[i].text, second[i].text};
        for (const QString& c : first[i].choices + second[i].choices)
            if (!choices.contains(c))
                choices << c;
        out[i].choices = choices;
    }
    return out;
}

// The letter without its diacritics.
QString baseLetter(const QString& c) {
    const QString d = c.normalized(QString::NormalizationForm_D);
    return d.isEmpty() ? c : d.left(1);
}

// Where two reads differed (merged, confidence below 0), a sure third read (at least minConfidence)
// of the same length that sides with one of them decides, except between a letter and the same
// letter with another diacritic: the larger the image, the more the engine drops small accents, so
// there the mark stays. Otherwise the third reading joins the choices.
template <typename Symbols> Symbols decided(const Symbols& merged, const Symbols& third, double minConfidence) {
    if (third.size() != merged.size())
        return merged;
    Symbols out = merged;
    for (size_t i = 0; i < out.size(); ++i) {
        if (out[i].confidence != disagreement)
            continue;
        const QStringList both = out[i].choices.mid(0, 2);
        const bool accentOnly = both.size() == 2 && baseLetter(both[0]) == baseLetter(both[1]);
        if (both.contains(third[i].text) && third[i].confidence >= minConfidence && !accentOnly) {
            out[i].text = third[i].text;
            out[i].confidence = 100.0f;
        } else if (!out[i].choices.contains(third[i].text)) {
            out[i].choices.insert(2, third[i].text);
        }
    }
    return out;
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
    // Keep the network's candidates per symbol, so that a doubtful character comes with the others
    // the engine considered there.
    api_->SetVariable("lstm_choice_mode", "2");
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

std::vector<CardReader::Symbol> CardReader::recognise(Content content, double scale) {
    api_->SetVariable("tessedit_char_whitelist", whitelistOf(content));
    std::vector<Symbol> symbols;
    if (api_->Recognize(nullptr) != 0)
        return symbols;
    std::unique_ptr<tesseract::ResultIterator> it(api_->GetIterator());
    if (!it)
        return symbols;
    int lastRight = -1;
    do {
        std::unique_ptr<char[]> symbol(it->GetUTF8Text(tesseract::RIL_SYMBOL));
        if (!symbol)
            continue;
        // A value is one run of words; anything after a gap wider than a few letters is a stain or
        // the card's print beside the value. A blank goes where the engine starts a word or where
        // the gap between two characters is as wide as a blank of the card's type (the engine
        // glues "1 -" into one word).
        int left = 0, top = 0, right = 0, bottom = 0;
        it->BoundingBox(tesseract::RIL_SYMBOL, &left, &top, &right, &bottom);
        if (lastRight >= 0 && left - lastRight > maxWordGap * scale)
            break;
        if (!symbols.empty() && (it->IsAtBeginningOf(tesseract::RIL_WORD) || left - lastRight >= minBlank * scale))
            symbols.push_back({QStringLiteral(" "), 100.0f});
        lastRight = right;
        Symbol read{QString::fromUtf8(symbol.get()), it->Confidence(tesseract::RIL_SYMBOL)};
        // The engine's other candidates for this very symbol, best first.
        tesseract::ChoiceIterator choice(*it);
        do {
            const char* text = choice.GetUTF8Text();
            const QString c = text ? QString::fromUtf8(text).trimmed() : QString();
            if (!c.isEmpty() && c != read.text && !read.choices.contains(c)) {
                read.choices << c;
                if (c.toLower() == read.text.toLower())
                    read.rival = std::max(read.rival, choice.Confidence());
            }
        } while (choice.Next());
        symbols.push_back(read);
    } while (it->Next(tesseract::RIL_SYMBOL));
    return symbols;
}

ReadPart CardReader::written(const std::vector<Symbol>& symbols, Content content) const {
    ReadPart part{content, QString()};
    for (const Symbol& s : symbols) {
        const bool doubtful = s.confidence < minConfidence_ || (content == Content::Name && !possibleInName(s.text));
        const QString text = doubtful ? QStringLiteral("\\f") : escaped(s.text);
        // One entry per character of the text: the symbol's own reading first, then the others.
        QStringList choices{s.text};
        for (const QString& c : s.choices)
            if (!choices.contains(c))
                choices << c;
        part.choices.push_back(choices);
        for (qsizetype i = 1; i < charactersOf(text).size(); ++i)
            part.choices.emplace_back();
        part.text += text;
    }
    return part;
}

PageReading CardReader::readPage(const QString& path) {
    PageReading reading;
    PixPtr page = loadPage(path, &reading.error);
    if (!page)
        return reading;
    // The engine and the edge search work on a clean black-and-white page: cut at the middle grey,
    // specks dropped (components no larger than 2 x 2 pixels; the dot of an i or an umlaut is larger).
    PixPtr bitonal(pixConvertTo1(page.get(), 128));
    PixPtr clean(bitonal ? pixSelectBySize(bitonal.get(), 2, 2, 8, L_SELECT_IF_EITHER, L_SELECT_IF_GT, nullptr)
                         : nullptr);
    if (!clean) {
        reading.error = QStringLiteral("Das Bild '%1' ist nicht auswertbar.").arg(path);
        return reading;
    }
    const Edge edge = findCard(clean.get());
    const CardLayout* layout = nullptr;
    for (const CardLayout& candidate : cardLayouts()) {
        const int dx = edge.left + edgeOutside - candidate.card.x, dy = edge.top + edgeOutside - candidate.card.y;
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
    api_->SetImage(clean.get());
    api_->SetSourceResolution(pageDpi);
    const auto shifted = [&](const Region& r) {
        return Region{r.x + reading.offsetX, r.y + reading.offsetY, r.dx, r.dy};
    };
    const auto readOnPage = [&](const Region& r, Content content) {
        const Region at = shifted(r);
        api_->SetRectangle(at.x, at.y, at.dx, at.dy);
        return recognise(content, 1.0);
    };
    std::vector<std::pair<const LinePart*, std::vector<Symbol>>> firstReads;
    for (const CardLine& line : layout->lines)
        for (const LinePart& part : line)
            firstReads.emplace_back(&part, readOnPage(part.region, part.content));
    const QString stamp = written(readOnPage(layout->receiptDate, Content::ReceiptDate), Content::ReceiptDate).text;
    reading.receiptDate = QDate::fromString(stamp, QStringLiteral("dd.MM.yyyy"));

    // A second read of each part, enlarged from the grey page and cut anew, sees the strokes at
    // another grain: where the two reads differ, neither is trusted, unless a third read, larger
    // still, sides surely with one of them.
    const auto readEnlarged = [&](const LinePart& part, double scale) {
        const Region at = shifted(part.region);
        BOX* box = boxCreate(at.x, at.y, at.dx, at.dy);
        PixPtr clip(pixClipRectangle(page.get(), box, nullptr));
        boxDestroy(&box);
        PixPtr large(clip ? pixScaleGrayLI(clip.get(), float(scale), float(scale)) : nullptr);
        PixPtr cut(large ? pixConvertTo1(large.get(), 128) : nullptr);
        if (!cut)
            return std::vector<Symbol>{};
        api_->SetImage(cut.get());
        api_->SetSourceResolution(int(pageDpi * scale));
        return recognise(part.content, scale);
    };
    std::vector<ReadPart> parts;
    for (auto& [part, first] : firstReads) {
        if (minConfidence_ > 0) {
            const std::vector<Symbol> second = readEnlarged(*part, secondScale);
            std::vector<Symbol> merged = agreed(first, second);
            const bool doubt =
                first.size() != second.size() ||
                std::any_of(merged.begin(), merged.end(), [](const Symbol& s) { return s.confidence < 0; });
            if (doubt && first.size() == second.size())
                merged = decided(merged, readEnlarged(*part, thirdScale), minConfidence_);
            first = merged;
        }
        parts.push_back(written(first, part->content));
    }
    // All parts are read before any is judged: the card's rules tie the state code, the card
    // number and the names together.
    std::vector<ReadPart*> all;
    for (ReadPart& part : parts)
        all.push_back(&part);
    if (minConfidence_ > 0)
        checkCard(all);
    size_t next = 0;
    for (const CardLine& line : layout->lines) {
        QStringList texts;
        std::vector<QStringList> marks;
        for (size_t i = 0; i < line.size(); ++i, ++next) {
            texts << parts[next].text;
            const QStringList chars = charactersOf(parts[next].text);
            for (qsizetype c = 0; c < chars.size(); ++c)
                if (chars[c] == QLatin1String("\\f"))
                    marks.push_back(size_t(c) < parts[next].choices.size() ? parts[next].choices[size_t(c)]
                                                                           : QStringList());
        }
        reading.lines << texts.join(QStringLiteral("      "));
        reading.alternatives.push_back(marks);
    }
    api_->Clear();
    return reading;
}

} // namespace evaluation
