// SPDX-License-Identifier: Apache-2.0
// The translations of one window, read with a single statement: every sysTexts row of the current
// language whose key starts with the window's name and "_". A window with fifty controls thus
// costs one query when it loads instead of one per caption and tool tip.
#pragma once

#include <QHash>
#include <QString>
#include <optional>

class FormTexts {
public:
    // Reads the texts of formName in the current language. Throws VeridonError when sysTexts
    // cannot be read.
    static FormTexts load(const QString& formName);

    // The stored text of key, or nothing when there is no row or its text is null or empty (an
    // empty translation never blanks a control). Keys compare without regard to case, as the
    // database compares them; of several rows with one key the first one counts.
    std::optional<QString> find(const QString& key) const;

    // The stored text of key, else defaultText (the rule of GetCaption).
    QString caption(const QString& defaultText, const QString& key) const;

private:
    QHash<QString, QString> texts_; // lower-case key -> text of its first row
};
