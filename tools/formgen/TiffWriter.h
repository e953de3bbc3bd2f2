// SPDX-License-Identifier: Apache-2.0
// Writes pages as TIFF the way a document scanner stores them: bitonal pages as CCITT group 4
// (about 50 KB for an A4 page at 200 dpi), grey and colour pages LZW-compressed, several pages in
// one file when given several. Qt's own TIFF writer cannot do group 4 or more than one page.
#pragma once

#include <QList>
#include <QString>

class QImage;

// Writes pages into one TIFF file at path, first page first. A page in QImage::Format_Mono or
// Format_MonoLSB becomes a 1-bit group 4 page (black ink = the darker colour of its table), a
// Format_Grayscale8 page an 8-bit grey page, anything else an RGB page. The resolution is taken
// from the image (dots per metre) and is 200 dpi when the image has none. Returns false, with the
// reason in *error when given, when there is no page or the file cannot be written; a partly
// written file is removed.
bool writeTiffPages(const QString& path, const QList<QImage>& pages, QString* error = nullptr);
