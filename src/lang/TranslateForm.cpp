// SPDX-License-Identifier: Apache-2.0
#include "TranslateForm.h"

#include "FormTexts.h"
#include "app/mdlMessages.h"

#include <QAbstractButton>
#include <QAction>
#include <QComboBox>
#include <QDockWidget>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QPlainTextEdit>
#include <QTabBar>
#include <QTabWidget>
#include <QTextEdit>

namespace {

class Translator {
public:
    Translator(const QString& formName, const FormTexts& texts) : form_(formName), texts_(texts) {}

    // Walks the children of parent in their creation order, which is the window's control order.
    void walk(QObject* parent) {
        for (QObject* child : parent->children()) {
            if (auto* widget = qobject_cast<QWidget*>(child)) {
                // Another window (an error list owned by the main window, say) translates itself when
                // it loads; menus are windows to Qt but controls of this form.
                if (widget->isWindow() && !qobject_cast<QMenu*>(widget))
                    continue;
                if (isNamed(widget))
                    translateWidget(widget);
            } else if (auto* action = qobject_cast<QAction*>(child)) {
                if (isNamed(action))
                    translateAction(action);
            }
            walk(child);
        }
    }

private:
    // Unnamed objects are the parts a widget builds for itself (the line edit of a spin box, the tab
    // bar of a tab widget, the buttons of a tool bar); Qt names some of them "qt_...".
    static bool isNamed(const QObject* object) {
        const QString name = object->objectName();
        return !name.isEmpty() && !name.startsWith(QLatin1String("qt_"));
    }

    // form_control_ or form_control(index)_ for a member of a control array.
    QString prefixOf(const QObject* control) const {
        QString prefix = form_ + QLatin1Char('_') + control->objectName();
        const QVariant index = control->property("index");
        if (index.isValid() && !index.isNull())
            prefix += QLatin1Char('(') + index.toString() + QLatin1Char(')');
        return prefix + QLatin1Char('_');
    }

    // Calls apply with the translation of key when there is one; otherwise the property is not
    // touched at all, so a tool tip derived from a caption keeps following it.
    template <class Apply> void with(const QString& key, Apply&& apply) const {
        if (const std::optional<QString> text = texts_.find(key))
            apply(*text);
    }

    void translateWidget(QWidget* w) const {
        const QString prefix = prefixOf(w);
        const QString caption = prefix + QStringLiteral("Caption");
        if (auto* edit = qobject_cast<QLineEdit*>(w)) {
            with(prefix + QStringLiteral("Text"), [&](const QString& t) { edit->setText(t); });
        } else if (auto* plain = qobject_cast<QPlainTextEdit*>(w)) {
            with(prefix + QStringLiteral("Text"), [&](const QString& t) { plain->setPlainText(t); });
        } else if (auto* rich = qobject_cast<QTextEdit*>(w)) {
            with(prefix + QStringLiteral("Text"), [&](const QString& t) { rich->setPlainText(t); });
        } else if (auto* tabs = qobject_cast<QTabWidget*>(w)) {
            translateTabs(
                w, tabs->count(), [&](int i, const QString& t) { tabs->setTabText(i, t); },
                [&](int i, const QString& t) { tabs->setTabToolTip(i, t); });
        } else if (auto* bar = qobject_cast<QTabBar*>(w)) {
            translateTabs(
                w, bar->count(), [&](int i, const QString& t) { bar->setTabText(i, t); },
                [&](int i, const QString& t) { bar->setTabToolTip(i, t); });
        } else if (auto* button = qobject_cast<QAbstractButton*>(w)) {
            with(caption, [&](const QString& t) { button->setText(t); });
        } else if (auto* label = qobject_cast<QLabel*>(w)) {
            with(caption, [&](const QString& t) { label->setText(t); });
        } else if (auto* group = qobject_cast<QGroupBox*>(w)) {
            with(caption, [&](const QString& t) { group->setTitle(t); });
        } else if (auto* menu = qobject_cast<QMenu*>(w)) {
            with(caption, [&](const QString& t) { menu->setTitle(t); });
        } else if (auto* dock = qobject_cast<QDockWidget*>(w)) {
            with(caption, [&](const QString& t) { dock->setWindowTitle(t); });
        } else if (auto* combo = qobject_cast<QComboBox*>(w)) {
            // The selection is kept, so the box shows the translated text of its selected entry.
            const int selected = combo->currentIndex();
            for (int i = 0; i < combo->count(); ++i)
                with(listKey(prefix, i), [&](const QString& t) { combo->setItemText(i, t); });
            if (combo->currentIndex() != selected)
                combo->setCurrentIndex(selected);
        } else if (auto* list = qobject_cast<QListWidget*>(w)) {
            const int selected = list->currentRow();
            for (int i = 0; i < list->count(); ++i)
                with(listKey(prefix, i), [&](const QString& t) { list->item(i)->setText(t); });
            if (list->currentRow() != selected)
                list->setCurrentRow(selected);
        }
        with(prefix + QStringLiteral("ToolTipText"), [&](const QString& t) { w->setToolTip(t); });
    }

    template <class SetText, class SetTip>
    void translateTabs(const QWidget* tabControl, int count, SetText&& setText, SetTip&& setTip) const {
        // Tab pages take the place of the index: form_control(n)_, with n counted from 1.
        const QString control = form_ + QLatin1Char('_') + tabControl->objectName();
        for (int n = 1; n <= count; ++n) {
            const QString tab = control + QLatin1Char('(') + QString::number(n) + QStringLiteral(")_");
            with(tab + QStringLiteral("Caption"), [&](const QString& t) { setText(n - 1, t); });
            with(tab + QStringLiteral("ToolTipText"), [&](const QString& t) { setTip(n - 1, t); });
        }
    }

    static QString listKey(const QString& prefix, int entry) {
        return prefix + QStringLiteral("List(") + QString::number(entry) + QLatin1Char(')');
    }

    void translateAction(QAction* action) const {
        const QString prefix = prefixOf(action);
        with(prefix + QStringLiteral("Caption"), [&](const QString& t) { action->setText(t); });
        with(prefix + QStringLiteral("ToolTipText"), [&](const QString& t) { action->setToolTip(t); });
    }

    QString form_;
    const FormTexts& texts_;
};

} // namespace

void TranslateForm(QWidget* form) {
    if (!form)
        return;
    RunReported(QStringLiteral("TranslateForm"), [&] {
        const QString formName = form->objectName();
        const FormTexts texts = FormTexts::load(formName);
        if (const std::optional<QString> title = texts.find(formName + QStringLiteral("_Caption")))
            form->setWindowTitle(*title);
        Translator(formName, texts).walk(form);
    });
}
