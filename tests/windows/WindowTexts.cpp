// SPDX-License-Identifier: Apache-2.0
#include "WindowTexts.h"

#include "app/mdlDB.h"
#include "app/mdlMessages.h"

#include <QAbstractButton>
#include <QAction>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QPlainTextEdit>
#include <QTabWidget>

QStringList visibleTexts(const QWidget* window) {
    QStringList texts{window->windowTitle()};
    for (const QWidget* w : window->findChildren<QWidget*>()) {
        texts << w->toolTip();
        if (auto* label = qobject_cast<const QLabel*>(w))
            texts << label->text();
        else if (auto* button = qobject_cast<const QAbstractButton*>(w))
            texts << button->text();
        else if (auto* group = qobject_cast<const QGroupBox*>(w))
            texts << group->title();
        else if (auto* edit = qobject_cast<const QLineEdit*>(w))
            texts << edit->text();
        else if (auto* plain = qobject_cast<const QPlainTextEdit*>(w))
            texts << plain->toPlainText();
        else if (auto* menu = qobject_cast<const QMenu*>(w))
            texts << menu->title();
        else if (auto* combo = qobject_cast<const QComboBox*>(w))
            for (int i = 0; i < combo->count(); ++i)
                texts << combo->itemText(i);
        else if (auto* list = qobject_cast<const QListWidget*>(w))
            for (int i = 0; i < list->count(); ++i)
                texts << list->item(i)->text();
        else if (auto* tabs = qobject_cast<const QTabWidget*>(w))
            for (int i = 0; i < tabs->count(); ++i)
                texts << tabs->tabText(i) << tabs->tabToolTip(i);
    }
    for (const QAction* a : window->findChildren<QAction*>())
        texts << a->text() << a->toolTip();
    texts.removeAll(QString());
    return texts;
}

void useLanguage(const QString& language) {
    SetSysValue(QStringLiteral("APP_Language"), language);
    ReloadLanguage();
}

// The language is cached per process; a test before may have left another one loaded.
WindowTest::WindowTest() {
    ReloadLanguage();
}
