// SPDX-License-Identifier: Apache-2.0
// A home with its hand-over template, records to export and their image files.
#pragma once

#include "HomeTest.h"
#include "RecordRows.h"
#include "app/mdlDB.h"
#include "export/mdlExport.h"

#include <QDir>
#include <QXmlStreamReader>

class ExportFixture : public HomeTest {
protected:
    ExportFixture() {
        // Reports are the printing tests' business; here the settings ask for none.
        SetSysValue(QStringLiteral("Report_Other_Country"), 0);
        SetSysValue(QStringLiteral("Report_Ambrix_Country"), 0);
    }

    // A demo form in state 40 with its image file in the image folder (none for a path-like name);
    // returns its LfdNr.
    qint32 acceptedForm(int index, const RowValues& changes = {}) {
        RowValues row = demoForm(index);
        row.insert(QStringLiteral("Workflow_Status"), 40);
        row.insert(QStringLiteral("Workflow_KorrID"), 1);
        row.insert(QStringLiteral("Korrigiert"), 1);
        row.insert(changes);
        const QString image = row.value(QStringLiteral("BMPName")).toString();
        if (!image.isEmpty() && !image.contains(QLatin1Char('/')) && !image.contains(QLatin1Char('\\')))
            home.writeFile(QStringLiteral("images/") + image, imageOf(image));
        return insertRecord(row);
    }
    // An image's bytes: large enough that a failing write can hit its copy.
    static QByteArray imageOf(const QString& bmpName) {
        return "II* Bild " + bmpName.toLatin1() + QByteArray(2000, 'x');
    }
    // A path in the backup folder of the test day.
    static QString day(const QString& relative) { return QStringLiteral("backup/261115/") + relative; }

    QString exported(const QString& name) const {
        return QString::fromLatin1(home.readFile(QStringLiteral("export/") + name));
    }
    bool exists(const QString& relative) const { return QFileInfo::exists(home.path(relative)); }
    int records() const { return CountRows(QStringLiteral("*"), QStringLiteral("zvbWerte"), QString()); }

    // The text of every element called name in an XML document, or "<invalid: ...>" when the
    // document does not parse.
    static QStringList elementTexts(const QByteArray& xml, const QString& name) {
        QXmlStreamReader reader(xml);
        QStringList texts;
        while (!reader.atEnd()) {
            reader.readNext();
            if (reader.isStartElement() && reader.name() == name)
                texts << reader.readElementText();
        }
        if (reader.hasError())
            return {QStringLiteral("<invalid: ") + reader.errorString() + QLatin1Char('>')};
        return texts;
    }
};
