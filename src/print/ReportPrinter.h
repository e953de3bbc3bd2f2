// SPDX-License-Identifier: Apache-2.0
// The seam between the report logic and a printing back end. The core decides which pages to print
// and what goes where; a back end turns one page (a bitmap template and texts at millimetre
// positions) into one print job. Back ends: the system's printers and PDF files (veridon_print);
// the core alone has none, so printing without one ends in "Msg_PrinterInitErr".
#pragma once

#include <QString>
#include <QStringList>
#include <QVector>

// One value printed on a page: its text with the top-left corner at (xMm, yMm), measured from the
// top-left corner of the printable area.
struct ReportText {
    double xMm = 0;
    double yMm = 0;
    QString text;
};

// One page of a report, printed as a job of its own.
struct ReportPage {
    QString bitmapPath; // the page's template; exists when the page is handed over
    QString fontName;   // printed bold at 12 points
    QVector<ReportText> texts;
    QString jobName; // a readable name for the job ("31901001_bericht_ambulant")
};

class ReportPrinter {
public:
    virtual ~ReportPrinter() = default;

    // Device names of the installed printers, in the system's order; empty when there is none.
    virtual QStringList printerNames() const = 0;
    // Print on whatever the system's default printer is.
    virtual void useDefaultPrinter() = 0;
    // Print on the printer of that device name (one of printerNames()).
    virtual void usePrinter(const QString& name) = 0;
    // Prints one page as one job on the chosen printer. Returns false and sets error (a German
    // description) when the bitmap cannot be loaded or the job cannot be started.
    virtual bool printPage(const ReportPage& page, QString& error) = 0;

    // The windows show the hourglass and the wait window "frmPrint" here; others ignore them.
    virtual void setBusy(bool /*busy*/) {}
    virtual void showWaitWindow(bool /*shown*/) {}
};

// The back end in use. Never null: one without printers until another is installed.
ReportPrinter& reportPrinter();
// Installs a back end (not owned); nullptr restores the one without printers.
void setReportPrinter(ReportPrinter* printer);
