// SPDX-License-Identifier: Apache-2.0
// The evaluation program end to end: form pages in the scan folder, `zvscan`, `veridon-cli import`,
// and the fields in the database compared with what the cards carry; the layout and the form's shift
// on the sheet are found, names of six alphabets arrive intact, and a page without a card still
// gives its line. A run that cannot write its result leaves the pages where they were.
#include "FormRenderer.h"
#include "TempHome.h"
#include "TiffWriter.h"
#include "app/Database.h"
#include "app/mdlDB.h"

#include <QDir>
#include <QPainter>
#include <QProcess>
#include <gtest/gtest.h>

namespace {

// A card on a form of layout typ (0: no card, a blank sheet) fed moved by (dx, dy).
struct Card {
    int typ, dx, dy;
    QString state, surname, given;
};

// A card number as the state issues it: "80", the state's ISO 3166-1 numeric code, then the serial.
QString cardNumberOf(const QString& state) {
    static const QHash<QString, QString> codes{{"AT", "040"}, {"CZ", "203"}, {"DE", "276"}, {"HU", "348"},
                                               {"IS", "352"}, {"PL", "616"}, {"RO", "642"}};
    return "80" + codes.value(state) + "000000012345678";
}

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
    // Puts the form of card c into the scan folder as a sloppy feed and the scanner leave it: moved on
    // a white sheet, with ink blots (filled rectangles) over it, a bitonal group 4 TIFF at 200 dpi.
    void scanPage(const QString& name, const Card& c, const QList<QRect>& blots = {}) {
        const QHash<QString, QString> values{{"SCANDAT", "15.11.2026"},
                                             {"FORM_ID", "E-111N"},
                                             {"STATE", c.state},
                                             {"NACHNAME", c.surname},
                                             {"VORNAME", c.given},
                                             {"GEBDAT", "03.07.1961"},
                                             {"PERSONAL_ID", "7801012345"},
                                             {"INSTITUT_ID", "0110 - NFZ Warszawa"},
                                             {"CARD_ID", cardNumberOf(c.state)},
                                             {"CARD_EXPIRY", "31.03.2027"}};
        QImage sheet(formlayout::pageWidth, formlayout::pageHeight, QImage::Format_Grayscale8);
        sheet.fill(Qt::white);
        {
            QPainter p(&sheet);
            if (c.typ != 0)
                p.drawImage(c.dx, c.dy, renderForm(formlayout::layoutFor(c.typ), values));
            for (const QRect& r : blots)
                p.fillRect(r, Qt::black);
        }
        QImage page = sheet.convertToFormat(QImage::Format_Mono, Qt::ThresholdDither | Qt::MonoOnly);
        page.setDotsPerMeterX(qRound(200 / 0.0254));
        page.setDotsPerMeterY(qRound(200 / 0.0254));
        ASSERT_TRUE(writeTiffPages(home_.path("scan/" + name), {page}));
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
    scanPage("31902007.tif", {});

    QString output;
    ASSERT_EQ(run(ZVSCAN, {"--home", home_.dir()}, &output), 0) << output.toStdString();
    EXPECT_TRUE(QDir(home_.path("scan")).entryList(QDir::Files).isEmpty());
    EXPECT_EQ(QDir(home_.path("images")).entryList(QDir::Files).size(), 7);
    const QByteArray result = home_.readFile("import/zvscan.txt");
    EXPECT_TRUE(result.startsWith("\xEF\xBB\xBF"
                                  "31902001.tif;15.11.2026;4;0;0;"));
    EXPECT_EQ(result.count("\r\n"), 7) << result.toStdString();
    // The blank sheet: the day it was scanned, no layout, no shift, empty card lines.
    EXPECT_TRUE(result.endsWith("\r\n31902007.tif;" + QDate::currentDate().toString("dd.MM.yyyy").toUtf8() +
                                ";;0;0;;;;;;;;;;;;;\r\n"));

    ASSERT_EQ(run(VERIDON_CLI, {"--home", home_.dir(), "import", home_.path("import/zvscan.txt")}, &output), 0)
        << output.toStdString();
    QSqlQuery q = execSql("SELECT TYP, BMOffsetX, BMOffsetY, STATE, NACHNAME, VORNAME, GEBDAT, PERSONAL_ID, CARD_ID, "
                          "CARD_EXPIRY FROM zvbWerte ORDER BY BMPName");
    for (const Card& c : cards) {
        ASSERT_TRUE(q.next());
        SCOPED_TRACE(c.surname.toStdString());
        EXPECT_NEAR(q.value(1).toInt(), c.dx, 3);
        EXPECT_NEAR(q.value(2).toInt(), c.dy, 3);
        const QStringList want{QString::number(c.typ), c.state,     c.surname, c.given, "03/07/1961", "7801012345",
                               cardNumberOf(c.state),  "31/03/2027"};
        QStringList got{q.value(0).toString()};
        for (int column = 3; column < 10; ++column)
            got << q.value(column).toString();
        EXPECT_EQ(got.join('|').toStdString(), want.join('|').toStdString());
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
