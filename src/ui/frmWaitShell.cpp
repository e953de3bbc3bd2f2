// SPDX-License-Identifier: Apache-2.0
#include "frmWaitShell.h"

#include <QCloseEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QStyle>
#include <QTimer>

frmWaitShell::frmWaitShell(QWidget* owner) : FormDialog(QStringLiteral("frmWaitShell"), owner) {
    setWindowTitle(QStringLiteral("Auswertung"));
    // Every action of the program waits behind the running evaluation; the main window still repaints.
    setWindowModality(Qt::ApplicationModal);
    setWindowFlag(Qt::WindowCloseButtonHint, false);
    auto* icon = new QLabel(this);
    icon->setPixmap(style()->standardIcon(QStyle::SP_BrowserReload).pixmap(32, 32));
    label_ = new QLabel(QStringLiteral("Bitte warten, Auswertung läuft..."), this);
    label_->setObjectName(QStringLiteral("lblInfo"));
    label_->setMinimumWidth(320);
    auto* layout = new QHBoxLayout(this);
    layout->addWidget(icon);
    layout->addWidget(label_, 1);
    formLoaded();
}

void frmWaitShell::begin(const QString& text) {
    running_ = true;
    label_->setText(text);
    show();
    raise();
    activateWindow();
}

void frmWaitShell::end() {
    running_ = false;
    close();
}

void frmWaitShell::closeEvent(QCloseEvent* event) {
    if (running_) {
        event->ignore();
        return;
    }
    FormDialog::closeEvent(event);
}

void frmWaitShell::reject() {
    // Escape would close a dialog; not while the program runs.
    if (!running_)
        FormDialog::reject();
}

void frmWaitShell::changeEvent(QEvent* event) {
    if (event->type() == QEvent::ActivationChange && running_ && !isActiveWindow())
        QTimer::singleShot(0, this, [this] {
            if (running_) {
                raise();
                activateWindow();
            }
        });
    FormDialog::changeEvent(event);
}
