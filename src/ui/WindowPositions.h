// SPDX-License-Identifier: Apache-2.0
// Windows reappear where the operator last left them: each window applies its stored rectangle when
// it loads and stores it when it closes, under its objectName (frmMain, frmOptionen, frmFehler,
// frmTestNotiz, ...). The stored x and y are the window's outer top-left corner (as QWidget::pos()),
// dx and dy the size of its inside (as QWidget::size()), so that a window that is closed and opened
// again keeps its size exactly instead of growing by its frame every time.
#pragma once

class QWidget;

// Moves w to its stored rectangle on the primary screen. A window whose top-left corner would show
// fewer than 75 pixels goes to the left or top edge; a window without a row goes to 0, 0. A stored
// size of 0 (no row yet) leaves the window at its own designed size, the smallest sensible one.
// Failures to read are reported as run-time error "RestoreWindowPosition()".
void RestoreWindowPosition(QWidget* w);

// Stores w's rectangle. A minimised window stores nothing, so it keeps its earlier position; a
// maximised or full-screen window stores the rectangle it returns to. A left or top edge off the
// screen is stored as 0. Failures to write are reported as run-time error "SaveWindowPosition()".
void SaveWindowPosition(QWidget* w);
