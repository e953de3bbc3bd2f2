// SPDX-License-Identifier: Apache-2.0
// A new home as `init` makes it.

#include "workflow/Workspace.h"
#include "HomeTest.h"
#include "app/ColumnInfo.h"
#include "app/Database.h"
#include "app/Home.h"
#include "app/mdlDB.h"
#include "model/Schema.h"

namespace {

using NewHome = HomeTest;

TEST_F(NewHome, has_every_table_the_values_table_in_contract_order_settings_master_data_and_files) {
    for (const QString& table : schemaTables())
        EXPECT_TRUE(tableExists(table)) << table.toStdString();
    QStringList names;
    for (const ColumnInfo& c : tableColumns("zvbWerte"))
        names << c.name;
    // The result file fills the columns by position: the raw lines follow the five scan columns.
    EXPECT_EQ(names.mid(0, 6), (QStringList{"BMPName", "SCANDAT", "TYP", "BMOffsetX", "BMOffsetY", "T4_L1"}));
    EXPECT_EQ(names.mid(31), (QStringList{"LfdNr", "Neuimport"}));
    EXPECT_EQ(names, valuesTableColumns());

    // Settings, master data and files.
    EXPECT_EQ(CountRows("*", "zvbSys", QString()), 1);
    EXPECT_EQ(GetSysText("Export_Pfad"), home.path("export"));
    EXPECT_TRUE(GetSysValue("Report_Pfad").isNull());
    EXPECT_TRUE(GetSysValue("APP_LastOpened").isNull());
    EXPECT_EQ(GetSysText("Color_Fehler"), "&HA0A0FF");
    // The ten form fields are checked.
    EXPECT_EQ(CountRows("*", "ZVBFelder", "satznummer>0"), 10);
    EXPECT_EQ(GetValue("State_XmlType", "sysStates", "State_ID='DE'").toString(), "4");
    EXPECT_GE(CountRows("*", "ocrErsetzungen", QString()), 3);
    const QByteArray ini = home.readFile("tarnvel.ini");
    EXPECT_TRUE(ini.startsWith("; Settings shared with the evaluation program.\r\n[Beleg]\r\nTrenner=;\r\n"))
        << ini.data();
    EXPECT_TRUE(ini.contains("\r\n[Auswertung]\r\n") && ini.endsWith("\r\nMinKonfidenz=95.5\r\n")) << ini.data();
    // default.xml: the export tests fill every placeholder of the home's template.
    for (const QString& folder : homeWorkingFolders())
        EXPECT_TRUE(QFileInfo(home.path(folder)).isDir()) << folder.toStdString();
}

TEST(
    DataFolder,
    a_lookup_creates_no_database_and_installed_programs_read_the_data_beside_them_and_only_build_tree_programs_read_the_source_tree) {
    TempHome prefix(TempHome::Content::Empty);
    // A home without a database: a look-up never creates one.
    EXPECT_THROW(GetValue("APP_Language", "zvbSys", QString()), VeridonError);
    EXPECT_FALSE(QFileInfo::exists(prefix.path("data.mdb")));
    ASSERT_TRUE(QDir().mkpath(prefix.path("bin")));
    const QString programDir = prefix.path("bin");
    const QString installed = prefix.path("share/veridon/");
    // Installed without its data: the error will name the folder beside the program.
    EXPECT_EQ(masterDataDirFor(programDir), installed);
    ASSERT_TRUE(QDir().mkpath(installed + "tables"));
    EXPECT_EQ(masterDataDirFor(programDir), installed);

    const QString buildTreeProgram = QFileInfo(QFileInfo("/proc/self/exe").canonicalFilePath()).absolutePath();
    EXPECT_TRUE(QFileInfo::exists(masterDataDirFor(buildTreeProgram) + "tables/ZVBFelder.tsv"));
}

} // namespace
