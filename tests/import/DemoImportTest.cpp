// SPDX-License-Identifier: Apache-2.0
// The demo: its result file is what the generator makes of the demo forms, and importing it gives
// the records a new user sees, most of them clean and two with a "?" for the operator.

#include "CardText.h"
#include "CliRun.h"
#include "ImportFixture.h"

#include <QFile>

namespace {

class DemoImport : public ImportTest {
protected:
    DemoImport() : ImportTest(TempHome::Content::Demo) {}
};

// The demo records as imported: BMPName, TYP, STATE, NACHNAME, VORNAME, GEBDAT, PERSONAL_ID,
// INSTITUT_ID, CARD_ID, CARD_EXPIRY.
// clang-format off
const char* const expected[] = {
    "31901001.tif|4|AT|Huber|Maria|03/07/1961|1236030761|1100 - OEGK|80040001234567890123|31/12/2029",
    "31901002.tif|4|NL|De Vries|Jan Pieter|22/02/1985|123456782|3311 - Zilveren Kruis|80528000012345678901|15/06/2028",
    "31901003.tif|5|FR|Dupont|Marie-Claire|14/09/1990|290097512345636|75 - CPAM Paris|80250000001234567890|30/09/2027",
    "31901004.tif|5|IT|Rossi|Giuseppe|01/01/1950|RSSGPP50A01H501S|120207 - ASL Roma 1|80380000000123456789|01/01/2028",
    "31901005.tif|4|PL|KOWALSKI|Piotr|30/11/1978|78113012357|0110 - NFZ Warszawa|80616000000012345678|31/03/2027",
    "31901006.tif|4|D?|Müller-Lüdenscheidt|Jürgen|28/02/1966|M123456785|108310400 - AOK Bayern|80276883110000123456|31/12/2030",
    "31901007.tif|5|ES|Garc?a López|José Luis|05/05/1982|12345678Z|28 - INSS Madrid|80724000000001234567|31/05/2029",
    "31901008.tif|4|SE|Lindqvist|Astrid|17/12/1995|199512172389|SE - Försäkringskassan|80752000000000123456|17/12/2028",
};
// clang-format on

TEST(DemoResultFile, is_what_the_generator_makes_of_the_demo_forms) {
    const QVector<CardForm> forms = readCardForms(VERIDON_DEMO_DIR "/forms.tsv");
    ASSERT_EQ(forms.size(), 8);
    QFile file(VERIDON_DEMO_DIR "/home/import/zvscan.txt");
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QStringList lines = QString::fromUtf8(file.readAll()).split('\n', Qt::SkipEmptyParts);
    EXPECT_EQ(lines, demoResultLines(forms))
        << "regenerate with: make-demo-result data/demo/forms.tsv data/demo/home/import/zvscan.txt";
}

// Imported by the command line, the demo result file gives the demo records; the same file again is
// refused, and one line is counted in the singular.
TEST_F(DemoImport, demo_result_file_gives_the_demo_records) {
    ASSERT_TRUE(exists("import/zvscan.txt")) << "init --demo installs the result file";
    closeDatabase();
    const QStringList args{"--home", home.dir(), "import", importPath()};
    CliRun run = runCli(args);
    EXPECT_EQ(run.exitCode, 0) << run.err.toStdString();
    EXPECT_EQ(run.out, "8 Datensätze importiert\n");
    ASSERT_EQ(rowCount("Workflow_Status=10 AND Neuimport=false AND FORM_ID='E-111N' AND SCANDAT='15.11.2026'"), 8);
    for (int lfdNr = 1; lfdNr <= 8; ++lfdNr) {
        QStringList row;
        for (const char* column : {"BMPName", "TYP", "STATE", "NACHNAME", "VORNAME", "GEBDAT", "PERSONAL_ID",
                                   "INSTITUT_ID", "CARD_ID", "CARD_EXPIRY"})
            row << text(lfdNr, column);
        EXPECT_EQ(row.join('|'), QString::fromUtf8(expected[lfdNr - 1]));
    }
    closeDatabase();
    run = runCli(args);
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_TRUE(run.err.contains("nicht gefunden"));
    home.writeFile("import/zvscan.txt", "31901009.tif;15.11.2026;4;0;0;;IE;0'Brien\r\n");
    EXPECT_EQ(runCli(args).out, "1 Datensatz importiert\n");
}

} // namespace
