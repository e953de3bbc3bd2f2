/* The image viewer library: a window captioned "ZV-Beleg Image Viewer" that shows the first page of
 * a TIFF file positioned on a field's region. It runs inside the calling Qt application (a
 * QApplication must exist) and never takes the keyboard focus from the caller's window. Every
 * operation returns 1 when it did something and 0 otherwise. */
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

/* Opens the viewer on imageFile (a full path, UTF-8), or reuses it when already open (the file is
 * read again only when it changed). fieldName is shown as the mark's label. offsetX and offsetY are
 * the record's scan offsets as decimal text ("" counts as 0); the region x, y, dx, dy (pixels of
 * the page, shifted by the offsets) is brought into view and marked. A region of width or height 0
 * shows the page without a mark. Returns 0 when the file cannot be read. */
ZVBKOR_API int32_t Anzeigen(const char* imageFile, const char* fieldName, const char* offsetX, const char* offsetY,
                            int32_t x, int32_t y, int32_t dx, int32_t dy);

/* Closes the viewer window. */
ZVBKOR_API int32_t Schliessen(void);

/* Scrolls by the numeric-pad digits: 6 right, 8 up, 2 down, 4 left. */
ZVBKOR_API int32_t AnzeigeTaste(int32_t keyCode);

/* 1 zooms in one step, 0 zooms out one step. */
ZVBKOR_API int32_t AnzeigeZoom(int32_t direction);

/* Shows the whole page full screen and returns when the user ends it (Escape or a click). */
ZVBKOR_API int32_t AnzeigeVoll(void);

/* Rotates the shown page by 90 degrees clockwise for a positive value, counter-clockwise for a
 * negative one. */
ZVBKOR_API int32_t AnzeigeDrehen(int32_t direction);

/* Inverts the shown page (black becomes white); a second call restores it. */
ZVBKOR_API int32_t AnzeigeInvert(void);

#ifdef __cplusplus
}
#endif

#endif
