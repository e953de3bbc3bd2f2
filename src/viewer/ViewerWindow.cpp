// SPDX-License-Identifier: Apache-2.0
// Window set-up: the page area over a one-line status (file, field, zoom, turn, inversion).
#include "ViewerWindow.h"

#include <QApplication>
#include <QEvent>
#include <QFileInfo>
#include <QLabel>
#include <QVBoxLayout>

ViewerWindow::ViewerWindow()
    : QWidget(nullptr, Qt::Window | Qt::WindowDoesNotAcceptFocus), view_(new PageView(this)),
      status_(new QLabel(this)) {
    setObjectName(QStringLiteral("zvbkorViewer"));
    setWindowTitle(QString::fromLatin1(caption()));
    setAttribute(Qt::WA_ShowWithoutActivating);
    setFocusPolicy(Qt::NoFocus);
    view_->setObjectName(QStringLiteral("zvbkorPage"));
    status_->setObjectName(QStringLiteral("zvbkorStatus"));
    status_->setContentsMargins(6, 2, 6, 2);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(view_, 1);
    layout->addWidget(status_);
    resize(820, 620);
    connect(view_, &PageView::viewChanged, this, &ViewerWindow::updateStatus);
}

void ViewerWindow::display(const QString& path, std::shared_ptr<const PageImage> page, const QRect& region,
                           const QString& label) {
    path_ = path;
    if (QWidget* active = QApplication::activeWindow(); active && active != this)
        keyboardOwner_ = active;
    view_->setPage(std::move(page));
    if (!isVisible())
        show(); // sized and laid out now, so the region is centred in the final view
    view_->showRegion(region, label);
    updateStatus();
}

bool ViewerWindow::closeViewer() {
    const bool wasShown = isVisible();
    hide();
    view_->clearPage();
    path_.clear();
    return wasShown;
}

bool ViewerWindow::event(QEvent* event) {
    if (event->type() == QEvent::WindowActivate && keyboardOwner_ && keyboardOwner_->isVisible())
        keyboardOwner_->activateWindow();
    return QWidget::event(event);
}

void ViewerWindow::updateStatus() {
    QStringList parts;
    if (!path_.isEmpty())
        parts << QFileInfo(path_).fileName();
    if (!view_->markLabel().isEmpty())
        parts << view_->markLabel();
    parts << QStringLiteral("%1 %").arg(qRound(view_->zoom() * 100));
    if (view_->quarterTurns() != 0)
        parts << QStringLiteral("%1°").arg(view_->quarterTurns() * 90);
    if (view_->inverted())
        parts << QStringLiteral("invertiert");
    status_->setText(parts.join(QStringLiteral("  ·  ")));
}
