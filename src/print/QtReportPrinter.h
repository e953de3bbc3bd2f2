// SPDX-License-Identifier: Apache-2.0
// The printing back end of the windows and the command line: the system's printers through Qt
// (CUPS on Linux). Each page is one job on the chosen printer.
#pragma once

#include "ReportPrinter.h"

class QtReportPrinter : public ReportPrinter {
public:
    QStringList printerNames() const override;
    void useDefaultPrinter() override;
    void usePrinter(const QString& name) override;
    bool printPage(const ReportPage& page, QString& error) override;

private:
    QString printerName_; // empty: the system default
};
