// SPDX-License-Identifier: Apache-2.0
// Decoding through Qt's image readers (the TIFF plugin reads group 4, LZW, JPEG and plain pages;
// a reader starts at the first page of a multi-page file).
#include "PageCache.h"

#include <QFileInfo>
#include <QImageReader>

std::shared_ptr<const PageImage> PageCache::page(const QString& path, QString* error) {
    const QFileInfo info(path);
    if (!info.isFile()) {
        *error = QStringLiteral("Die Bilddatei '%1' gibt es nicht.").arg(path);
        return nullptr;
    }
    const QString key = info.absoluteFilePath();
    const QDateTime modified = info.lastModified();
    const qint64 size = info.size();
    for (qsizetype i = 0; i < entries_.size(); ++i) {
        const Entry& entry = entries_.at(i);
        if (entry.path == key && entry.modified == modified && entry.size == size) {
            entries_.move(i, 0);
            return entries_.first().page;
        }
    }
    QImageReader reader(key);
    reader.setAutoTransform(false);
    const QImage decoded = reader.read();
    if (decoded.isNull()) {
        *error = QStringLiteral("Die Bilddatei '%1' kann nicht gelesen werden: %2").arg(key, reader.errorString());
        return nullptr;
    }
    auto page = std::make_shared<const PageImage>(decoded);
    entries_.removeIf([&](const Entry& e) { return e.path == key; });
    entries_.prepend(Entry{key, modified, size, page});
    while (entries_.size() > capacity)
        entries_.removeLast();
    return page;
}
