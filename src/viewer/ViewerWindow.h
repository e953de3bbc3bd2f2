// SPDX-License-Identifier: Apache-2.0
// The viewer's top-level window, captioned "ZV-Beleg Image Viewer" (the caption by which the main
// window finds it to raise it). It is shown without being activated and never accepts the
// keyboard focus, so typing goes on in the caller's window while the page follows the fields.
#pragma once

#include "PageView.h"

#include <QPointer>
#include <QWidget>

class QLabel;

class ViewerWindow : public QWidget {
    Q_OBJECT
public:
    static const char* caption() { return "ZV-Beleg Image Viewer"; }

    ViewerWindow();

    // Shows page (the first page of the file at path) with region marked and labelled, showing the
    // window first when it is hidden; an open window stays where it is in the stacking order.
    void display(const QString& path, std::shared_ptr<const PageImage> page, const QRect& region, const QString& label);
    // Hides the window and lets go of its page. Returns false when it was not shown.
    bool closeViewer();

    PageView* view() const { return view_; }
    const QString& path() const { return path_; }

protected:
    // Some platforms and window managers activate every window they map, hints or not; the
    // keyboard then goes straight back to the window that had it.
    bool event(QEvent* event) override;

private:
    void updateStatus();

    PageView* view_;
    QLabel* status_;
    QString path_;
    QPointer<QWidget> keyboardOwner_; // the caller's window that was active when a page was shown
};
