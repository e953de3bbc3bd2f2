// SPDX-License-Identifier: Apache-2.0
#include "ScriptedPresenter.h"

ScriptedPresenter::ScriptedPresenter() {
    setMessagePresenter(this);
}

ScriptedPresenter::~ScriptedPresenter() {
    setMessagePresenter(nullptr);
}

int ScriptedPresenter::show(const QString& prompt, int buttons, const QString& title) {
    shown_.append({prompt, buttons, title});
    if (!answers_.isEmpty())
        return answers_.takeFirst();
    return MsgBox::buttonsOf(buttons) == MsgBox::OKOnly ? MsgBox::OK : defaultAnswer_;
}

QStringList ScriptedPresenter::prompts() const {
    QStringList list;
    for (const Shown& s : shown_)
        list << s.prompt;
    return list;
}

bool ScriptedPresenter::saw(const QString& text) const {
    for (const Shown& s : shown_)
        if (s.prompt.contains(text))
            return true;
    return false;
}
