// SPDX-License-Identifier: Apache-2.0
/* The image viewer library: a window captioned "ZV-Beleg Image Viewer" that shows the first page of
 * a TIFF file (bitonal, grey or colour) positioned on a field's region. It runs inside the calling
 * Qt Widgets application (a QApplication must exist; every call comes from its thread) and never
 * takes the keyboard focus from the caller's window: it is shown without activation and refuses
 * focus. To bring it to the front, find the top-level widget with that caption and call raise().
 *
 * Region coordinates are pixels of the page as stored in the file, origin at the top left corner,
 * x to the right, y downwards (for the 200 dpi scans of the workstation an A4 page is 1654 x 2339).
 *
 * Every operation returns 1 when it did something and 0 otherwise; none shows a message. Failures
 * are logged under the Qt logging category "zvbkor". */
#ifndef ZVBKOR_H
#define ZVBKOR_H

#include <stdint.h>

#if defined(ZVBKOR_BUILD)
#define ZVBKOR_API __attribute__((visibility("default")))
#else
#define ZVBKOR_API
#endif

#ifdef __cplusplus
extern "C" {
#endif

/* Opens the viewer on imageFile (a full path in the file system's encoding, UTF-8 here), or reuses
 * it when already open; the file is decoded again only when its size or modification time changed,
 * so moving from field to field on one image costs no reading. fieldName (UTF-8, may be empty) is
 * shown as the mark's label. offsetX and offsetY are the record's scan offsets as decimal text
 * (leading blanks and a sign allowed, anything after the digits ignored, "" or NULL counts as 0);
 * the region x + offsetX, y + offsetY, dx, dy is marked and brought into view (centred as far as
 * the page's edges allow), zooming out while it does not fit. A region of width or height 0 shows
 * the page from its top left corner without a mark. A new file starts upright and not inverted; the
 * zoom stays while the viewer is open. Returns 0, leaving the viewer as it was, when the name is
 * empty or the file is missing or no readable image. */
ZVBKOR_API int32_t Anzeigen(const char* imageFile, const char* fieldName, const char* offsetX, const char* offsetY,
                            int32_t x, int32_t y, int32_t dx, int32_t dy);

/* Closes the viewer window (and a full-screen view that is up); the next Anzeigen opens it again
 * at the starting zoom. Returns 0 when nothing was open. */
ZVBKOR_API int32_t Schliessen(void);

/* Scrolls by a quarter of the view for the numeric-pad digits: 6 right, 8 up, 2 down, 4 left.
 * Returns 0 for other codes, when the viewer is closed, or when it is already at that edge. */
ZVBKOR_API int32_t AnzeigeTaste(int32_t keyCode);

/* 1 zooms in one step, 0 zooms out one step (steps of about 1.41 from 12.5 % to 400 %, starting
 * at 50 %), keeping the marked field in place while it is in view. Returns 0 for other values,
 * when the viewer is closed, or at the last step. */
ZVBKOR_API int32_t AnzeigeZoom(int32_t direction);

/* Shows the whole page with its mark full screen and returns when the user ends it with Escape or
 * a mouse click (a local event loop runs meanwhile; the caller's windows take no input and are
 * active again afterwards). Shows the page last given to Anzeigen, even when the viewer window
 * has been closed since, with the window's turn and inversion when it is open. Returns 0 when no
 * page was ever shown or full screen is already up. */
ZVBKOR_API int32_t AnzeigeVoll(void);

/* Turns the shown page by 90 degrees: clockwise for a positive value, anticlockwise for a negative
 * one. Returns 0 for 0 or when the viewer is closed. */
ZVBKOR_API int32_t AnzeigeDrehen(int32_t direction);

/* Inverts the shown page (black becomes white); a second call restores it. Returns 0 when the
 * viewer is closed. */
ZVBKOR_API int32_t AnzeigeInvert(void);

#ifdef __cplusplus
}
#endif

#endif
