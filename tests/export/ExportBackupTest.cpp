// SPDX-License-Identifier: Apache-2.0
// What the export leaves in the day's backup: copies of the XML files and images and one text line
// per record in exp.txt, depending on the backup switches.

#include "ExportFixture.h"

namespace {

using ExportBackup = ExportFixture;

TEST_F(ExportBackup, backup_on_keeps_xml_image_and_a_text_line_per_record) {
    acceptedForm(0);
    acceptedForm(1, {{"Fehlerhaft", "0000000000"}, {"Korrigiert", 0}});
    ExportZVBWerte();
    EXPECT_TRUE(messages.messages().isEmpty()) << messages.prompts().join("|").toStdString();

    EXPECT_EQ(home.readFile(day("exportdata/31901001.xml")), home.readFile("export/31901001.xml"));
    EXPECT_EQ(home.readFile(day("exportdata/31901002.xml")), home.readFile("export/31901002.xml"));
    EXPECT_EQ(home.readFile(day("images/31901001.tif")), imageOf("31901001.tif"));
    EXPECT_FALSE(exists("images/31901001.tif"));

    // Every column in table order but LfdNr and Workflow_*: the 13 raw lines and the two offsets
    // are empty here, Korrigiert and Neuimport are yes/no.
    const QString empty15(15, QLatin1Char(','));
    EXPECT_EQ(QString::fromLatin1(home.readFile(day("exportdata/exp.txt"))),
              "31901001.tif,15.11.2026,4" + empty15 +
                  ",E-111N,AT,Huber,Maria,03.07.1961,1236030761,1100 - OEGK,80040001234567890123,31.12.2029,,Wahr,\r\n"
                  "31901002.tif,15.11.2026,4" +
                  empty15 +
                  ",E-111N,NL,de Vries,Jan Pieter,22.02.1985,123456782,3311 - Zilveren Kruis,80528000012345678901,"
                  "15.06.2028,0000000000,Falsch,\r\n");

    acceptedForm(2);
    ExportZVBWerte();
    EXPECT_EQ(home.readFile(day("exportdata/exp.txt")).count("\r\n"), 3) << "a later pass of the same day appends";
}

// Whatever the backup settings keep, the image and the record go, also when the image is missing
// already (it counts as removed, without a message). xmlCopy: the folder of the XML copy ("" the
// home itself, nullptr none).
TEST_F(ExportBackup, each_setting_keeps_its_copies_and_image_and_record_always_go) {
    home.writeFile("keinordner", "eine Datei, kein Ordner");
    const struct {
        const char* column;
        QVariant value;
        bool imageMissing;
        const char* xmlCopy;
        bool imageCopy, expLine;
    } cases[] = {
        {"Backup_Enabled", "0", false, nullptr, false, false},
        {"Backup_Bilder", false, false, "backup/261115/exportdata/", false, true},
        {"Backup_Pfad", home.path("keinordner"), false, "", false, false},
        {"Backup_Enabled", "1", true, "backup/261115/exportdata/", false, true},
    };
    for (int i = 0; i < int(std::size(cases)); ++i) {
        const auto& c = cases[i];
        SCOPED_TRACE(c.column);
        const QVariant before = GetSysValue(c.column);
        SetSysValue(c.column, c.value);
        acceptedForm(i);
        const QString image = QString("3190100%1.tif").arg(i + 1);
        const QString xml = image.chopped(4) + ".xml";
        if (c.imageMissing)
            QFile::remove(home.path("images/" + image));
        ExportZVBWerte();
        SetSysValue(c.column, before);
        EXPECT_TRUE(messages.messages().isEmpty()) << messages.prompts().join("|").toStdString();
        EXPECT_TRUE(exists("export/" + xml));
        if (c.xmlCopy) {
            EXPECT_EQ(home.readFile(c.xmlCopy + xml), home.readFile("export/" + xml));
        }
        EXPECT_EQ(exists(day("exportdata/" + xml)), c.xmlCopy && *c.xmlCopy);
        EXPECT_EQ(exists(day("images/" + image)), c.imageCopy);
        EXPECT_EQ(home.readFile(day("exportdata/exp.txt")).contains(image.toLatin1()), c.expLine);
        EXPECT_FALSE(exists("images/" + image));
        EXPECT_EQ(records(), 0);
    }
}

} // namespace
