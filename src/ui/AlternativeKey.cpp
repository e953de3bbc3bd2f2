// SPDX-License-Identifier: Apache-2.0
#include "AlternativeKey.h"

#include "app/Settings.h"
#include "app/mdlMessages.h"

#include <QKeyEvent>
#include <QKeySequence>
#include <QLineEdit>
#include <QStatusBar>

namespace {

constexpr int statusMilliseconds = 8000;

QString configuredKey() {
    return setting<Setting::Key_Alternative>();
}

// "h, b (angezeigt: b) ...": every candidate, the one shown, and the keys that go on.
void showCandidates(QStatusBar* status, const AlternativeCycle::Step& step) {
    if (!status)
        return;
    QStringList candidates;
    for (const QChar c : step.candidates)
        candidates << QString(c);
    const QString key =
        QKeySequence::fromString(configuredKey(), QKeySequence::PortableText).toString(QKeySequence::NativeText);
    status->showMessage(GetText(QStringLiteral("Txt_Alternativen"),
                                QString::fromUtf8("Lesevorschläge: %1 (angezeigt: %2) - %3 zeigt den nächsten, "
                                                  "Enter übernimmt."),
                                {candidates.join(QStringLiteral(", ")), QString(step.character), key}),
                        statusMilliseconds);
}

} // namespace

void AlternativeKey::load(qint64 number) {
    cycle_ = number < 0 ? AlternativeCycle() : AlternativeCycle(LoadAlternatives(number));
}

bool AlternativeKey::matches(const QKeyEvent* key) {
    const QKeySequence configured = QKeySequence::fromString(configuredKey(), QKeySequence::PortableText);
    if (configured.count() != 1)
        return false;
    const Qt::KeyboardModifiers mods = key->modifiers() & ~Qt::KeypadModifier;
    return configured[0] == QKeyCombination(mods, Qt::Key(key->key()));
}

bool AlternativeKey::apply(QLineEdit* edit, QStatusBar* status) const {
    if (!edit || cycle_.isEmpty())
        return false;
    const AlternativeCycle::Step step = cycle_.next(
        edit->objectName(), edit->text(), edit->selectionStart() < 0 ? edit->cursorPosition() : edit->selectionStart(),
        int(edit->selectedText().size()));
    if (!step.valid())
        return false;
    // Through the field's own editing, so Ctrl+Z and Escape undo it like any typed character.
    edit->setSelection(step.position, 1);
    edit->insert(QString(step.character));
    edit->setSelection(step.position, 1);
    showCandidates(status, step);
    return true;
}

void AlternativeKey::describe(const QLineEdit* edit, QStatusBar* status) const {
    if (!edit || cycle_.isEmpty())
        return;
    const AlternativeCycle::Step step = cycle_.markAt(
        edit->objectName(), edit->text(), edit->selectionStart() < 0 ? edit->cursorPosition() : edit->selectionStart(),
        int(edit->selectedText().size()));
    if (step.valid())
        showCandidates(status, step);
}
