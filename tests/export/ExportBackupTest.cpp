// SPDX-License-Identifier: Apache-2.0
// What the export leaves in the day's backup: copies of the XML files and images and one text line
// per record in exp.txt, depending on the backup switches.

#include "ExportFixture.h"

namespace {

class ExportBackup : public ExportFixture {
protected:
    QString day(const QString& relative) const { return QStringLiteral("backup/261115/") + relative; }
};

TEST_F(ExportBackup, backup_on_keeps_xml_image_and_a_text_line_per_record) {
    acceptedForm(0);
    acceptedForm(1, {{"Fehlerhaft", "0000000000"}, {"Korrigiert", 0}});
    ExportZVBWerte();
    EXPECT_TRUE(messages.messages().isEmpty()) << messages.prompts().join("|").toStdString();

    EXPECT_EQ(home.readFile(day("exportdata/31901001.xml")), home.readFile("export/31901001.xml"));
    EXPECT_EQ(home.readFile(day("exportdata/31901002.xml")), home.readFile("export/31901002.xml"));
    EXPECT_EQ(home.readFile(day("images/31901001.tif")), "II* Bild 31901001.tif");
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

TEST_F(ExportBackup, backup_off_keeps_nothing_but_still_deletes_image_and_record) {
    SetSysValue("Backup_Enabled", "0");
    acceptedForm(0);
    ExportZVBWerte();
    EXPECT_TRUE(exists("export/31901001.xml"));
    EXPECT_FALSE(exists("backup/261115"));
    EXPECT_FALSE(exists("images/31901001.tif"));
    EXPECT_EQ(records(), 0);
}

TEST_F(ExportBackup, images_off_keeps_xml_and_text_but_no_image) {
    SetSysValue("Backup_Bilder", false);
    acceptedForm(0);
    ExportZVBWerte();
    EXPECT_TRUE(exists(day("exportdata/31901001.xml")));
    EXPECT_TRUE(exists(day("exportdata/exp.txt")));
    EXPECT_FALSE(exists(day("images")));
    EXPECT_FALSE(exists("images/31901001.tif"));
}

TEST_F(ExportBackup, an_unusable_backup_root_puts_the_xml_copy_into_the_home) {
    home.writeFile("keinordner", "eine Datei, kein Ordner");
    SetSysValue("Backup_Pfad", home.path("keinordner"));
    acceptedForm(0);
    ExportZVBWerte();
    EXPECT_TRUE(messages.messages().isEmpty()) << messages.prompts().join("|").toStdString();
    EXPECT_EQ(home.readFile("31901001.xml"), home.readFile("export/31901001.xml"));
    EXPECT_FALSE(exists("images/31901001.tif"));
    EXPECT_EQ(records(), 0);
}

// A missing image counts as removed: the record leaves, without a message and without an image copy.
TEST_F(ExportBackup, a_record_whose_image_is_missing_is_exported_and_removed) {
    acceptedForm(0);
    QFile::remove(home.path("images/31901001.tif"));
    ExportZVBWerte();
    EXPECT_TRUE(messages.messages().isEmpty()) << messages.prompts().join("|").toStdString();
    EXPECT_TRUE(exists("export/31901001.xml"));
    EXPECT_TRUE(exists(day("exportdata/31901001.xml")));
    EXPECT_FALSE(exists(day("images/31901001.tif")));
    EXPECT_EQ(home.readFile(day("exportdata/exp.txt")).count("\r\n"), 1);
    EXPECT_EQ(records(), 0);
}

} // namespace
