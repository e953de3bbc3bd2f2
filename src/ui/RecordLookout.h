// SPDX-License-Identifier: Apache-2.0
// The look-out for records. Records arrive while the main window is open (a scan at another
// workstation, an import from the command line). An empty form looks for them every few seconds
// and at once on F5 and takes the first that arrives; the status bar always says how many wait,
// and beside that what this workstation has done today. A dialog open over the window (options, a
// question) holds the look-out back; the next tick after it closes looks again.
#pragma once

#include <QObject>
#include <functional>

class QLabel;
class QTimer;

class RecordLookout : public QObject {
    Q_OBJECT

public:
    // How often an empty form looks for waiting records.
    static constexpr int pollIntervalMs = 3000;

    // waiting and today: the status bar's labels for the count of waiting records and the day's
    // figures; hasRecord: true while a record is on screen; takeNext: takes and shows the next record.
    RecordLookout(QObject* parent, QLabel* waiting, QLabel* today, std::function<bool()> hasRecord,
                  std::function<void()> takeNext);

    // Looks at the pool now: shows how many records wait and, when the form is empty and one waits,
    // takes it. Nothing after stop.
    void lookNow();
    // After every take: the count and the day's figures, and the look-out runs exactly while the
    // form is empty.
    void follow();
    // The window is leaving: no more looks.
    void stop();

private:
    void showWaitingCount(int waiting);
    void showTodaysWork();

    QLabel* waiting_;
    QLabel* today_;
    std::function<bool()> hasRecord_;
    std::function<void()> takeNext_;
    QTimer* poll_;
    bool stopped_ = false;
};
