// SPDX-License-Identifier: Apache-2.0
// A message presenter for tests: records every message and answers from a queue. Installed for its
// lifetime.
#pragma once

#include "app/MessagePresenter.h"

#include <QList>
#include <QString>
#include <QStringList>

class ScriptedPresenter : public MessagePresenter {
public:
    struct Shown {
        QString prompt;
        int buttons;
        QString title;
    };

    ScriptedPresenter() { setMessagePresenter(this); }
    ~ScriptedPresenter() override { setMessagePresenter(nullptr); }

    // Records the message and answers with the next queued answer; when the queue is empty, OK-only
    // messages get OK and questions No.
    int show(const QString& prompt, int buttons, const QString& title) override {
        shown_.append({prompt, buttons, title});
        if (!answers_.isEmpty())
            return answers_.takeFirst();
        return MsgBox::buttonsOf(buttons) == MsgBox::OKOnly ? MsgBox::OK : MsgBox::No;
    }

    // Answers given in turn to the next messages.
    void queueAnswer(int answer) { answers_.append(answer); }

    const QList<Shown>& messages() const { return shown_; }
    QStringList prompts() const {
        QStringList list;
        for (const Shown& s : shown_)
            list << s.prompt;
        return list;
    }
    // True when some shown prompt contains text.
    bool saw(const QString& text) const { return !prompts().filter(text).isEmpty(); }
    void clear() { shown_.clear(); }

private:
    QList<Shown> shown_;
    QList<int> answers_;
};
