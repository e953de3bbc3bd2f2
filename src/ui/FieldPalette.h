// SPDX-License-Identifier: Apache-2.0
// Field colours on screen. The settings hold colour references 0x00BBGGRR; a field shows its colour
// as the background (the palette's Base role) of its edit control, and the F2 search compares that
// background with the error colour.
#pragma once

#include "app/FieldColours.h"

#include <QColor>

class QWidget;

// A colour reference 0x00BBGGRR as a QColor.
QColor colourOf(qint32 reference);

// Sets the background of a field to the colour reference.
void setFieldBackground(QWidget* field, qint32 reference);

// The background colour a field shows now.
QColor fieldBackground(const QWidget* field);

// Gives a field the style's ordinary background again (the empty form).
void resetFieldBackground(QWidget* field);
