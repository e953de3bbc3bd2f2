// SPDX-License-Identifier: Apache-2.0
// What the operator's key for reading candidates does in a field: on a "?" the reader had second
// guesses for, it puts the first guess in its place; on a guess it puts the next one, and after the
// last the "?" again, so the operator can look at each and come back. Knows no window: it answers
// from the field's text and selection and the candidates stored with the record.
//
// Candidates are only offered while the field still counts its characters as it did when it was
// imported: the text has the imported length and differs from it only where the imported text had
// a "?". An operator who inserted or deleted characters gets no candidates in that field, because
// the places they were read for may have moved.
#pragma once

#include "OcrAlternatives.h"

#include <QString>
#include <QVector>

class AlternativeCycle {
public:
    AlternativeCycle() = default;
    // The candidates of one record (LoadAlternatives).
    explicit AlternativeCycle(QVector<CharacterAlternatives> marks) : marks_(std::move(marks)) {}

    // The result of the key: the place in the field's text and the character to put there, with
    // the mark's candidates (best first) to name to the operator. position is -1 when the key does
    // nothing here.
    struct Step {
        int position = -1;
        QChar character;
        QString candidates;
        bool valid() const { return position >= 0; }
    };

    // The step for field with text and selection (start and length; length 0 is a cursor, which
    // means the character after it, or the one before it at a mark's end). A selection of more than
    // one character, a place without candidates, and a character the operator typed himself give
    // no step.
    Step next(const QString& field, const QString& text, int selectionStart, int selectionLength) const;

    // The candidates of the mark at the selection, as next() finds it, with its position; no step
    // (position -1) when there is none. character is the one now in the text.
    Step markAt(const QString& field, const QString& text, int selectionStart, int selectionLength) const;

    bool isEmpty() const { return marks_.isEmpty(); }

private:
    const CharacterAlternatives* markAtPosition(const QString& field, const QString& text, int position) const;

    QVector<CharacterAlternatives> marks_;
};
