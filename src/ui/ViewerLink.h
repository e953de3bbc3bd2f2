// SPDX-License-Identifier: Apache-2.0
// The main window's link to the image viewer beside it. On every entry into a field and after every
// record display the viewer shows the record's page on the field's region; it stays on top of the
// form without ever taking the keyboard. Without a bare image name the viewer closes; with a missing
// file it shows a blank page that names the file, so the operator sees why there is no picture.
// Nothing is shown when the display is switched off (GUI_BildanzeigeEnabled).
//
// The link owns the six page actions (zoom in and out, scroll left, right, up and down) that the
// window puts into its menu and tool bar, and their keys: Ctrl with plus or minus zooms, Alt with an
// arrow scrolls. The numeric pad's digits, operators and decimal key type into the fields or stand
// for F2 to F4, and so never move the page.
//
// The viewer comes up the first time in a session at its stored place, or on the first start in the
// part of the screen right of the window.
#pragma once

#include <QObject>

class FieldNavigator;
class QAction;
class QKeyEvent;
class QWidget;

class ViewerLink : public QObject {
    Q_OBJECT

public:
    // window: the main window the viewer stands beside; fields: where the active field is found.
    ViewerLink(QWidget* window, const FieldNavigator& fields);
    // The viewer goes with the window (its place was stored when leaving).
    ~ViewerLink() override;

    // The page actions, for the window's menu and tool bar.
    QAction* const zoomIn;
    QAction* const zoomOut;
    QAction* const left;
    QAction* const right;
    QAction* const up;
    QAction* const down;
    // The page actions are enabled exactly while the display is on.
    void setActionsEnabled(bool on);

    // The viewer's keys: true when key was one (the page action runs when it is enabled).
    bool key(const QKeyEvent* key);

    // Shows the page of record (the record in hand, -1 for none) on the active field's region.
    void showPage(qint32 record);
    // Closes the viewer; its place is kept for the next time it opens.
    void close();
    // Full screen: the record's page until the operator ends it, then the viewer closes. Nothing
    // happens when the record has no image file to show.
    void fullScreen(qint32 record);

    // Puts a shown viewer into the part of the screen right of the window.
    void tileBesideWindow();
    // Stores the viewer's place when it was placed in this session and is shown.
    void savePosition();

private:
    void place();
    void raise();

    QWidget* window_;
    const FieldNavigator& fields_;
    bool placed_ = false; // the viewer took its place in this session
};
