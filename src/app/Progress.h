// SPDX-License-Identifier: Apache-2.0
// Status texts and progress of long batch work (import, export, auto-import). The windows show them
// in the status bar, the command line prints them when asked; the core only reports.
#pragma once

#include <QString>

class Progress {
public:
    virtual ~Progress() = default;
    // A status line such as "Importiere Datensatz: 12".
    virtual void status(const QString& text) = 0;
    // done of total steps; total 0 means unknown. Called often: implementations keep it cheap.
    virtual void progress(qint64 done, qint64 total) = 0;
    // The batch has ended; clear the status.
    virtual void finished() {}
};

// The progress sink in use. Never null: a silent one until another is installed.
Progress& appProgress();
// Installs a sink (not owned); nullptr restores the silent one.
void setAppProgress(Progress* progress);
