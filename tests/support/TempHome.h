// SPDX-License-Identifier: Apache-2.0
// A complete home in a temporary folder, made as `veridon-cli init` makes it, and removed at the end.
// When the test program runs as a pool variant ($VERIDON_TEST_POOL names the throwaway server's
// folder), every home with content is joined to a fresh pool database on that server instead, as
// `veridon-cli init --server` makes it; without a server the program's tests skip, saying why.
#pragma once

#include "QtPrinters.h"
#include "app/Clock.h"

#include <QString>
#include <QTemporaryDir>

class TempHome {
public:
    enum class Content { Empty, MasterData, Demo };
    explicit TempHome(Content content = Content::MasterData);
    ~TempHome();
    TempHome(const TempHome&) = delete;
    TempHome& operator=(const TempHome&) = delete;

    // The home folder, ending in "/".
    QString dir() const;
    // A path inside the home.
    QString path(const QString& relative) const;
    // Writes a file of bytes into the home (folders made as needed); returns its path.
    QString writeFile(const QString& relative, const QByteArray& bytes) const;
    // Reads a file of the home as bytes (empty when missing).
    QByteArray readFile(const QString& relative) const;

private:
    QTemporaryDir dir_;
    QString poolDatabase_; // the server database of a pool home, dropped at the end
};

// The pool URI the homes of this test program are joined to; empty when the tests run on data.mdb
// alone.
QString testPoolServer();
