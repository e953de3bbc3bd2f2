// SPDX-License-Identifier: Apache-2.0
// veridon-cli accept: hands a record over as "OK / übergeben" in the main window does - checked,
// saved as handed over - and then runs the export pass. Errors refuse the hand-over; warnings are
// handed over only with --yes.

#include "CliCommand.h"
#include "ReportOptions.h"
#include "app/Settings.h"
#include "app/mdlDB.h"
#include "model/FormModel.h"
#include "workflow/mdlWorkflow.h"

namespace {

void printErrors(QTextStream& err, const QString& errorText) {
    for (const QString& line : errorText.split(QStringLiteral("\r\n"), Qt::SkipEmptyParts))
        err << "  " << line << '\n';
}

int runAccept(CliContext& c) {
    const CliCommand& self = *CliRegistry::find(QStringLiteral("accept"));
    if (takeFlag(c.args, QStringLiteral("--yes")))
        c.presenter.setAnswerYes(true);
    ReportOptions options;
    QString problem;
    if (!options.parse(c.args, problem))
        return usageError(c, self, problem);
    bool ok = false;
    const qint32 number = c.args.size() == 1 ? c.args.first().toInt(&ok) : 0;
    if (!ok || number < 0)
        return usageError(c, self, QStringLiteral("genau eine LfdNr erwartet"));
    options.install();

    FelderArray().Fill();
    if (!ClaimRecord(number, GetKorrID())) {
        c.err << ClaimRefusal(number) << '\n';
        return Exit::Failure;
    }
    if (!LoadRecord(number))
        return Exit::Failure;
    QString errorText;
    if (!DecideHandOver(errorText, [&c](const QString& warnings) {
            c.out.flush();
            c.err << "Warnungen zu Beleg:\n";
            printErrors(c.err, warnings);
            c.err.flush();
        })) {
        c.out.flush();
        c.err << "Beleg " << number << " wird nicht übergeben:\n";
        printErrors(c.err, errorText);
        WerteArray().Clear();
        return Exit::Failure;
    }
    const int errorsBefore = c.presenter.errorCount();
    if (!CompleteHandOver(number))
        return Exit::Failure;
    if (c.presenter.errorCount() > errorsBefore) {
        c.out << "Beleg " << number << " übergeben; der Export ist fehlgeschlagen und wird beim nächsten Export "
              << "nachgeholt\n";
        return Exit::Failure;
    }
    c.out << "Beleg " << number << " übergeben und exportiert nach " << setting<Setting::Export_Pfad>() << '\n';
    return Exit::Ok;
}

const CliRegistration registration({"accept", "LFDNR [--yes] [--pdf ORDNER] [--report ambulant|stationaer|kein]",
                                    "prüft einen Beleg und übergibt ihn wie \"OK / übergeben\", dann Export; "
                                    "Warnungen nur mit --yes",
                                    runAccept, true, true, true});

} // namespace
