// SPDX-License-Identifier: Apache-2.0
// The decoded first pages of the last image files shown. Moving from field to field of one record
// asks for the same file again and again; it is decoded once and reused as long as the file keeps
// its size and modification time.
#pragma once

#include "PageImage.h"

#include <QDateTime>
#include <QList>
#include <QString>

#include <memory>

class PageCache {
public:
    // The first page of the image file at path: from the cache when the file has not changed since
    // it was decoded, else decoded now. Returns nullptr, with a German reason in *error, when the
    // file is missing or is no readable image.
    std::shared_ptr<const PageImage> page(const QString& path, QString* error);
    // Forgets every decoded page.
    void clear() { entries_.clear(); }

    static constexpr int capacity = 2;

private:
    struct Entry {
        QString path;
        QDateTime modified;
        qint64 size = 0;
        std::shared_ptr<const PageImage> page;
    };
    QList<Entry> entries_; // most recently used first
};
