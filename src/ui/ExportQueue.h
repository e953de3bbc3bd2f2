// SPDX-License-Identifier: Apache-2.0
// The export pass after a hand-over runs one turn of the event loop later, so the next record is on
// screen without waiting for the export's syncs. Should the program end before that turn, the
// record waits in state 40 for the next pass. Two passes of one program never nest: the pass
// processes events while it runs, and a hand-over made meanwhile only asks for another pass, which
// runs once the first is done (a nested one would wait on the first's lock for ever).
#pragma once

#include <QObject>

class QTimer;

class ExportQueue : public QObject {
    Q_OBJECT

public:
    explicit ExportQueue(QObject* parent);

    // Asks for a pass one turn of the event loop later (once for any number of hand-overs until
    // then).
    void queue();
    // Runs the pass asked for at once (as leaving does); nothing when none was asked for or a pass
    // is running.
    void runNow();
    // Whether a pass is running (it processes events meanwhile).
    bool running() const { return running_; }

private:
    QTimer* timer_;
    bool queued_ = false; // a hand-over waits for its export pass
    bool running_ = false;
};
