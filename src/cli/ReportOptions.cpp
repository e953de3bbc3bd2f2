// SPDX-License-Identifier: Apache-2.0
#include "ReportOptions.h"

#include <QDir>

bool ReportOptions::parse(QStringList& args, QString& problem) {
    QString report = QStringLiteral("kein");
    if (!takeOption(args, QStringLiteral("--pdf"), pdfFolder_) ||
        !takeOption(args, QStringLiteral("--report"), report)) {
        problem = QStringLiteral("Wert fehlt hinter --pdf oder --report");
        return false;
    }
    report = report.toLower();
    if (report == QLatin1String("ambulant"))
        choice_.setAnswer(ReportType::Ambulant);
    else if (report == QLatin1String("stationaer") || report == QStringLiteral("stationär"))
        choice_.setAnswer(ReportType::Stationaer);
    else if (report == QLatin1String("kein"))
        choice_.setAnswer(ReportType::None);
    else {
        problem = QStringLiteral("--report erwartet ambulant, stationaer oder kein");
        return false;
    }
    if (!pdfFolder_.isEmpty())
        pdfFolder_ = QDir(pdfFolder_).absolutePath();
    return true;
}

void ReportOptions::install() {
    if (!pdfFolder_.isEmpty()) {
        pdf_ = std::make_unique<PdfReportPrinter>(pdfFolder_);
        setReportPrinter(pdf_.get());
    } else {
        printer_ = std::make_unique<QtReportPrinter>();
        setReportPrinter(printer_.get());
    }
    setReportChoice(&choice_);
    installed_ = true;
}

ReportOptions::~ReportOptions() {
    if (!installed_)
        return;
    setReportPrinter(nullptr);
    setReportChoice(nullptr);
}
