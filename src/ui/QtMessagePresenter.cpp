// SPDX-License-Identifier: Apache-2.0
#include "QtMessagePresenter.h"

#include <QAbstractButton>
#include <QApplication>
#include <QCursor>
#include <QMessageBox>
#include <QPushButton>
#include <vector>

namespace {

struct ButtonChoice {
    QMessageBox::StandardButton button;
    const char* text; // UTF-8
    int answer;
};

std::vector<ButtonChoice> buttonsFor(int style) {
    switch (MsgBox::buttonsOf(style)) {
    case MsgBox::OKCancel:
        return {{QMessageBox::Ok, "OK", MsgBox::OK}, {QMessageBox::Cancel, "Abbrechen", MsgBox::Cancel}};
    case MsgBox::AbortRetryIgnore:
        return {{QMessageBox::Abort, "Abbrechen", MsgBox::Abort},
                {QMessageBox::Retry, "Wiederholen", MsgBox::Retry},
                {QMessageBox::Ignore, "Ignorieren", MsgBox::Ignore}};
    case MsgBox::YesNoCancel:
        return {{QMessageBox::Yes, "Ja", MsgBox::Yes},
                {QMessageBox::No, "Nein", MsgBox::No},
                {QMessageBox::Cancel, "Abbrechen", MsgBox::Cancel}};
    case MsgBox::YesNo:
        return {{QMessageBox::Yes, "Ja", MsgBox::Yes}, {QMessageBox::No, "Nein", MsgBox::No}};
    case MsgBox::RetryCancel:
        return {{QMessageBox::Retry, "Wiederholen", MsgBox::Retry}, {QMessageBox::Cancel, "Abbrechen", MsgBox::Cancel}};
    default:
        return {{QMessageBox::Ok, "OK", MsgBox::OK}};
    }
}

QMessageBox::Icon iconFor(int style) {
    switch (MsgBox::iconOf(style)) {
    case MsgBox::Critical:
        return QMessageBox::Critical;
    case MsgBox::Question:
        return QMessageBox::Question;
    case MsgBox::Exclamation:
        return QMessageBox::Warning;
    case MsgBox::Information:
        return QMessageBox::Information;
    default:
        return QMessageBox::NoIcon;
    }
}

} // namespace

QtMessagePresenter::QtMessagePresenter() {
    setMessagePresenter(this);
}

QtMessagePresenter::~QtMessagePresenter() {
    if (&messagePresenter() == this)
        setMessagePresenter(nullptr);
}

int QtMessagePresenter::show(const QString& prompt, int buttons, const QString& title) {
    // Lift every override cursor (they stack) while the operator reads; put them back afterwards.
    QList<QCursor> cursors;
    while (const QCursor* c = QApplication::overrideCursor()) {
        cursors.prepend(*c);
        QApplication::restoreOverrideCursor();
    }

    QString text = prompt;
    text.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    QMessageBox box(iconFor(buttons), title, text, QMessageBox::NoButton, QApplication::activeWindow());
    box.setObjectName(QStringLiteral("zvMsgBox"));
    const std::vector<ButtonChoice> choices = buttonsFor(buttons);
    for (const ButtonChoice& c : choices)
        box.addButton(c.button)->setText(QString::fromUtf8(c.text));
    const size_t defaultIndex = (buttons & MsgBox::DefaultButton3) ? 2 : (buttons & MsgBox::DefaultButton2) ? 1 : 0;
    if (defaultIndex < choices.size())
        box.setDefaultButton(choices[defaultIndex].button);
    // Escape picks Cancel or No where the style offers one.
    for (const ButtonChoice& c : choices)
        if (c.answer == MsgBox::Cancel || c.answer == MsgBox::No || c.answer == MsgBox::Abort || choices.size() == 1)
            box.setEscapeButton(c.button);
    box.exec();

    int answer = choices.front().answer;
    for (const ButtonChoice& c : choices)
        if (box.clickedButton() == box.button(c.button))
            answer = c.answer;

    for (const QCursor& c : std::as_const(cursors))
        QApplication::setOverrideCursor(c);
    return answer;
}
