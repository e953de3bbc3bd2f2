// SPDX-License-Identifier: Apache-2.0
#include "StartUp.h"

#include "QtMessagePresenter.h"
#include "SingleInstance.h"
#include "frmAskForReport.h"
#include "frmInit.h"
#include "frmMain.h"

#include "app/Home.h"
#include "app/mdlDB.h"
#include "app/mdlMessages.h"
#include "print/QtReportPrinter.h"
#include "workflow/mdlStart.h"

#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QScreen>
#include <QTimer>
#include <memory>

namespace {

QString optionValue(const QStringList& arguments, const QString& option) {
    const qsizetype at = arguments.indexOf(option);
    return at >= 0 && at + 1 < arguments.size() ? arguments.at(at + 1) : QString();
}

// For the documentation: once the window has settled, saves a picture of the main window and, when
// asked, one of the whole screen with the viewer beside it, then ends without touching the record.
void scheduleScreenshots(QWidget* window, const QString& windowFile, const QString& screenFile) {
    QTimer::singleShot(1500, window, [window, windowFile, screenFile] {
        bool saved = window->grab().save(windowFile);
        if (!screenFile.isEmpty())
            if (QScreen* screen = window->screen()) {
                // The part of the screen the program's windows cover, not the empty rest.
                QRect covered;
                for (QWidget* w : QApplication::topLevelWidgets())
                    if (w->isVisible())
                        covered |= w->frameGeometry();
                saved = screen->grabWindow(0, covered.x(), covered.y(), covered.width(), covered.height())
                            .save(screenFile) &&
                        saved;
            }
        QCoreApplication::exit(saved ? 0 : 1);
    });
}

// The system's printers as the reports' back end while the program runs.
struct SystemPrinters {
    SystemPrinters() { setReportPrinter(&printer); }
    ~SystemPrinters() { setReportPrinter(nullptr); }
    SystemPrinters(const SystemPrinters&) = delete;
    SystemPrinters& operator=(const SystemPrinters&) = delete;
    QtReportPrinter printer;
};

} // namespace

int RunVeridon(QApplication& app, const QStringList& arguments) {
    resolveHome(optionValue(arguments, QStringLiteral("--home")));

    // Files named on the command line are meant from where the program was started.
    auto startedFrom = [&arguments](const QString& option) {
        const QString value = optionValue(arguments, option);
        return value.isEmpty() ? value : QFileInfo(value).absoluteFilePath();
    };
    const QString screenshot = startedFrom(QStringLiteral("--screenshot"));
    const QString screenshotScreen = startedFrom(QStringLiteral("--screenshot-screen"));

    SingleInstance instance(homeDir());
    if (instance.activateRunning())
        return 0;
    instance.listen();
    QDir::setCurrent(homeDir());

    QtMessagePresenter presenter;
    // Reports go to the system's printers; an open report type is asked in a dialog.
    const SystemPrinters printers;
    WindowsReportChoice reportQuestion;
    if (!QFileInfo(GetDBPath()).isFile()) {
        zvMsgBox(QString::fromUtf8("Die Programmdatenbank '%1' wurde nicht gefunden.\nEine neue Arbeitsumgebung legt "
                                   "'veridon-cli --home %2 init --demo' an.")
                     .arg(QDir::toNativeSeparators(GetDBPath()), QDir::toNativeSeparators(homeDir())),
                 MsgBox::Critical);
        return 1;
    }

    std::unique_ptr<frmMain> main;
    bool stop = false;
    RunReported(QStringLiteral("MAIN"), [&] {
        {
            frmInit init;
            init.show();
            if (!init.checkDatabase()) {
                stop = true;
                return;
            }
        }
        RunStartupSteps();
        main = std::make_unique<frmMain>();
        instance.setWindow(main.get());
        main->show();
        main->activateWindow();
        if (!screenshot.isEmpty())
            scheduleScreenshots(main.get(), screenshot, screenshotScreen);
    });
    if (stop || !main)
        return 1;
    const int code = app.exec();
    main.reset();
    return code;
}
