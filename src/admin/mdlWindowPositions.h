// SPDX-License-Identifier: Apache-2.0
// Where the windows were last left: one row of zvbSysWindowPositions per window name with the
// window's left and top edge and its size in screen pixels. The windows store their rectangle when
// they close and apply it when they load; the rules that keep a window reachable live here, so
// they hold without a display.
#pragma once

#include <QString>

struct WindowPosition {
    qint32 x = 0;
    qint32 y = 0;
    qint32 dx = 0;
    qint32 dy = 0;

    bool operator==(const WindowPosition&) const = default;
};

// How much of a window's top-left corner must stay on the screen, in pixels.
inline constexpr qint32 MinimumVisiblePixels = 75;

// The stored rectangle of formName, or all four values 0 when the window has no row yet. Throws
// VeridonError when the table cannot be read.
WindowPosition ReadWindowPosition(const QString& formName);

// Stores the rectangle of formName, adding its row when there is none. A negative left or top edge
// (a window dragged partly off the screen) is stored as 0. Throws VeridonError when the row cannot
// be written.
void WriteWindowPosition(const QString& formName, const WindowPosition& position);

// The rectangle to show on a screen of screenWidth x screenHeight pixels: a window whose left edge
// lies so far right that fewer than 75 pixels of it would show goes to the left edge (x = 0), and
// likewise at the bottom (y = 0). The size is kept.
WindowPosition FitOnScreen(WindowPosition position, qint32 screenWidth, qint32 screenHeight);
