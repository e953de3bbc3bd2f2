// SPDX-License-Identifier: Apache-2.0
// Draws a demo form page: an A4 sheet at 200 dpi with heading, instructions, signature line, the
// receipt stamp and a copy of the health insurance card, every field value in its region of the
// layout (FormLayout.h). Needs a QGuiApplication for the fonts.
#pragma once

#include "FormLayout.h"

#include <QHash>
#include <QImage>
#include <QString>

// The text printed for a field's value: the card prints dates as DD/MM/YYYY, everything else is
// printed as given.
QString printedValue(std::string_view field, const QString& value);

// The page of the given layout carrying values (column name -> value; a missing value leaves its
// region blank), as a bitonal image (QImage::Format_Mono, black ink on white) of 1654 x 2339
// pixels marked as 200 dpi. A value too wide for its region is drawn in a smaller type so that it
// stays inside.
QImage renderForm(const formlayout::Layout& layout, const QHash<QString, QString>& values);
