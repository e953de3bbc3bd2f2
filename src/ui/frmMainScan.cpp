// SPDX-License-Identifier: Apache-2.0
// frmMain: the scan button and the scanner menu. The sequence itself (acquire, evaluate, import) is
// the scan module's; this file disables the scan controls while pages come in, lets Escape stop the
// feeder, shows the wait window while the evaluation runs and then the first new record.

#include "frmMain.h"
#include "frmScannerSelect.h"
#include "frmScannerSettings.h"
#include "frmWaitShell.h"

#include "app/mdlMessages.h"
#include "scan/ScanSequence.h"
#include "scan/ScanSettings.h"

#include <QAction>
#include <QApplication>
#include <QKeyEvent>
#include <QPushButton>
#include <QScopeGuard>
#include <QStatusBar>
#include <QTimer>

namespace {

// The window's part of the sequence. While pages come in, Escape anywhere in the program stops
// the acquisition after the page in hand; pages already saved are kept.
class WindowScanObserver : public QObject, public ScanObserver {
public:
    WindowScanObserver(frmMain* window, Scanner& scanner, std::function<void(bool)> enableControls)
        : window_(window), scanner_(scanner), enableControls_(std::move(enableControls)) {}

    void acquiring(bool on) override {
        enableControls_(!on);
        if (on)
            qApp->installEventFilter(this);
        else
            qApp->removeEventFilter(this);
        if (on)
            QApplication::setOverrideCursor(Qt::BusyCursor);
        else
            QApplication::restoreOverrideCursor();
    }
    void idle() override { QCoreApplication::processEvents(); }
    WaitView* waitView() override {
        wait_ = std::make_unique<frmWaitShell>(window_);
        return wait_.get();
    }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::KeyPress && static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape) {
            scanner_.cancel();
            return true;
        }
        return QObject::eventFilter(watched, event);
    }

private:
    frmMain* window_;
    Scanner& scanner_;
    std::function<void(bool)> enableControls_;
    std::unique_ptr<frmWaitShell> wait_;
};

} // namespace

void frmMain::setScanControlsEnabled(bool on) {
    buttonScannen_->setEnabled(on);
    for (QAction* a : {mpScannen_, mpScannerSelect_, mpScannerSettings_})
        a->setEnabled(on);
}

// The sequence processes events while pages come in and while the evaluation runs, so the
// look-out (its timer and F5) waits for its end: it would take a record that the sequence then
// deletes, or, on a shared pool, one that the first new record replaces on screen while it stays
// held. A click that arrives while an export pass processes events (the pass holds the export
// lock and the write lock) or inside the sequence itself starts nothing.
void frmMain::actionScannen() {
    if (scanning_ || exporting_) {
        QApplication::beep();
        return;
    }
    // A record handed over just before leaves first: the sequence empties a workstation's own
    // pool before it imports.
    runQueuedExport();
    scanning_ = true;
    poll_->stop();
    ScanRun run;
    {
        const auto done = qScopeGuard([this] { scanning_ = false; });
        std::unique_ptr<Scanner> scanner = makeScanner();
        WindowScanObserver observer(this, *scanner, [this](bool on) { setScanControlsEnabled(on); });
        run = RunScanSequence(*scanner, {}, observer);
    }
    if (run.imported)
        takeAndShowNext();
    else
        followQueue();
}

void frmMain::actionScannerSelect() {
    const QList<ScanDevice> devices = makeScanner()->devices();
    if (devices.isEmpty()) {
        ShowMessage(Msg::NoTwain, MsgBox::Exclamation);
        return;
    }
    frmScannerSelect dialog(devices, this);
    if (dialog.exec() == QDialog::Accepted && !dialog.selectedDevice().isEmpty())
        RunReported(QStringLiteral("mpScannerSelect_Click"), [&] { chooseScanDevice(dialog.selectedDevice()); });
}

void frmMain::actionScanner_Settings() {
    std::unique_ptr<Scanner> scanner = makeScanner();
    const QString device = scanDeviceToUse(scanner->devices());
    QString error;
    if (device.isEmpty() || !scanner->open(device, error)) {
        ShowMessage(Msg::NoTwain, MsgBox::Exclamation);
        return;
    }
    applyScanDefaults(*scanner, device);
    frmScannerSettings dialog(*scanner, device, this);
    if (dialog.exec() == QDialog::Accepted)
        RunReported(QStringLiteral("actionScanner_Settings"), [&] {
            const QStringList refused = dialog.apply();
            if (!refused.isEmpty())
                statusBar()->showMessage(refused.join(QStringLiteral("; ")), 8000);
        });
}
