// SPDX-License-Identifier: Apache-2.0
#include "QtMessagePresenter.h"

#include "app/mdlMessages.h"

#include <QAbstractButton>
#include <QApplication>
#include <QCursor>
#include <QMessageBox>
#include <QPushButton>
#include <vector>

namespace {

struct ButtonChoice {
    QMessageBox::StandardButton button;
    const char* textId;      // the button's caption in sysTexts
    const char* defaultText; // UTF-8, with the accelerator's "&"
    int answer;
};

const ButtonChoice okButton{QMessageBox::Ok, "Txt_BtnOK", "&OK", MsgBox::OK};
const ButtonChoice cancelButton{QMessageBox::Cancel, "Txt_BtnCancel", "&Abbrechen", MsgBox::Cancel};
const ButtonChoice yesButton{QMessageBox::Yes, "Txt_BtnYes", "&Ja", MsgBox::Yes};
const ButtonChoice noButton{QMessageBox::No, "Txt_BtnNo", "&Nein", MsgBox::No};
const ButtonChoice retryButton{QMessageBox::Retry, "Txt_BtnRetry", "&Wiederholen", MsgBox::Retry};

std::vector<ButtonChoice> buttonsFor(int style) {
    switch (MsgBox::buttonsOf(style)) {
    case MsgBox::OKCancel:
        return {okButton, cancelButton};
    case MsgBox::AbortRetryIgnore:
        return {{QMessageBox::Abort, "Txt_BtnAbort", "&Abbrechen", MsgBox::Abort},
                retryButton,
                {QMessageBox::Ignore, "Txt_BtnIgnore", "&Ignorieren", MsgBox::Ignore}};
    case MsgBox::YesNoCancel:
        return {yesButton, noButton, cancelButton};
    case MsgBox::YesNo:
        return {yesButton, noButton};
    case MsgBox::RetryCancel:
        return {retryButton, cancelButton};
    default:
        return {okButton};
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
    // Captions in the operator's language, each with its letter: "J" answers Yes, "N" No.
    for (const ButtonChoice& c : choices)
        box.addButton(c.button)->setText(GetText(QLatin1String(c.textId), QString::fromUtf8(c.defaultText)));
    // The focus frame shows which button Enter presses, also before any key was pressed.
    box.setAttribute(Qt::WA_KeyboardFocusChange);
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
