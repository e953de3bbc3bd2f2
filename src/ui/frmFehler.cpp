// SPDX-License-Identifier: Apache-2.0
#include "frmFehler.h"

#include <QPlainTextEdit>
#include <QVBoxLayout>

frmFehler::frmFehler(QWidget* parent) : FormDialog(QStringLiteral("frmFehler"), parent) {
    setModal(false);
    setWindowTitle(QStringLiteral("Fehlerliste"));
    text_ = new QPlainTextEdit(this);
    text_->setObjectName(QStringLiteral("txtFehler"));
    text_->setReadOnly(true);
    text_->setToolTip(QStringLiteral("Fehler und Warnungen des Belegs"));
    text_->setLineWrapMode(QPlainTextEdit::WidgetWidth);
    // Read-only, but the keyboard may still move through the text and select it for copying.
    text_->setTextInteractionFlags(Qt::TextSelectableByKeyboard | Qt::TextSelectableByMouse);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(text_);
    resize(480, 240);
    formLoaded();
}

void frmFehler::setErrorText(const QString& text) {
    QString shown = text;
    shown.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    text_->setPlainText(shown);
}

QString frmFehler::errorText() const {
    return text_->toPlainText();
}

void frmFehler::takeFocus() {
    show();
    raise();
    activateWindow();
    text_->setFocus(Qt::ShortcutFocusReason);
}
