// SPDX-License-Identifier: Apache-2.0
// A home with a hand-over template of the tests' own, records to export and their image files.
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
        home.writeFile(QStringLiteral("default.xml"), templateBytes());
    }

    // The template: every placeholder, two of them in attributes, a line of blanks and a line
    // holding a tab, LF line ends and no line end after the last line.
    static QByteArray templateBytes() {
        return "<?xml version=\"1.0\" encoding=\"windows-1252\"?>\n"
               "<Uebergabe schema=\"%VERSION%\" erfasst=\"%FORM_DATE%\">\n"
               "  %FORM_ID%\n"
               "  %STATE%\n"
               "  %CASE_IDENTIFIER%\n"
               "  <Person>\n"
               "    %NACHNAME%\n"
               "    %VORNAME%\n"
               "    %GEBDAT%\n"
               "    %PERSONAL_ID%\n"
               "  </Person>\n"
               "      \n"
               "\t\n"
               "  <Karte>\n"
               "    %INSTITUT_ID%\n"
               "    %CARD_ID%\n"
               "    %CARD_EXPIRY%\n"
               "  </Karte>\n"
               "</Uebergabe>";
    }

    // A demo form in state 40 with its image file in the image folder; returns its LfdNr.
    qint32 acceptedForm(int index, const RowValues& changes = {}) {
        RowValues row = demoForm(index);
        row.insert(QStringLiteral("Workflow_Status"), 40);
        row.insert(QStringLiteral("Workflow_KorrID"), 1);
        row.insert(QStringLiteral("Korrigiert"), 1);
        row.insert(changes);
        const QString image = row.value(QStringLiteral("BMPName")).toString();
        if (!image.isEmpty())
            home.writeFile(QStringLiteral("images/") + image, "II* Bild " + image.toLatin1());
        return insertRecord(row);
    }

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
