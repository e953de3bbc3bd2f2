// SPDX-License-Identifier: Apache-2.0
// A home with master data and a result file to import: writes the file as the evaluation program
// does (Windows-1252, CR LF), sets the separator in tarnvel.ini and reads back rows and the log.
#pragma once

#include "HomeTest.h"
#include "app/Database.h"
#include "app/Progress.h"
#include "app/TextFile.h"
#include "app/mdlDB.h"
#include "import/mdlImport.h"

#include <QFileInfo>

// Records what the status bar would show.
class RecordedProgress : public Progress {
public:
    RecordedProgress() { setAppProgress(this); }
    ~RecordedProgress() override { setAppProgress(nullptr); }
    void status(const QString& text) override { statuses << text; }
    void progress(qint64, qint64) override {}
    void finished() override { ++finishedCount; }
    QStringList statuses;
    int finishedCount = 0;
};

class ImportTest : public HomeTest {
protected:
    explicit ImportTest(TempHome::Content content = TempHome::Content::MasterData) : HomeTest(content) {}

    QString importPath() const { return home.path("import/zvscan.txt"); }
    QString tempPath() const { return home.path("import/zvscan.tmp"); }

    // Writes the result file with these lines, each ended by CR LF.
    void writeResult(const QStringList& lines) const {
        home.writeFile("import/zvscan.txt", encodeText(lines.join("\n") + "\n"));
    }
    // tarnvel.ini with the separator; an empty one writes the section without the key.
    void setSeparator(const QString& separator) const {
        home.writeFile("tarnvel.ini",
                       encodeText(separator.isEmpty() ? "[Beleg]\n" : "[Beleg]\nTrenner=" + separator + "\n"));
    }
    // Removes the replacement rules, so a test sees exactly what the file said.
    void withoutOcrRules() const { execSql("DELETE * FROM ocrErsetzungen"); }

    int import() const { return ImportZVBWerte(importPath()); }

    QVariant cell(int lfdNr, const QString& column) const {
        return GetValue(column, "zvbWerte", "LfdNr=" + QString::number(lfdNr));
    }
    QString text(int lfdNr, const QString& column) const { return cell(lfdNr, column).toString(); }
    // Expects each "COLUMN=value" of the stored row ("COLUMN=" the empty text, "COLUMN" alone null).
    void expectTexts(int lfdNr, const QStringList& expected) const {
        QStringList stored;
        for (const QString& pair : expected) {
            const QString column = pair.section('=', 0, 0);
            const QVariant value = cell(lfdNr, column);
            stored << (value.isNull() ? column : column + '=' + value.toString());
        }
        EXPECT_EQ(stored, expected) << "row " << lfdNr;
    }
    int rowCount(const QString& condition = QString()) const { return CountRows("*", "zvbWerte", condition); }
    QString log() const { return decodeText(home.readFile("zvMsgLog.txt")); }
    bool exists(const QString& relative) const { return QFileInfo::exists(home.path(relative)); }
};
