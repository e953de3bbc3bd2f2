// SPDX-License-Identifier: Apache-2.0
// How a message reaches the operator and how the answer comes back. The windows show a message box,
// the command line prints to stderr and answers from --yes/--no, tests script the answers. The log
// entry is written by zvMsgBox itself, whoever presents the message.
#pragma once

#include <QString>

// Button and icon style words and answer codes of the classic message box; callers add a buttons
// value, an icon value and a default-button value together.
namespace MsgBox {
inline constexpr int OKOnly = 0;
inline constexpr int OKCancel = 1;
inline constexpr int AbortRetryIgnore = 2;
inline constexpr int YesNoCancel = 3;
inline constexpr int YesNo = 4;
inline constexpr int RetryCancel = 5;
inline constexpr int Critical = 16;
inline constexpr int Question = 32;
inline constexpr int Exclamation = 48;
inline constexpr int Information = 64;
inline constexpr int DefaultButton2 = 256;
inline constexpr int DefaultButton3 = 512;

inline constexpr int OK = 1;
inline constexpr int Cancel = 2;
inline constexpr int Abort = 3;
inline constexpr int Retry = 4;
inline constexpr int Ignore = 5;
inline constexpr int Yes = 6;
inline constexpr int No = 7;

inline int buttonsOf(int style) {
    return style & 0x0F;
}
inline int iconOf(int style) {
    return style & 0xF0;
}
} // namespace MsgBox

class MessagePresenter {
public:
    virtual ~MessagePresenter() = default;
    // Shows prompt (line breaks already CR LF) with the style word and title; returns the answer code.
    virtual int show(const QString& prompt, int buttons, const QString& title) = 0;
};

// Prints messages to stderr and answers questions with a preset answer: Yes/OK when answerYes,
// No/Cancel otherwise. Counts the error messages (critical icon) it has shown.
class ConsolePresenter : public MessagePresenter {
public:
    explicit ConsolePresenter(bool answerYes = false) : answerYes_(answerYes) {}
    int show(const QString& prompt, int buttons, const QString& title) override;
    int errorCount() const { return errors_; }
    void setAnswerYes(bool yes) { answerYes_ = yes; }

private:
    bool answerYes_;
    int errors_ = 0;
};

// The presenter in use. Never null: a console presenter answering "No" until another is installed.
MessagePresenter& messagePresenter();
// Installs a presenter (not owned); nullptr restores the console presenter.
void setMessagePresenter(MessagePresenter* presenter);
