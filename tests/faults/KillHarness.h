// SPDX-License-Identifier: Apache-2.0
// Kills the built veridon-cli with SIGKILL at random moments of its work, so a test can look at
// what a crash or a power cut in the middle of a batch leaves behind and at what the next run makes
// of it. The moments are drawn from a seeded generator (VERIDON_KILL_SEED picks another seed; the
// seed is printed so a failing run can be repeated) over a window that adapts to how long the
// command takes: a run that ends before its kill shrinks the window. Also the records and checks the
// export's fault tests share.
#pragma once

#include "CliRun.h"
#include "RecordRows.h"
#include "TempHome.h"
#include "app/mdlDB.h"

#include <QElapsedTimer>
#include <QProcess>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QUuid>
#include <QXmlStreamReader>
#include <cstdio>
#include <random>

// Demo forms in state 40 named <prefix><serial>.tif from serial first on, each with an image of
// imageSize bytes, in one transaction; returns their image names.
inline QStringList addAcceptedRecords(const TempHome& home, const QString& prefix, int first, int count,
                                      int imageSize) {
    QStringList names;
    Transaction transaction;
    for (int serial = first; serial < first + count; ++serial) {
        RowValues row = demoForm(serial % 8);
        names << QStringLiteral("%1%2.tif").arg(prefix).arg(serial, 6, 10, QLatin1Char('0'));
        row.insert(QStringLiteral("BMPName"), names.last());
        row.insert(QStringLiteral("Workflow_Status"), 40);
        insertRecord(row);
        home.writeFile(QStringLiteral("images/") + names.last(),
                       "II*" + QByteArray(imageSize, char('a' + serial % 26)));
    }
    transaction.commit();
    return names;
}

// Whether xml is a whole, well-formed document.
inline bool wellFormedXml(const QByteArray& xml) {
    QXmlStreamReader reader(xml);
    while (!reader.atEnd())
        reader.readNext();
    return !xml.isEmpty() && !reader.hasError();
}

#ifdef VERIDON_CLI
class KillHarness {
public:
    // windowMs: the longest wait before a kill at first (about the duration of the whole command).
    explicit KillHarness(int windowMs) : windowMs_(windowMs), generator_(seed()) {}

    // Runs veridon-cli with args and kills it after a random part of the window unless it ended
    // first. Returns true when it was killed.
    bool runAndKill(const QStringList& args) {
        const int delay = std::uniform_int_distribution<int>(minimumMs, std::max(minimumMs, windowMs_))(generator_);
        QProcess process;
        process.setStandardOutputFile(QProcess::nullDevice());
        process.setStandardErrorFile(QProcess::nullDevice());
        QElapsedTimer timer;
        timer.start();
        process.start(QStringLiteral(VERIDON_CLI), args);
        process.waitForStarted();
        if (process.waitForFinished(delay)) {
            // Ended before the kill: aim earlier next time.
            windowMs_ = std::max(minimumMs, int(timer.elapsed() * 9 / 10));
            return false;
        }
        process.kill(); // SIGKILL: no clean-up, no flush, as after a crash
        process.waitForFinished(10000);
        ++kills_;
        return true;
    }

    int kills() const { return kills_; }

    // The answer of PRAGMA integrity_check on the SQLite file at databasePath ("ok" when sound),
    // read through a connection of its own.
    static QString integrityCheck(const QString& databasePath) {
        const QString name = QUuid::createUuid().toString();
        QString answer;
        {
            QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), name);
            db.setDatabaseName(databasePath);
            if (db.open()) {
                QSqlQuery q(db);
                if (q.exec(QStringLiteral("PRAGMA integrity_check")) && q.next())
                    answer = q.value(0).toString();
            }
            db.close();
        }
        QSqlDatabase::removeDatabase(name);
        return answer;
    }

private:
    static constexpr int minimumMs = 5;

    static quint32 seed() {
        bool set = false;
        const int value = qEnvironmentVariableIntValue("VERIDON_KILL_SEED", &set);
        const quint32 chosen = set ? quint32(value) : 20261123u;
        std::fprintf(stderr, "kill harness seed %u\n", chosen);
        return chosen;
    }

    int windowMs_;
    int kills_ = 0;
    std::mt19937 generator_;
};
#endif
