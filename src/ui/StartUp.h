// SPDX-License-Identifier: Apache-2.0
// The start routine of the windows program: one copy per home, the home as working directory, the
// database check of the start-up window, the head-less start-up steps, and the main window, which
// from then on owns the program's life.
#pragma once

#include <QStringList>

class QApplication;

// Runs the program with its command-line arguments (without the program name): "--home DIR"
// chooses the home (else $VERIDON_HOME, else the program's folder); "--screenshot FILE" saves a
// picture of the main window shortly after the start and ends ("--screenshot-screen FILE" adds one
// of the whole screen, with the image viewer). Returns the exit code: 0 after
// the main window has closed or when a running copy was brought to the front instead, 1 when the
// start had to stop (no data.mdb, or the database check was cancelled).
int RunVeridon(QApplication& app, const QStringList& arguments);
