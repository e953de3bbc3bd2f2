// SPDX-License-Identifier: Apache-2.0
// The whole page on the whole screen, with the field's mark, until the user ends it with Escape or
// a mouse click. Unlike the viewer window it takes the keyboard while it is up (that is how Escape
// reaches it), blocks input to the caller's windows, and hands activation back to the window that
// had it.
#pragma once

#include "PageImage.h"

#include <QPointer>
#include <QRect>
#include <QWidget>

#include <memory>

class QEventLoop;

class FullScreenView : public QWidget {
    Q_OBJECT
public:
    FullScreenView(std::shared_ptr<const PageImage> page, int quarterTurns, bool inverted, const QRect& region,
                   const QString& label);

    // Shows the view full screen and runs a local event loop until the user or finish() ends it;
    // then hides the view and reactivates the window that was active before.
    void exec();
    // Ends a running exec().
    void finish();

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    QTransform pageToView() const;
    double fitZoom() const;

    std::shared_ptr<const PageImage> page_;
    int turns_;
    bool inverted_;
    QRect region_;
    QString label_;
    QEventLoop* loop_ = nullptr;
};
