// SPDX-License-Identifier: Apache-2.0
// The options the printing commands share: --pdf DIR (PDF files instead of the printer) and
// --report (the answer to the report-choice question). Installs the matching back end and answer
// for the command's run and removes them afterwards.
#pragma once

#include "CliCommand.h"
#include "print/PdfReportPrinter.h"
#include "print/QtReportPrinter.h"
#include "print/ReportChoice.h"

#include <memory>

class ReportOptions {
public:
    // Takes --pdf and --report from the arguments. False (with the problem set) for a bad value.
    bool parse(QStringList& args, QString& problem);
    // Installs the back end and the answer; they stay until the object is destroyed.
    void install();
    ~ReportOptions();

    // The PDF files written, when --pdf was given.
    QStringList pdfFiles() const { return pdf_ ? pdf_->writtenFiles() : QStringList(); }
    const QString& pdfFolder() const { return pdfFolder_; }

private:
    QString pdfFolder_;
    FixedReportChoice choice_;
    std::unique_ptr<PdfReportPrinter> pdf_;
    std::unique_ptr<QtReportPrinter> printer_;
    bool installed_ = false;
};

// The usage text of the two options.
inline constexpr const char* reportOptionsUsage = "[--pdf ORDNER] [--report ambulant|stationaer|kein]";
