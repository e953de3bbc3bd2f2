// SPDX-License-Identifier: Apache-2.0
// Qt's own texts - the buttons of the standard dialogs, the colour and folder dialogs, the context
// menu of a text box, the names of keys in the menus - in the operator's language. They come from
// the translations shipped with Qt (Debian: qt6-translations-l10n), chosen by the code of
// APP_Language, so they follow the language texts of the program's own windows.
#pragma once

#include <QString>

// Installs Qt's translation for languageCode ("DE", "EN", ...; any case) in place of the one
// installed before. English needs none, so for it, and for a language Qt has no translation for,
// Qt's English texts are used. True when a translation was installed.
bool LoadQtTranslations(const QString& languageCode);
