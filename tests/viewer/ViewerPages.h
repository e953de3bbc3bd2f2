// SPDX-License-Identifier: Apache-2.0
// Test pages for the viewer and what the tests look at: A4 scan pages with solid blocks where
// fields would be, written as TIFF like a scanner writes them, and the viewer's windows found by
// their captions and grabbed as the user would see them.
#pragma once

#include <QColor>
#include <QImage>
#include <QList>
#include <QRect>
#include <QString>
#include <QTemporaryDir>

#include <cstdint>
#include <functional>

class QWidget;

enum class PageKind { Bitonal, Grey, Colour };

struct Block {
    QRect rect;    // page pixels
    QColor colour; // as is on colour pages, a dark grey on grey pages, black on bitonal pages
};

// The blocks of the standard test page: a wide block where a surname would be, a small notch right
// of it (shows which way a turn went) and a square far down the page (another field).
inline const QRect surnameBlock(300, 700, 400, 120);
inline const QRect notchBlock(730, 730, 40, 60);
inline const QRect otherBlock(1000, 1800, 200, 200);
inline const QColor blockBlue(30, 60, 200);
inline const QColor notchGreen(20, 170, 40);
inline const QColor otherGrey(40, 40, 40);

// A white page of the given size in pixels with the blocks painted on it, in the kind's format
// (bitonal pages as QImage::Format_Mono), marked with dpi.
QImage makePage(PageKind kind, const QList<Block>& blocks, QSize size = QSize(1654, 2339), int dpi = 200);
// The standard test page of that kind.
QImage standardPage(PageKind kind);
// Writes the pages as one TIFF file dir/name (group 4, LZW grey or LZW colour by format); returns
// the path. Fails the test when the file cannot be written.
QString writeTiff(const QTemporaryDir& dir, const QString& name, const QList<QImage>& pages);

// Shows region r of the image at path through the viewer's Anzeigen, as the main window calls it;
// returns Anzeigen's answer (1 shown, 0 not).
int32_t show(const QString& path, const QRect& r, const char* field = "NACHNAME", const char* offsetX = "0",
             const char* offsetY = "0");

// The viewer's window, found as the main window finds it: by its caption "ZV-Beleg Image Viewer".
QWidget* viewerWindow();
// Every top-level window carrying the viewer's caption.
QList<QWidget*> viewerWindows();
// The viewer's full-screen view while it is up, or nullptr.
QWidget* fullScreenView();
// Runs AnzeigeVoll and returns its answer; whileUp is called with the full-screen view once it is
// up (not at all if it never comes up). The view is closed after 5 s at the latest.
int32_t showFullScreen(const std::function<void(QWidget*)>& whileUp);
// The page area of the viewer window as the user sees it (scroll bars excluded); null without a
// window.
QImage grabPageArea();
// The text of the viewer's status line.
QString viewerStatus();

// The smallest rectangle holding every pixel of image for which test is true (empty if none).
QRect boxOf(const QImage& image, const std::function<bool(QRgb)>& test);

// True when block lies inside a view of the given size with at least margin pixels to spare on
// every side (the user sees all of it).
bool whollyInside(const QRect& block, QSize view, int margin = 8);

// Pixel tests for the blocks as painted (smoothing at the edges aside) and for the mark.
bool isDarkInk(QRgb p);    // black or dark grey: not the red mark, not the grey around the page
bool isBlockBlue(QRgb p);  // the blue block
bool isNotchGreen(QRgb p); // the green notch
bool isMarkRed(QRgb p);    // the viewer's red frame
bool isPaper(QRgb p);      // white paper
