// SPDX-License-Identifier: Apache-2.0
// Re-checks stored records as after a change of master data (fill, check all fields, write back,
// all in one transaction) and sets the figure beside the floor: the same rows read and written back
// without checks. Usage: bench_check [RECORDS] (default 100000). Runs in a temporary home.

#include "app/Database.h"
#include "app/Errors.h"
#include "app/mdlDB.h"
#include "check/CheckCommands.h"
#include "check/RecheckRecords.h"
#include "model/FormModel.h"
#include "workflow/Workspace.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <QTextStream>
#include <ctime>

namespace {

QTextStream out(stdout);

// The demo cards (data/demo/forms.tsv) as column names and rows of values.
void readDemoForms(QStringList& columns, QList<QStringList>& rows) {
    QFile file(QStringLiteral(VERIDON_DATA_DIR "/demo/forms.tsv"));
    if (!file.open(QIODevice::ReadOnly))
        throw VeridonError(ErrorNumber::FileNotFound, file.fileName());
    QStringList lines = QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    columns = lines.takeFirst().trimmed().split(QLatin1Char('\t'));
    for (const QString& line : std::as_const(lines))
        rows << line.trimmed().split(QLatin1Char('\t'));
}

// Stores count records made from the demo cards; every tenth carries a fault an operator would have
// to correct, so the error texts are part of the work.
void storeRecords(int count) {
    QStringList columns;
    QList<QStringList> cards;
    readDemoForms(columns, cards);
    const int nachname = int(columns.indexOf(QStringLiteral("NACHNAME")));
    const int cardId = int(columns.indexOf(QStringLiteral("CARD_ID")));
    const int state = int(columns.indexOf(QStringLiteral("STATE")));
    const int expiry = int(columns.indexOf(QStringLiteral("CARD_EXPIRY")));
    QStringList marks;
    for (qsizetype i = 0; i < columns.size(); ++i)
        marks << QStringLiteral("?");
    Transaction transaction;
    QSqlQuery insert = prepareSql(QStringLiteral("INSERT INTO zvbWerte (%1, Workflow_Status) VALUES (%2, 10)")
                                      .arg(columns.join(QLatin1Char(',')), marks.join(QLatin1Char(','))));
    for (int i = 0; i < count; ++i) {
        QStringList card = cards[i % cards.size()];
        switch (i % 40) {
        case 9:
            card[nachname].replace(1, 1, QLatin1Char('?'));
            break;
        case 19:
            card[cardId].replace(3, 1, QLatin1Char('O'));
            break;
        case 29:
            card[state] = QStringLiteral("XX");
            break;
        case 39:
            card[expiry] = QStringLiteral("31.02.2029");
            break;
        }
        for (int c = 0; c < card.size(); ++c)
            insert.bindValue(c, card[c]);
        execPrepared(insert);
    }
    transaction.commit();
}

// Reads every record into the record in hand and writes it back unchanged, in one transaction.
int readAndWriteBack() {
    Transaction transaction;
    QSqlQuery rows = execSql(QStringLiteral("SELECT * FROM zvbWerte ORDER BY LfdNr"));
    int count = 0;
    while (rows.next()) {
        WerteArray().Fill(rows);
        WerteArray().EmptyArray(rows.value(QStringLiteral("LfdNr")).toInt());
        ++count;
    }
    rows.finish();
    transaction.commit();
    return count;
}

// Wall time and the process's CPU time of one pass; on a shared machine the CPU figure is the
// steadier one.
class Stopwatch {
public:
    Stopwatch() {
        wall_.start();
        cpu_ = std::clock();
    }
    void report(const char* what, int records) const {
        const qint64 wallMs = wall_.elapsed();
        const qint64 cpuMs = qint64(double(std::clock() - cpu_) * 1000.0 / CLOCKS_PER_SEC);
        out << QString::fromUtf8(what).leftJustified(36) << QString::number(wallMs).rightJustified(7) << " ms "
            << rate(records, wallMs) << " Datensätze/s   CPU " << QString::number(cpuMs).rightJustified(7) << " ms "
            << rate(records, cpuMs) << " Datensätze/s\n";
        out.flush();
    }

private:
    static QString rate(int records, qint64 ms) {
        return QString::number(ms > 0 ? records * 1000.0 / double(ms) : 0, 'f', 0).rightJustified(7);
    }
    QElapsedTimer wall_;
    std::clock_t cpu_;
};

} // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    const int count = argc > 1 ? QString::fromLocal8Bit(argv[1]).toInt() : 100000;
    QTemporaryDir dir;
    try {
        initHome(dir.path(), false, false);
        QElapsedTimer timer;
        timer.start();
        storeRecords(count);
        out << count << " Datensätze angelegt in " << timer.elapsed() << " ms\n";
        FelderArray().Fill();

        int faulty = 0;
        for (int round = 1; round <= 3; ++round) {
            const Stopwatch floorTime;
            const int floor = readAndWriteBack();
            floorTime.report("Boden (lesen + zurückschreiben)", floor);
            const Stopwatch checkTime;
            faulty = 0;
            const quint64 parsedBefore = checkCommandParseCount();
            const int checked = recheckRecords(-1, [&](const RecheckedRecord& r) { faulty += r.result != 0; });
            checkTime.report("Prüfen (lesen + Check + schreiben)", checked);
            out << "  davon fehlerhaft: " << faulty
                << ", Befehlslisten geparst: " << checkCommandParseCount() - parsedBefore << "\n";
        }
        out << "Fehlerhaft gespeichert: "
            << CountRows(QStringLiteral("*"), QStringLiteral("zvbWerte"), QStringLiteral("Korrigiert=0")) << "\n";
    } catch (const VeridonError& e) {
        QTextStream(stderr) << "Fehler #" << e.number() << ": " << e.description() << '\n';
        closeDatabase();
        return 1;
    }
    closeDatabase();
    return 0;
}
