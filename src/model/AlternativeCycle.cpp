// SPDX-License-Identifier: Apache-2.0
#include "AlternativeCycle.h"

namespace {

// text still counts its characters as imported did: same length, and changed only where imported
// had a "?" (the operator typed over, or cycled through, another doubtful character).
bool samePlaces(const QString& imported, const QString& text) {
    if (imported.size() != text.size())
        return false;
    for (qsizetype i = 0; i < text.size(); ++i)
        if (text[i] != imported[i] && imported[i] != u'?')
            return false;
    return true;
}

} // namespace

const CharacterAlternatives* AlternativeCycle::markAtPosition(const QString& field, const QString& text,
                                                              int position) const {
    if (position < 0 || position >= text.size())
        return nullptr;
    for (const CharacterAlternatives& m : marks_) {
        if (m.position != position || m.field.compare(field, Qt::CaseInsensitive) != 0)
            continue;
        if (m.position >= m.imported.size() || m.imported[m.position] != u'?' || !samePlaces(m.imported, text))
            return nullptr;
        // The character there now is the "?" or one of the candidates; anything else the operator
        // typed himself, and the key leaves it alone.
        const QChar now = text[position];
        return now == u'?' || m.candidates.contains(now) ? &m : nullptr;
    }
    return nullptr;
}

AlternativeCycle::Step AlternativeCycle::markAt(const QString& field, const QString& text, int selectionStart,
                                                int selectionLength) const {
    Step step;
    if (selectionLength > 1 || selectionStart < 0)
        return step;
    const CharacterAlternatives* mark = markAtPosition(field, text, selectionStart);
    if (!mark && selectionLength == 0)
        mark = markAtPosition(field, text, selectionStart - 1);
    if (!mark)
        return step;
    step.position = mark->position;
    step.character = text[mark->position];
    step.candidates = mark->candidates;
    return step;
}

AlternativeCycle::Step AlternativeCycle::next(const QString& field, const QString& text, int selectionStart,
                                              int selectionLength) const {
    Step step = markAt(field, text, selectionStart, selectionLength);
    if (!step.valid())
        return step;
    const qsizetype shown = step.character == u'?' ? -1 : step.candidates.indexOf(step.character);
    step.character = shown + 1 < step.candidates.size() ? step.candidates[shown + 1] : QChar(u'?');
    return step;
}
