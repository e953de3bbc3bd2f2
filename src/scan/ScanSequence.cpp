// SPDX-License-Identifier: Apache-2.0
#include "ScanSequence.h"

#include "GetScanFile.h"
#include "ScanMessages.h"
#include "ScanPageWriter.h"
#include "ScanSettings.h"
#include "WaitShell.h"

#include "app/Database.h"
#include "app/Errors.h"
#include "app/Home.h"
#include "app/PoolConnection.h"
#include "app/Progress.h"
#include "app/Settings.h"
#include "app/mdlDB.h"
#include "app/mdlMessages.h"
#include "import/mdlImport.h"
#include "model/OcrAlternatives.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QSqlQuery>

namespace {

// The command line's source word as one of the device's choices; empty when it has none such.
QString sourceChoice(Scanner& scanner, const QString& word) {
    for (const ScanOption& o : scanner.options())
        if (o.name == QLatin1String("source"))
            for (const QString& c : o.choices) {
                const bool feeder =
                    c.contains(QLatin1String("Feeder"), Qt::CaseInsensitive) || c.contains(QLatin1String("ADF"));
                if ((word == QLatin1String("adf")) == feeder)
                    return c;
            }
    return {};
}

void applyRequest(Scanner& scanner, const ScanRequest& request) {
    QString error;
    if (!request.source.isEmpty()) {
        const QString choice = sourceChoice(scanner, request.source);
        if (choice.isEmpty() || !scanner.setOption(QStringLiteral("source"), choice, error))
            WriteLog(QStringLiteral("actionScanner_Aquire()"),
                     QStringLiteral("Vorlage '%1' nicht wählbar %2").arg(request.source, error));
    }
    if (request.resolution > 0 &&
        !scanner.setOption(QStringLiteral("resolution"), QString::number(request.resolution), error))
        WriteLog(QStringLiteral("actionScanner_Aquire()"), error);
}

void reportEnd(ScanEnd end, int pages) {
    const MessageText* message = nullptr;
    switch (end) {
    case ScanEnd::Done:
        return;
    case ScanEnd::Cancelled:
        return;
    case ScanEnd::FeederEmpty:
        message = &ScanMsg::FeederEmpty;
        break;
    case ScanEnd::Jammed:
        message = &ScanMsg::Jammed;
        break;
    case ScanEnd::CoverOpen:
        message = &ScanMsg::CoverOpen;
        break;
    case ScanEnd::DeviceGone:
        message = &ScanMsg::DeviceGone;
        break;
    case ScanEnd::Failed:
        message = &ScanMsg::Failed;
        break;
    }
    ShowMessage(*message, MsgBox::Exclamation, {pages});
}

// actionScanner_Aquire: the pages of one batch into the scan folder.
void acquire(Scanner& scanner, const ScanRequest& request, ScanObserver& observer, ScanRun& run) {
    const QString device = request.device.isEmpty() ? scanDeviceToUse(scanner.devices()) : request.device;
    QString error;
    if (device.isEmpty() || !scanner.open(device, error)) {
        if (!error.isEmpty())
            WriteLog(QStringLiteral("actionScanner_Aquire()"), device + QStringLiteral(": ") + error);
        ShowMessage(Msg::NoTwain, MsgBox::Exclamation);
        return;
    }
    run.deviceFound = true;
    for (const QString& refused : applyScanDefaults(scanner, device))
        WriteLog(QStringLiteral("actionScanner_Aquire()"), refused);
    applyRequest(scanner, request);

    observer.acquiring(true);
    bool saveFailed = false;
    // LEAD1_TwainPage: each page under the next free name. A page that cannot be saved stops the
    // batch, so the paper still in the feeder is not scanned into nowhere.
    const auto onPage = [&](const ScanPage& page) {
        const bool saved = RunReported(QStringLiteral("LEAD1_TwainPage"), [&] {
            const QString name = GetScanFile();
            QDir().mkpath(QFileInfo(name).absolutePath());
            QString writeError;
            if (!writeScanPage(name, page, writeError))
                throw VeridonError(ErrorNumber::PathNotFound, writeError);
            ++run.pages;
            appProgress().status(GetText(ScanMsg::PagesScanned, {run.pages}));
            observer.pageSaved(run.pages, name);
        });
        if (!saved) {
            saveFailed = true;
            scanner.cancel();
        }
    };
    run.end = scanner.acquire(onPage, [&] { observer.idle(); });
    scanner.close();
    observer.acquiring(false);
    if (!saveFailed)
        reportEnd(run.end, run.pages);
}

} // namespace

int EmptyPoolForScan() {
    // A pool on a server is shared by every workstation: one workstation's scan must not empty it.
    if (homeUsesPool())
        return 0;
    const int deleted =
        execSql(QStringLiteral("DELETE * FROM ") + GetValuesTable() + QLatin1Char(';')).numRowsAffected();
    DeleteOrphanAlternatives();
    return deleted;
}

QString evaluationProgram() {
    const QString inHome = homePath(QStringLiteral("zvscan"));
    if (QFileInfo(inHome).isExecutable())
        return inHome;
    return withTrailingSlash(QCoreApplication::applicationDirPath()) + QStringLiteral("zvscan");
}

namespace {

void evaluateAndImport(ScanObserver& observer, ScanRun& run) {
    const QString folder = setting<Setting::Scan_Pfad>();
    run.pagesInFolder = !QDir(folder).entryList({QStringLiteral("*.tif")}, QDir::Files).isEmpty();
    if (!run.pagesInFolder)
        return;

    const QString program = evaluationProgram();
    if (WaitShell(program, {QStringLiteral("/USER")}, GetText(Msg::Txt_RunAusw), observer.waitView())) {
        ShowMessage(ScanMsg::NoEvaluation, MsgBox::Critical, {program});
        return;
    }
    run.evaluated = true;

    RunReported(QStringLiteral("buttonScannen_Click"), [&] {
        EmptyPoolForScan();
        const QString resultFile = setting<Setting::Import_Datei>();
        if (!QFileInfo::exists(resultFile))
            return;
        QSqlQuery last = execSql(QStringLiteral("SELECT MAX(LfdNr) FROM zvbWerte"));
        run.lastRecordBefore = last.next() && !last.value(0).isNull() ? last.value(0).toInt() : -1;
        run.imported = true;
        run.importedRows = ImportZVBWerte(resultFile);
    });
}

} // namespace

ScanRun RunScanSequence(Scanner& scanner, const ScanRequest& request, ScanObserver& observer) {
    ScanRun run;
    acquire(scanner, request, observer, run);
    evaluateAndImport(observer, run);
    // The batch's count stays in view after the import's own status texts have gone.
    if (run.deviceFound)
        appProgress().status(
            GetText(run.end == ScanEnd::Cancelled ? ScanMsg::Cancelled : ScanMsg::PagesScanned, {run.pages}));
    return run;
}
