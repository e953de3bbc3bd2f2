// SPDX-License-Identifier: Apache-2.0
#include "QtReportPrinter.h"

#include "ReportPagePainter.h"

#include <QPrinter>
#include <QPrinterInfo>

QStringList QtReportPrinter::printerNames() const {
    return QPrinterInfo::availablePrinterNames();
}

void QtReportPrinter::useDefaultPrinter() {
    printerName_.clear();
}

void QtReportPrinter::usePrinter(const QString& name) {
    printerName_ = name;
}

bool QtReportPrinter::printPage(const ReportPage& page, QString& error) {
    QPrinterInfo info =
        printerName_.isEmpty() ? QPrinterInfo::defaultPrinter() : QPrinterInfo::printerInfo(printerName_);
    if (info.isNull()) {
        // Printers without a system default: the first installed one stands in for it.
        const QList<QPrinterInfo> all = QPrinterInfo::availablePrinters();
        if (all.isEmpty()) {
            error = QStringLiteral("Es ist kein Drucker vorhanden.");
            return false;
        }
        info = all.first();
    }
    QPrinter printer(info, QPrinter::HighResolution);
    return paintReportPage(printer, page, error);
}
