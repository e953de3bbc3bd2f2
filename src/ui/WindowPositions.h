// SPDX-License-Identifier: Apache-2.0
// Windows reappear where the operator last left them: each window applies its stored rectangle when
// it loads and stores it when it closes, under its objectName (frmMain, frmOptionen, frmFehler,
// frmTestNotiz, the viewer zvbkorViewer, ...). The stored x and y are the window's outer top-left
// corner (as QWidget::pos()), dx and dy the size of its inside (as QWidget::size()), so that a window
// that is closed and opened again keeps its size exactly instead of growing by its frame every time.
//
// A window that has never been closed has no stored place; it is placed by its opener instead of
// landing in the screen's corner over the fields: the main window and the viewer side by side, the
// small windows beside the record's fields.
#pragma once

#include <QMargins>
#include <QRect>

class QWidget;

// Moves w to its stored rectangle on the primary screen and returns true. A window whose top-left
// corner would show fewer than 75 pixels goes to the left or top edge; a stored size of 0 leaves the
// window at its own designed size. Without a stored row nothing moves and the result is false.
// Failures to read are reported as run-time error "RestoreWindowPosition()" (result false).
bool RestoreWindowPosition(QWidget* w);

// Stores w's rectangle. A minimised window stores nothing, so it keeps its earlier position; a
// maximised or full-screen window stores the rectangle it returns to. A left or top edge off the
// screen is stored as 0. Failures to write are reported as run-time error "SaveWindowPosition()".
void SaveWindowPosition(QWidget* w);

// The frame the window system draws around w (title bar, borders); empty before w was first shown
// or without a window manager.
QMargins frameMarginsOf(const QWidget* w);

// The work area (the screen without panels and docks) of the screen w stands on, the primary
// screen's when w has none; 1280 x 800 without any screen.
QRect workAreaOf(const QWidget* w);

// Places a small window w (the error list, the report question, the options) beside the fields of
// the main window, inside the screen's work area and not over the fields: below them when it fits
// there, else right of the main window, else left of it, else above the fields. Without a shown
// main window w stays where the system puts it.
void PlaceBesideFields(QWidget* w);

// Restores w's stored place, or places it beside the fields when it has none.
void RestoreOrPlaceBesideFields(QWidget* w);
