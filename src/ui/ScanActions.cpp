// SPDX-License-Identifier: Apache-2.0
// The scan button and the scanner menu of the main window (see ScanActions.h).

#include "ScanActions.h"
#include "frmScannerSelect.h"
#include "frmScannerSettings.h"
#include "frmWaitShell.h"

#include "app/mdlMessages.h"
#include "scan/ScanSequence.h"
#include "scan/ScanSettings.h"

#include <QAction>
#include <QApplication>
#include <QKeyEvent>
#include <QMainWindow>
#include <QPushButton>
#include <QScopeGuard>
#include <QStatusBar>

namespace {

// The window's part of the sequence. While pages come in, Escape anywhere in the program stops
// the acquisition after the page in hand; pages already saved are kept.
class WindowScanObserver : public QObject, public ScanObserver {
public:
    WindowScanObserver(QWidget* window, Scanner& scanner, std::function<void(bool)> enableControls)
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
    QWidget* window_;
    Scanner& scanner_;
    std::function<void(bool)> enableControls_;
    std::unique_ptr<frmWaitShell> wait_;
};

QAction* menuItem(QObject* parent, const char* name, const char* text) {
    auto* action = new QAction(QString::fromUtf8(text), parent);
    action->setObjectName(QLatin1String(name));
    return action;
}

} // namespace

ScanActions::ScanActions(QMainWindow* window, QPushButton* button, std::function<void()> showNext,
                         std::function<bool()> readyToScan)
    : QObject(window), scan(menuItem(window, "mpScannen", "&Scannen")),
      select(menuItem(window, "mpScannerSelect", "Scanner &auswählen...")),
      settings(menuItem(window, "mpScannerSettings", "Scanner&einstellungen...")), window_(window), button_(button),
      showNext_(std::move(showNext)), readyToScan_(std::move(readyToScan)) {
    connect(button_, &QPushButton::clicked, this, &ScanActions::scanPages);
    connect(scan, &QAction::triggered, this, &ScanActions::scanPages);
    connect(select, &QAction::triggered, this, &ScanActions::selectScanner);
    connect(settings, &QAction::triggered, this, &ScanActions::scannerSettings);
}

void ScanActions::setControlsEnabled(bool on) {
    button_->setEnabled(on);
    for (QAction* a : {scan, select, settings})
        a->setEnabled(on);
}

// The sequence processes events while pages come in and while the evaluation runs; a click
// arriving inside it starts no second one.
void ScanActions::scanPages() {
    if (running_ || !readyToScan_()) {
        QApplication::beep();
        return;
    }
    ScanRun run;
    {
        running_ = true;
        const auto done = qScopeGuard([this] { running_ = false; });
        std::unique_ptr<Scanner> scanner = makeScanner();
        WindowScanObserver observer(window_, *scanner, [this](bool on) { setControlsEnabled(on); });
        run = RunScanSequence(*scanner, {}, observer);
    }
    if (run.imported)
        showNext_();
}

void ScanActions::selectScanner() {
    const QList<ScanDevice> devices = makeScanner()->devices();
    if (devices.isEmpty()) {
        ShowMessage(Msg::NoTwain, MsgBox::Exclamation);
        return;
    }
    frmScannerSelect dialog(devices, window_);
    if (dialog.exec() == QDialog::Accepted && !dialog.selectedDevice().isEmpty())
        RunReported(QStringLiteral("mpScannerSelect_Click"), [&] { chooseScanDevice(dialog.selectedDevice()); });
}

void ScanActions::scannerSettings() {
    std::unique_ptr<Scanner> scanner = makeScanner();
    const QString device = scanDeviceToUse(scanner->devices());
    QString error;
    if (device.isEmpty() || !scanner->open(device, error)) {
        ShowMessage(Msg::NoTwain, MsgBox::Exclamation);
        return;
    }
    applyScanDefaults(*scanner, device);
    frmScannerSettings dialog(*scanner, device, window_);
    if (dialog.exec() == QDialog::Accepted)
        RunReported(QStringLiteral("actionScanner_Settings"), [&] {
            const QStringList refused = dialog.apply();
            if (!refused.isEmpty())
                window_->statusBar()->showMessage(refused.join(QStringLiteral("; ")), 8000);
        });
}
