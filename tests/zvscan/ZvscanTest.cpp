// SPDX-License-Identifier: Apache-2.0
// The evaluation program end to end: form pages in the scan folder, `zvscan`, `veridon-cli import`,
// and the fields in the database compared with what the cards carry; names of six alphabets must
// arrive intact. A run that cannot write its result leaves the pages where they were.
#include "../evaluation/PageDrawing.h"
#include "TempHome.h"
#include "app/mdlDB.h"

#include <QDir>
#include <QProcess>
#include <gtest/gtest.h>

namespace {

struct Card {
    int typ, dx, dy;
    QString state, surname, given;
};

int run(const QString& program, const QStringList& args, QString* output = nullptr) {
    QProcess p;
    p.setProcessChannelMode(QProcess::MergedChannels);
    p.start(program, args);
    p.waitForFinished(120000);
    if (output)
        *output = QString::fromUtf8(p.readAll());
    return p.exitStatus() == QProcess::NormalExit ? p.exitCode() : -1;
}

class ZvscanTest : public ::testing::Test {
protected:
    void SetUp() override {
        for (const char* folder : {"scan", "images", "import"})
            QDir().mkpath(home_.path(folder));
        SetSysValue("Scan_Pfad", home_.path("scan"));
        SetSysValue("Import_Datei", home_.path("import/zvscan.txt"));
        SetSysValue("APP_Bildpfad", home_.path("images"));
    }
    void scanPage(const QString& name, const Card& c, const QList<QRect>& blots = {}) {
        const QImage page = renderForm(formlayout::layoutFor(c.typ), cardValues(c.state, c.surname, c.given));
        ASSERT_TRUE(writeTiffPages(home_.path("scan/" + name), {shiftedPage(page, c.dx, c.dy, blots)}));
    }
    TempHome home_;
};

TEST_F(ZvscanTest, CardsOfSixAlphabetsArriveIntactInTheDatabase) {
    const QList<Card> cards{
        {4, 0, 0, "PL", "Wiśniewska", "Małgorzata"}, {5, 30, -20, "CZ", "Dvořáková", "Jiřina"},
        {4, -25, 40, "HU", "Szőke", "Ödön"},         {5, 0, 0, "RO", "Bălănescu", "Cătălina"},
        {4, 12, 12, "IS", "Þórðardóttir", "Guðrún"}, {5, -50, 55, "DE", "Großmann", "Jürgen"},
    };
    for (int i = 0; i < cards.size(); ++i)
        scanPage(QString("3190200%1.tif").arg(i + 1), cards[i]);

    QString output;
    ASSERT_EQ(run(ZVSCAN, {"--home", home_.dir()}, &output), 0) << output.toStdString();
    EXPECT_TRUE(QDir(home_.path("scan")).entryList(QDir::Files).isEmpty());
    EXPECT_EQ(QDir(home_.path("images")).entryList(QDir::Files).size(), 6);
    const QByteArray result = home_.readFile("import/zvscan.txt");
    EXPECT_TRUE(result.startsWith("\xEF\xBB\xBF"
                                  "31902001.tif;15.11.2026;4;0;0;"));
    EXPECT_EQ(result.count("\r\n"), 6) << result.toStdString();

    ASSERT_EQ(run(VERIDON_CLI, {"--home", home_.dir(), "import", home_.path("import/zvscan.txt")}, &output), 0)
        << output.toStdString();
    for (int i = 0; i < cards.size(); ++i) {
        const Card& c = cards[i];
        const QString where = QString("BMPName = '3190200%1.tif'").arg(i + 1);
        SCOPED_TRACE(c.surname.toStdString());
        EXPECT_EQ(GetValue("TYP", "zvbWerte", where).toString(), QString::number(c.typ));
        EXPECT_EQ(GetValue("STATE", "zvbWerte", where).toString(), c.state);
        EXPECT_EQ(GetValue("NACHNAME", "zvbWerte", where).toString().toStdString(), c.surname.toStdString());
        EXPECT_EQ(GetValue("VORNAME", "zvbWerte", where).toString().toStdString(), c.given.toStdString());
        EXPECT_EQ(GetValue("GEBDAT", "zvbWerte", where).toString(), "03/07/1961");
        EXPECT_EQ(GetValue("PERSONAL_ID", "zvbWerte", where).toString(), "7801012345");
        EXPECT_EQ(GetValue("CARD_ID", "zvbWerte", where).toString(), cardNumberOf(c.state));
        EXPECT_EQ(GetValue("CARD_EXPIRY", "zvbWerte", where).toString(), "31/03/2027");
    }
}

// A blot over the left half of the "o" of Dvořák: the character is marked, and the alternatives
// file beside the result offers the true letter for it; the import shows the mark as "?".
TEST_F(ZvscanTest, SmudgedCharacterComesWithItsAlternatives) {
    scanPage("31905001.tif", {4, 0, 0, "CZ", "Dvořák", "Jiří"}, {QRect(246, 678, 14, 18)});
    QString output;
    ASSERT_EQ(run(ZVSCAN, {"--home", home_.dir()}, &output), 0) << output.toStdString();
    EXPECT_TRUE(home_.readFile("import/zvscan.txt").contains(";Dv\\fřák;"));
    const QByteArray alternatives = home_.readFile("import/zvscan.alt");
    ASSERT_TRUE(alternatives.startsWith("31905001.tif\tT4_L3\t1\t")) << alternatives.toStdString();
    ASSERT_TRUE(alternatives.endsWith("\r\n"));
    const QString candidates = QString::fromUtf8(alternatives.split('\t').value(3).trimmed());
    EXPECT_TRUE(candidates.contains('o')) << candidates.toStdString();
    EXPECT_LE(candidates.size(), 5);

    ASSERT_EQ(run(VERIDON_CLI, {"--home", home_.dir(), "import", home_.path("import/zvscan.txt")}, &output), 0)
        << output.toStdString();
    EXPECT_EQ(GetValue("NACHNAME", "zvbWerte", "BMPName = '31905001.tif'").toString(), "Dv?řák");
}

// A result file that cannot be written leaves the pages where they were and no alternatives behind
// (they are written first): here the result file's name is taken by a folder.
TEST_F(ZvscanTest, UnwritableResultLeavesThePagesAndIsLogged) {
    scanPage("31903001.tif", {4, 0, 0, "CZ", "Dvořák", "Jiří"}, {QRect(246, 678, 14, 18)});
    QDir().mkpath(home_.path("import/zvscan.txt"));
    EXPECT_EQ(run(ZVSCAN, {"--home", home_.dir()}), 1);
    EXPECT_TRUE(QFileInfo::exists(home_.path("scan/31903001.tif")));
    EXPECT_TRUE(QDir(home_.path("images")).entryList(QDir::Files).isEmpty());
    EXPECT_FALSE(QFileInfo::exists(home_.path("import/zvscan.alt")));
    EXPECT_TRUE(home_.readFile("zvMsgLog.txt").contains("zvscan;Importdatei"))
        << home_.readFile("zvMsgLog.txt").toStdString();
}

// The command line: help and version answer without a home, the operator word of the scan sequence
// is accepted, anything else is refused before a page is touched.
TEST_F(ZvscanTest, CommandLineAnswersHelpAndVersionAndRefusesTheUnknown) {
    scanPage("31904001.tif", {4, 0, 0, "AT", "Huber", "Maria"});
    const struct {
        QStringList args;
        int exit;
        QString output;
    } cases[] = {
        {{"--version"}, 0, "zvscan " VERIDON_VERSION "\n"},
        {{"--help"}, 0, "Aufruf: zvscan [Optionen] [/BENUTZER]"},
        {{"--home", home_.dir(), "--scharf"}, 1, "zvscan: Unbekannte Option 'scharf'."},
        {{"--home", home_.dir(), "SCHMIDT"}, 1, "zvscan: Unerwartetes Argument 'SCHMIDT'."},
    };
    for (const auto& c : cases) {
        QString output;
        EXPECT_EQ(run(ZVSCAN, c.args, &output), c.exit) << output.toStdString();
        EXPECT_TRUE(output.contains(c.output)) << output.toStdString();
    }
    EXPECT_TRUE(QFileInfo::exists(home_.path("scan/31904001.tif")));
    QString output;
    EXPECT_EQ(run(ZVSCAN, {"--home", home_.dir(), "/USER"}, &output), 0) << output.toStdString();
    EXPECT_FALSE(QFileInfo::exists(home_.path("scan/31904001.tif")));
}

} // namespace
