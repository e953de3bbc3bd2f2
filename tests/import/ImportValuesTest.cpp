// SPDX-License-Identifier: Apache-2.0
// From a line to a row: positional filling, empty and short lines, escape codes, the ";" rule, the
// cuts to column size and field length, and the replacement rules.

#include "ImportFixture.h"
#include "app/ColumnInfo.h"
#include "model/Schema.h"

namespace {

class ImportValues : public ImportTest {
protected:
    void SetUp() override { withoutOcrRules(); }
};

// Each case: the separator of tarnvel.ini ("" none: the default ","), the lines, and per new row
// what it holds. Parts fill the columns in table order; an empty part is the empty text, a missing
// one null; escape codes are resolved except in the image name, "\\w" anywhere making the value 0; a
// ";" reads as a point unless the value is over its column's size; a separator of several
// characters is searched as a whole; an invalid field ("\\i") becomes a "?".
TEST_F(ImportValues, parts_fill_the_columns_in_table_order_with_escape_codes_and_separators_resolved) {
    const struct {
        const char* separator;
        QStringList lines;
        QList<QStringList> rows;
    } cases[] = {
        {";",
         {R"(\\scan01\bilder\31901001\f.tif;15.11.2026;4;0;0;1\bf3;;;Ma\wria;x\l;8004\f\f01\l;\bf\bf\l;ab\\w)"},
         {{R"(BMPName=\\scan01\bilder\31901001\f.tif)", "T4_L1=1?3", "T4_L4=0", "T4_L5=x", "T4_L6=8004??01", "T5_L1=??",
           "T5_L2=0"}}},
        {";",
         {"31901001.tif;15.11.2026;4", "", "  31901003.tif  ;  15.11.2026 ;5;-3; 7 ;"},
         {{"TYP=4", "BMOffsetX", "T4_L1", "T5_L7"},
          {"BMPName", "SCANDAT", "T4_L1", "Workflow_Status=10"},
          {"BMPName=31901003.tif", "SCANDAT=15.11.2026", "BMOffsetX=-3", "BMOffsetY=7", "T4_L1"}}},
        {"",
         {"a.tif,12;05,4,0,0,;x;", "b.tif,12;05;2026;9", "a,,4", ",b",
          "31901001.tif,15.11.2026,4,2,-1,EUROPÄISCHE KRANKENVERSICHERUNGSKARTE;AT"},
         {{"SCANDAT=12.05", "T4_L1=.x."},
          {"SCANDAT=12;05;2026"}, // cut to VARCHAR(10), the ";" stays
          {"BMPName=a", "SCANDAT=", "TYP=4"},
          {"BMPName=", "SCANDAT=b"},
          {"SCANDAT=15.11.2026", "BMOffsetY=-1"}}},
        {"|#|",
         {"31901002.tif|#|15.11.2026|#|4|#|0|#|0|#|EUROPÄISCHE | KARTE|#|NL|#|de Vries # 2"},
         {{"BMPName=31901002.tif", "T4_L1=EUROPÄISCHE | KARTE", "T4_L2=NL", "T4_L3=de Vries # 2"}}},
        {";",
         {"31901005.tif;15.11.2026;4;0;0;;AT;Hu\\iber", "31901006.tif;15.11.2026;4;0;0;;NL;de Vries"},
         {{"T4_L3=?"}, {"T4_L3=de Vries"}}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.separator);
        setSeparator(c.separator);
        writeResult(c.lines);
        const int before = rowCount();
        ASSERT_EQ(import(), c.lines.size());
        for (int i = 0; i < c.rows.size(); ++i)
            expectTexts(before + 1 + i, c.rows[i]);
    }
    // An invalid field becomes a "?" and names its image in the log.
    EXPECT_EQ(log().count("\\i im Datensatz"), 1) << log().toStdString();
    EXPECT_TRUE(log().contains("ImportZVBWerte();\\i im Datensatz! Beleg: '31901005.tif';15.11.2026 10:30:00\r\n"));
    EXPECT_EQ(log().count("ImportZVBWerte();TARNVEL.INI ohne Eintrag [Beleg] [Trenner], Default-Wert genutzt!;"
                          "15.11.2026 10:30:00\r\n"),
              1);
}

TEST_F(ImportValues, parts_beyond_the_filled_columns_are_ignored) {
    const QStringList columns = valuesTableColumns();
    QStringList parts(columns.size() + 3);
    parts[0] = "31901001.tif";
    parts[2] = "4";
    parts[columns.indexOf("Fehlerhaft")] = "1111";
    parts[columns.indexOf("Workflow_KorrID")] = "7";
    parts[columns.indexOf("LfdNr")] = "4711";
    parts[columns.indexOf("Neuimport")] = "0";
    parts[columns.size()] = "zu viel";
    writeResult({parts.join(";")});
    ASSERT_EQ(import(), 1);
    EXPECT_EQ(text(1, "Fehlerhaft"), "1111");
    EXPECT_EQ(cell(1, "Workflow_KorrID").toInt(), 7);
    EXPECT_EQ(rowCount("LfdNr=4711"), 0) << "the running number is the database's";
    EXPECT_EQ(rowCount("Neuimport=false"), 1);
}

TEST_F(ImportValues, field_length_cuts_the_value_as_read_over_size_and_corrections) {
    execSql("UPDATE ZVBFelder SET VarLng=12 WHERE VarName='T4_L5'");
    execSql("INSERT INTO ocrErsetzungen (Feld, Suchstring, Ersatzstring) VALUES ('T4_L5', 'O', '0')");
    execSql("INSERT INTO ocrErsetzungen (Feld, Suchstring, Ersatzstring) VALUES ('T4_L5', ';', ',')");
    setSeparator("");
    writeResult({"a.tif,15.11.2026,4,0,0,,,,,12O4O3O761;X1100 - OEGK", "b.tif,15.11.2026,4,0,0,,,,,12O4O3O7;1"});
    ASSERT_EQ(import(), 2);
    EXPECT_EQ(text(1, "T4_L5"), "12O4O3O761;X") << "over the field length: cut, not corrected";
    EXPECT_EQ(text(2, "T4_L5"), "12040307.1") << "within it: ';' read as '.', then corrected";
}

TEST(ValuesTableDefinitions, every_column_has_a_field_definition_of_its_size) {
    TempHome home;
    for (const ColumnInfo& column : tableColumns("zvbWerte")) {
        const QVariant length = GetValue("VarLng", "ZVBFelder", "VarName=" + sqlQuote(column.name));
        ASSERT_FALSE(length.isNull()) << column.name.toStdString();
        if (column.size > 0) {
            EXPECT_EQ(length.toInt(), column.size) << column.name.toStdString();
        }
    }
}

} // namespace
