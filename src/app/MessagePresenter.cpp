// SPDX-License-Identifier: Apache-2.0
#include "MessagePresenter.h"

#include "Seam.h"

#include <cstdio>

int ConsolePresenter::show(const QString& prompt, int buttons, const QString& title) {
    const int icon = MsgBox::iconOf(buttons);
    if (icon == MsgBox::Critical)
        ++errors_;
    QString text = prompt;
    text.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    const char* kind = icon == MsgBox::Critical      ? "Fehler"
                       : icon == MsgBox::Exclamation ? "Warnung"
                       : icon == MsgBox::Question    ? "Frage"
                                                     : "Hinweis";
    std::fprintf(stderr, "%s (%s): %s\n", kind, title.toLocal8Bit().constData(), text.toLocal8Bit().constData());
    int answer = MsgBox::OK;
    switch (MsgBox::buttonsOf(buttons)) {
    case MsgBox::OKOnly:
        answer = MsgBox::OK;
        break;
    case MsgBox::OKCancel:
        answer = answerYes_ ? MsgBox::OK : MsgBox::Cancel;
        break;
    case MsgBox::AbortRetryIgnore:
        answer = answerYes_ ? MsgBox::Ignore : MsgBox::Abort;
        break;
    case MsgBox::YesNoCancel:
        answer = answerYes_ ? MsgBox::Yes : MsgBox::Cancel;
        break;
    case MsgBox::YesNo:
        answer = answerYes_ ? MsgBox::Yes : MsgBox::No;
        break;
    case MsgBox::RetryCancel:
        answer = MsgBox::Cancel;
        break;
    }
    if (MsgBox::buttonsOf(buttons) != MsgBox::OKOnly)
        std::fprintf(stderr, "  -> %s\n",
                     answer == MsgBox::Yes || answer == MsgBox::OK || answer == MsgBox::Ignore ? "Ja" : "Nein");
    return answer;
}

namespace {
ConsolePresenter fallback;
Seam<MessagePresenter> seam(fallback);
} // namespace

MessagePresenter& messagePresenter() {
    return seam.get();
}

void setMessagePresenter(MessagePresenter* presenter) {
    seam.install(presenter);
}
