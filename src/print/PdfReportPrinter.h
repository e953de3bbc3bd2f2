// SPDX-License-Identifier: Apache-2.0
// A printing back end that writes PDF files instead of printing: every job (one report page) is
// one A4 file with 10 mm margins in a folder, named "NNNN-<job>.pdf" with a running number that
// continues after the highest one already there, so the files sort in printing order and a later
// run never overwrites an earlier one. For workstations without a printer, the command line's
// --pdf and the tests.
#pragma once

#include "ReportPrinter.h"

class PdfReportPrinter : public ReportPrinter {
public:
    // Files go into folder (made when missing).
    explicit PdfReportPrinter(const QString& folder);

    // One virtual printer, "PDF".
    QStringList printerNames() const override;
    void useDefaultPrinter() override;
    void usePrinter(const QString& name) override;
    bool printPage(const ReportPage& page, QString& error) override;

    // The files written so far, in order.
    const QStringList& writtenFiles() const { return written_; }
    // The printer chosen last ("" for the default), so a caller can see what selection happened.
    const QString& chosenPrinter() const { return chosen_; }

private:
    QString nextFileName(const QString& jobName);

    QString folder_;
    QString chosen_;
    QStringList written_;
    int lastNumber_ = -1; // -1: not yet read from the folder
};
