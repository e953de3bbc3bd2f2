// SPDX-License-Identifier: Apache-2.0
#include "FieldPalette.h"

#include <QPalette>
#include <QWidget>

QColor colourOf(qint32 reference) {
    return QColor(colourRed(reference), colourGreen(reference), colourBlue(reference));
}

void setFieldBackground(QWidget* field, qint32 reference) {
    QPalette palette = field->palette();
    const QColor colour = colourOf(reference);
    palette.setColor(QPalette::Active, QPalette::Base, colour);
    palette.setColor(QPalette::Inactive, QPalette::Base, colour);
    field->setPalette(palette);
}

QColor fieldBackground(const QWidget* field) {
    return field->palette().color(QPalette::Active, QPalette::Base);
}

void resetFieldBackground(QWidget* field) {
    field->setPalette(QPalette());
}
