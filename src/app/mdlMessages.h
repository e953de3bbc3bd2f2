// SPDX-License-Identifier: Apache-2.0
// Messages to the operator, their texts in the current language, and the message log. Every message
// goes through zvMsgBox, which shows it through the installed MessagePresenter and appends it to
// zvMsgLog.txt in the home.
#pragma once

#include "Errors.h"
#include "MessageIds.h"
#include "MessagePresenter.h"

#include <QString>
#include <QVariantList>
#include <exception>

// The product name, shown as the title when a message has none.
QString productName();

// Shows prompt ("\n" becomes a line break) with the style word and title (empty: the product name),
// logs it as "zvMsgBox;<prompt>#<buttons>#<title>;<time>" and returns the answer code.
int zvMsgBox(const QString& prompt, int buttons, const QString& title = QString());

// The text of message id in the current language, defaultText when sysTexts has no row (or the
// database cannot be read); only a null falls back, an empty stored text stays empty. "%1".."%9"
// are filled from values in rising order, then "\n" becomes CR LF. No values leaves placeholders.
QString GetText(const QString& id, const QString& defaultText, const QVariantList& values = {});
QString GetText(const MessageText& message, const QVariantList& values = {});

// Shows a message of the vocabulary, filled with values; returns the answer code.
int ShowMessage(const MessageText& message, int buttons, const QVariantList& values = {});

// The translation of a control's caption or tool tip stored under key, defaultText when none or empty.
QString GetCaption(const QString& defaultText, const QString& key);

// The current language code: APP_Language of zvbSys, "EN" when null; read once and kept until
// reload is true.
QString GetLanguage(bool reload = false);
// Reads the language again (after the options change it, or the home changes).
void ReloadLanguage();

// Appends "source;message;date time" with CR LF to zvMsgLog.txt in the home. Never throws; false
// when the log could not be written.
bool WriteLog(const QString& source, const QString& message);

// The common run-time error report: "Msg_RuntimeErr" with the procedure's name followed by "()",
// the error number and its description, shown with the critical icon.
void ReportRuntimeError(const QString& procedure, int number, const QString& description);
// The same for a caught exception.
void ReportRuntimeError(const QString& procedure, const std::exception& error);
// The description of error as the operator reads it, in the current language (see the .cpp).
QString RuntimeErrorDetail(const VeridonError& error);

// Runs body as one fallible procedure: a failure inside is reported under procedure's name and
// the call returns false; earlier database changes stay.
template <class Body> bool RunReported(const QString& procedure, Body&& body) {
    try {
        body();
        return true;
    } catch (const std::exception& e) {
        ReportRuntimeError(procedure, e);
        return false;
    }
}
