// SPDX-License-Identifier: Apache-2.0
// Reading printed reports back: the PDF files of the PDF back end, through poppler's command-line
// tools, as a person checking a printout would (page size, words and where they stand, fonts).
#pragma once

#include <QProcess>
#include <QRegularExpression>
#include <QString>
#include <QVector>

struct PdfWord {
    QString text;
    double xMin = 0;
    double yMin = 0;
};

struct PdfPage {
    double width = 0; // points
    double height = 0;
    QVector<PdfWord> words;
    bool landscape() const { return width > height; }
    // The first word with that text, or nullptr.
    const PdfWord* find(const QString& text) const {
        for (const PdfWord& w : words)
            if (w.text == text)
                return &w;
        return nullptr;
    }
};

inline QString runTool(const QString& program, const QStringList& args) {
    QProcess process;
    process.start(program, args);
    process.waitForFinished(60000);
    return QString::fromUtf8(process.readAllStandardOutput());
}

// Every page of a PDF file with its words ("pdftotext -bbox").
inline QVector<PdfPage> readPdf(const QString& path) {
    const QString html = runTool(QStringLiteral("pdftotext"), {QStringLiteral("-bbox"), path, QStringLiteral("-")});
    static const QRegularExpression pageTag(QStringLiteral("<page width=\"([0-9.]+)\" height=\"([0-9.]+)\">"));
    static const QRegularExpression wordTag(
        QStringLiteral("<word xMin=\"([0-9.]+)\" yMin=\"([0-9.]+)\" xMax=\"[0-9.]+\" yMax=\"[0-9.]+\">([^<]*)</word>"));
    QVector<PdfPage> pages;
    for (const QString& chunk : html.split(QStringLiteral("<page "), Qt::SkipEmptyParts).mid(1)) {
        const auto p = pageTag.match(QStringLiteral("<page ") + chunk);
        if (!p.hasMatch())
            continue;
        PdfPage page{p.captured(1).toDouble(), p.captured(2).toDouble(), {}};
        auto words = wordTag.globalMatch(chunk);
        while (words.hasNext()) {
            const auto w = words.next();
            page.words.push_back({w.captured(3), w.captured(1).toDouble(), w.captured(2).toDouble()});
        }
        pages.push_back(page);
    }
    return pages;
}

// Millimetres on the page in PDF points.
inline double points(double mm) {
    return mm * 72.0 / 25.4;
}
