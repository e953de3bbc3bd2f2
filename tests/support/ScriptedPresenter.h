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

    ScriptedPresenter();
    ~ScriptedPresenter() override;

    int show(const QString& prompt, int buttons, const QString& title) override;

    // Answers given in turn to the next messages; when the queue is empty, OK-only messages get OK
    // and questions get defaultAnswer.
    void queueAnswer(int answer) { answers_.append(answer); }
    void setDefaultAnswer(int answer) { defaultAnswer_ = answer; }

    const QList<Shown>& messages() const { return shown_; }
    QStringList prompts() const;
    // True when some shown prompt contains text.
    bool saw(const QString& text) const;
    void clear() { shown_.clear(); }

private:
    QList<Shown> shown_;
    QList<int> answers_;
    int defaultAnswer_ = MsgBox::No;
};
