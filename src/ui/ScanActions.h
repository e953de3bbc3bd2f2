// SPDX-License-Identifier: Apache-2.0
// The main window's scan button and scanner menu. The sequence itself (acquire, evaluate, import)
// is the scan module's; this part disables the scan controls while pages come in, lets Escape stop
// the feeder, shows the wait window while the evaluation runs and then has the window show the
// first new record.
#pragma once

#include <QObject>
#include <functional>

class QAction;
class QMainWindow;
class QPushButton;

class ScanActions : public QObject {
    Q_OBJECT

public:
    // window: the main window (owner of the dialogs and of the three menu items); button: its scan
    // button; showNext: takes and shows the next record after an import; readyToScan: called
    // before a scan starts, false refuses it (a local pool is emptied before the import, so what
    // was handed over must have left first).
    ScanActions(QMainWindow* window, QPushButton* button, std::function<void()> showNext,
                std::function<bool()> readyToScan);

    // The menu items, for the window's menu and tool bar.
    QAction* const scan;
    QAction* const select;
    QAction* const settings;

    // Whether the scan sequence is running (it processes events meanwhile).
    bool running() const { return running_; }

private:
    void scanPages();
    void selectScanner();
    void scannerSettings();
    void setControlsEnabled(bool on);

    QMainWindow* window_;
    QPushButton* button_;
    std::function<void()> showNext_;
    std::function<bool()> readyToScan_;
    bool running_ = false;
};
