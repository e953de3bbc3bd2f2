// SPDX-License-Identifier: Apache-2.0
#include "PdfReportPrinter.h"

#include "ReportPagePainter.h"
#include "app/Home.h"

#include <QDir>
#include <QPageSize>
#include <QPrinter>
#include <QRegularExpression>

PdfReportPrinter::PdfReportPrinter(const QString& folder) : folder_(withTrailingSlash(folder)) {}

QStringList PdfReportPrinter::printerNames() const {
    return {QStringLiteral("PDF")};
}

void PdfReportPrinter::useDefaultPrinter() {
    chosen_.clear();
}

void PdfReportPrinter::usePrinter(const QString& name) {
    chosen_ = name;
}

QString PdfReportPrinter::nextFileName(const QString& jobName) {
    static const QRegularExpression numbered(QStringLiteral("^(\\d{4,})-"));
    if (lastNumber_ < 0) {
        lastNumber_ = 0;
        const QStringList existing = QDir(folder_).entryList({QStringLiteral("*.pdf")}, QDir::Files);
        for (const QString& name : existing) {
            const auto m = numbered.match(name);
            if (m.hasMatch())
                lastNumber_ = std::max(lastNumber_, m.captured(1).toInt());
        }
    }
    QString safe = jobName;
    static const QRegularExpression unsafe(QStringLiteral("[^A-Za-z0-9_.-]"));
    safe.replace(unsafe, QStringLiteral("_"));
    if (safe.isEmpty())
        safe = QStringLiteral("bericht");
    return folder_ + QStringLiteral("%1-%2.pdf").arg(++lastNumber_, 4, 10, QLatin1Char('0')).arg(safe);
}

bool PdfReportPrinter::printPage(const ReportPage& page, QString& error) {
    if (!QDir().mkpath(folder_)) {
        error = QStringLiteral("Der Ordner '%1' kann nicht angelegt werden.").arg(folder_);
        return false;
    }
    const QString file = nextFileName(page.jobName);
    QPrinter printer(QPrinter::HighResolution);
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(file);
    printer.setCreator(QStringLiteral("Veridon"));
    printer.setPageSize(QPageSize(QPageSize::A4));
    printer.setPageMargins(QMarginsF(10, 10, 10, 10), QPageLayout::Millimeter);
    if (!paintReportPage(printer, page, error))
        return false;
    written_ << file;
    return true;
}
