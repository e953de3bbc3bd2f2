// SPDX-License-Identifier: Apache-2.0
// A home whose reports print into PDF files in "berichte/", with a scripted report-choice answer.
#pragma once

#include "HomeTest.h"
#include "PdfPages.h"
#include "RecordRows.h"
#include "app/mdlDB.h"
#include "print/PdfReportPrinter.h"
#include "print/ReportChoice.h"
#include "print/mdlPrint.h"

#include <QDir>
#include <QImage>

class PrintFixture : public HomeTest {
protected:
    PrintFixture() : pdf(home.path(QStringLiteral("berichte"))) {
        setReportPrinter(&pdf);
        setReportChoice(&choice);
    }
    ~PrintFixture() override {
        setReportPrinter(nullptr);
        setReportChoice(nullptr);
    }

    // Demo form index as stored, with changes, returned as the row PrintRecord is given.
    QSqlRecord form(int index, const RowValues& changes = {}) {
        RowValues row = demoForm(index);
        row.insert(changes);
        const qint32 number = insertRecord(row);
        QSqlQuery q = execSql(QStringLiteral("SELECT * FROM zvbWerte WHERE LfdNr=%1").arg(number));
        q.next();
        return q.record();
    }

    // The PDF files written, in printing order (their names start with the job number).
    QStringList printed() const {
        return QDir(home.path(QStringLiteral("berichte")))
            .entryList({QStringLiteral("*.pdf")}, QDir::Files, QDir::Name);
    }
    // The only page of the file; an empty page when the file has more or fewer than one.
    PdfPage page(const QString& file) const {
        const QVector<PdfPage> pages = readPdf(home.path(QStringLiteral("berichte/")) + file);
        return pages.size() == 1 ? pages.first() : PdfPage{};
    }

    // A bitmap template of width x height pixels in the home, registered as report id.
    void bitmapReport(qint32 id, int width, int height) {
        QImage image(width, height, QImage::Format_Mono);
        image.setColorTable({qRgb(0, 0, 0), qRgb(255, 255, 255)});
        image.fill(1);
        const QString file = QStringLiteral("test_%1.bmp").arg(id);
        image.save(home.path(file), "BMP");
        execSql("INSERT INTO sysReports (Report_ID, Report_File) VALUES (?, ?)", {id, file});
    }

    void setting(const char* column, const QVariant& value) { SetSysValue(QString::fromLatin1(column), value); }

    PdfReportPrinter pdf;
    FixedReportChoice choice;
};

// The word's top-left corner stands at (xMm, yMm) of the printable area, which begins 10 mm from
// the sheet's edges. The glyph box starts a little right of and below the pen position.
#define EXPECT_AT(page, text, xMm, yMm)                                                                                \
    do {                                                                                                               \
        const PdfPage page_ = (page); /* the page may be a temporary: keep it while its words are read */              \
        const PdfWord* w_ = page_.find(text);                                                                          \
        ASSERT_NE(w_, nullptr) << "word not printed: " << (text);                                                      \
        EXPECT_NEAR(w_->xMin, points(10 + (xMm)), 1.5) << (text);                                                      \
        EXPECT_NEAR(w_->yMin, points(10 + (yMm)), 1.5) << (text);                                                      \
    } while (false)
