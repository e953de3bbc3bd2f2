// SPDX-License-Identifier: Apache-2.0
// What a window shows as text, gathered the way an operator would read it, and a fixture for tests
// of windows on a temporary home.
#pragma once

#include "HomeTest.h"

#include <QStringList>
#include <QWidget>

// Every caption, text box text, tab caption and tool tip, list entry, menu title and action text
// and tool tip in window, its title first.
QStringList visibleTexts(const QWidget* window);

// Sets APP_Language and reloads it, as saving the options does.
void useLanguage(const QString& language);

class WindowTest : public HomeTest {
protected:
    WindowTest();
};
