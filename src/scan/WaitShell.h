// SPDX-License-Identifier: Apache-2.0
// Running an external program (the evaluation) and waiting for its end while the windows stay
// alive: the program runs as a child process and the caller's event loop keeps running, so the
// main window repaints; nothing polls.
#pragma once

#include <QString>
#include <QStringList>

// What the operator sees while the program runs. The windows show frmWaitShell; the command line
// and the tests pass nullptr.
class WaitView {
public:
    virtual ~WaitView() = default;
    // The program has been started; text says what the operator waits for.
    virtual void begin(const QString& text) = 0;
    // The program has ended (or could not start); the view may close now.
    virtual void end() = 0;
};

// Runs program with arguments in the caller's folder and environment, plus VERIDON_HOME set to the
// current home so that the program works on the same workstation. Waits for its end in a local
// event loop. The program's exit code is not read. Returns true on failure: the program could not
// be started. Its standard output is discarded, its error output passed on.
bool WaitShell(const QString& program, const QStringList& arguments, const QString& waitText, WaitView* view);
