// SPDX-License-Identifier: Apache-2.0
// Several workstations on one shared pool: joining it, where each table lives, exporting and
// importing master data at the same moment from separate processes, and the server dropping a
// workstation's connection.
// Runs in the pool variant of this program (on the throwaway server); elsewhere it says so and skips.

#include "CliRun.h"
#include "DemoRecords.h"
#include "HomeTest.h"
#include "app/Database.h"
#include "app/PoolConnection.h"
#include "app/PoolRouting.h"
#include "app/mdlDB.h"
#include "model/FormModel.h"
#include "workflow/mdlWorkflow.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <memory>

namespace {

class SharedPool : public HomeTest {
protected:
    void SetUp() override {
        if (testPoolServer().isEmpty())
            GTEST_SKIP() << "läuft in der Pool-Variante dieses Testprogramms (pool:...)";
        uri = homePoolUri();
    }

    // A further workstation joined to this pool with number n, made by the command line.
    QString joinWorkstation(int n) {
        folders.push_back(std::make_unique<QTemporaryDir>());
        const QString folder = folders.back()->path();
        const CliRun run = runCli({"--home", folder, "init", "--server", uri, "--workstation", QString::number(n)});
        EXPECT_EQ(run.exitCode, 0) << run.err.toStdString();
        EXPECT_TRUE(run.out.contains("Mit dem Belegpool verbunden")) << run.out.toStdString();
        return folder;
    }

    // Starts veridon-cli in every home at once with args; returns each one's exit code and output.
    static QList<QPair<int, QString>> runTogether(const QStringList& homes, const QStringList& args) {
        std::vector<std::unique_ptr<QProcess>> runs;
        for (const QString& folder : homes) {
            runs.push_back(std::make_unique<QProcess>());
            runs.back()->start(VERIDON_CLI, QStringList{"--home", folder} + args);
        }
        QList<QPair<int, QString>> results;
        for (auto& p : runs) {
            EXPECT_TRUE(p->waitForFinished(60000));
            results.append({p->exitCode(), QString::fromLocal8Bit(p->readAllStandardOutput()).trimmed()});
        }
        return results;
    }

    QString uri;
    std::vector<std::unique_ptr<QTemporaryDir>> folders;
};

// Joined workstations keep their own settings and share the records and master data; exporting or
// importing at the same moment from separate processes, each record and each state comes once.
TEST_F(SharedPool, joined_workstations_share_records_and_master_data_and_export_and_import_each_item_once) {
    const QStringList homes{joinWorkstation(2), joinWorkstation(3), joinWorkstation(4)};
    const QString second = homes[0];
    const CliRun info = runCli({"--home", second, "info"});
    EXPECT_TRUE(info.out.contains("Arbeitsplatz: 2"));
    EXPECT_TRUE(info.out.contains(QRegularExpression("zvbWerte +0 +Server")));
    const int states = CountRows("*", "sysStates", QString());
    EXPECT_TRUE(info.out.contains(QRegularExpression(QString("sysStates +%1 +Server").arg(states))));
    EXPECT_TRUE(info.out.contains(QRegularExpression("zvbSys +1 +data.mdb")));
    {
        // The second workstation's data.mdb holds its own tables only.
        QSqlDatabase file = QSqlDatabase::addDatabase("QSQLITE", "second-home");
        file.setDatabaseName(second + "/data.mdb");
        ASSERT_TRUE(file.open());
        QStringList tables = file.tables();
        tables.sort(Qt::CaseInsensitive);
        EXPECT_EQ(tables, (QStringList{"zvbScanOptionen", "zvbSys", "zvbSysKeys", "zvbSysWindowPositions"}));
        file.close();
    }
    QSqlDatabase::removeDatabase("second-home");

    const QVector<qint32> records = insertDemoRecords(2);
    const CliRun next = runCli({"--home", second, "next"});
    EXPECT_EQ(next.out.trimmed(), QString::number(records[0]));
    EXPECT_EQ(workflowOf(records[0]), "30/2") << "taken by workstation 2, seen from workstation 1";
    EXPECT_THROW(execSql("SELECT APP_KorrID, LfdNr FROM zvbSys, zvbWerte"), VeridonError) << "no database holds both";

    execSql("DELETE FROM zvbWerte");
    const QVector<FormValues> forms = demoForms();
    for (int i = 0; i < 40; ++i) {
        FormValues form = forms[i % forms.size()];
        form["BMPName"] = QString("p%1.tif").arg(i, 4, 10, QChar('0'));
        insertRecord(form, 40);
    }
    // Workstation 9 claimed this one for its own pass, which is writing it right now.
    FormValues claimed = forms[0];
    claimed["BMPName"] = "unterwegs.tif";
    const qint32 elsewhere = insertRecord(claimed, 41, 9);
    for (const QString& folder : homes)
        runCli({"--home", folder, "sql", "UPDATE zvbSys SET Backup_Bilder=0"});
    runTogether(homes, {"export"});
    // Each export writes its records into its workstation's export folder.
    QStringList exported;
    for (const QString& folder : homes)
        exported += QDir(folder + "/export").entryList({"*.xml"}, QDir::Files);
    exported.sort();
    EXPECT_EQ(exported.size(), 40);
    EXPECT_EQ(exported.removeDuplicates(), 0);
    EXPECT_EQ(CountRows("*", "zvbWerte", QString()), 1);
    EXPECT_EQ(workflowOf(elsewhere), "41/9") << "another workstation's claim is that one's to finish";

    // A newer master file, seen by all of them as they start together.
    for (const QString& folder : homes) {
        QFile file(folder + "/stammdaten/staaten.txt");
        ASSERT_TRUE(file.open(QIODevice::ReadWrite));
        file.setFileTime(QDateTime::currentDateTime().addSecs(60), QFileDevice::FileModificationTime);
    }
    runTogether(homes, {"autoimport"});
    // The file's 34 states (a heading line above them), once; not one batch per workstation.
    EXPECT_EQ(CountRows("*", "sysStates", QString()), 34);
    EXPECT_EQ(CountRows("*", "sysStates", "State_ID='AT'"), 1);
}

// The driver's warnings while the test runs: a statement prepared on a dropped connection must be
// let go without asking a server that is not there ("Unable to free statement").
QStringList driverWarnings;
void keepWarning(QtMsgType type, const QMessageLogContext&, const QString& text) {
    if (type == QtWarningMsg)
        driverWarnings << text;
}

TEST_F(SharedPool, a_record_whose_save_the_server_dropped_is_kept_and_saved_once_it_answers) {
    driverWarnings.clear();
    const QtMessageHandler previous = qInstallMessageHandler(keepWarning);
    const QVector<qint32> records = insertDemoRecords(2);
    // A first hand-over leaves its statements prepared on the connection about to be dropped.
    ASSERT_EQ(TakeNextRecord(), records[0]);
    ASSERT_TRUE(SaveWithStatus(records[0], 40));
    ASSERT_EQ(TakeNextRecord(), records[1]);
    WerteArray().SetValue("NACHNAME", "Nowak");
    int backend = 0;
    {
        QSqlQuery pid = execPoolSql("SELECT pg_backend_pid()");
        ASSERT_TRUE(pid.next());
        backend = pid.value(0).toInt();
    }
    {
        QSqlDatabase admin = openPoolConnection(uri, "pool-admin");
        QSqlQuery kill(admin);
        ASSERT_TRUE(kill.exec(QString("SELECT pg_terminate_backend(%1)").arg(backend)));
    }
    QSqlDatabase::removeDatabase("pool-admin");

    EXPECT_FALSE(SaveWithStatus(records[1], 40));
    EXPECT_TRUE(messages.saw("antwortet nicht. Ihre Eingaben bleiben erhalten"));
    EXPECT_EQ(WerteArray().GetValue("NACHNAME"), "Nowak") << "the operator's correction is still in hand";
    EXPECT_TRUE(SaveWithStatus(records[1], 40)) << "the next statement connects again";
    EXPECT_EQ(columnOf(records[1], "NACHNAME"), "Nowak");
    EXPECT_EQ(workflowOf(records[1]), "40/0");
    closeDatabase();
    qInstallMessageHandler(previous);
    EXPECT_EQ(driverWarnings, QStringList());
}

} // namespace
