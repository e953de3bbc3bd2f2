// SPDX-License-Identifier: Apache-2.0
// The main window of a workstation whose pool server drops its connection while a record is on
// screen. Runs in the pool variant of this program (on the throwaway server); elsewhere it skips.

#include "MainWindowFixture.h"

#include "app/Database.h"
#include "app/PoolConnection.h"

#include <QApplication>
#include <QFileInfo>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSqlQuery>

namespace {

class SharedPoolWindow : public MainWindowTest {
protected:
    void SetUp() override {
        if (testPoolServer().isEmpty())
            GTEST_SKIP() << "läuft in der Pool-Variante dieses Testprogramms (pool:...)";
        noReports();
        writeImage("31901001.tif");
    }
};

TEST_F(SharedPoolWindow, ok_while_the_server_is_gone_keeps_the_record_and_the_next_ok_hands_it_over) {
    const QVector<qint32> records = insertDemoRecords(1);
    open();
    ASSERT_EQ(window->currentRecord(), records[0]);
    field("VORNAME")->setText("Maria Theresia");
    // The server ends this workstation's connection, as a restart of the server would.
    int backend = 0;
    if (QSqlQuery pid = execPoolSql("SELECT pg_backend_pid()"); pid.next())
        backend = pid.value(0).toInt();
    {
        QSqlDatabase admin = openPoolConnection(homePoolUri(), "pool-admin");
        ASSERT_TRUE(QSqlQuery(admin).exec(QString("SELECT pg_terminate_backend(%1)").arg(backend)));
    }
    QSqlDatabase::removeDatabase("pool-admin");

    QPushButton* ok = button("buttonOK");
    QTest::mouseClick(ok, Qt::LeftButton);
    // The check is the first to reach for the server: the error list says it does not answer.
    QString said = messages.prompts().join("|");
    if (QWidget* list = shown("frmFehler"))
        said += list->findChild<QPlainTextEdit*>("txtFehler")->toPlainText();
    EXPECT_TRUE(said.contains("antwortet nicht. Ihre Eingaben bleiben erhalten")) << said.toStdString();
    EXPECT_EQ(window->currentRecord(), records[0]);
    EXPECT_EQ(field("VORNAME")->text(), "Maria Theresia");
    EXPECT_EQ(workflowOf(records[0]), "30/1") << "still held by this workstation";

    QTest::mouseClick(ok, Qt::LeftButton);
    EXPECT_TRUE(QTest::qWaitFor([&] { return workflowOf(records[0]).isEmpty(); }))
        << "handed over, exported and removed";
    const QString xml = QString::fromLatin1(home.readFile("export/31901001.xml"));
    EXPECT_TRUE(xml.contains("<Given_names>Maria Theresia</Given_names>")) << xml.toStdString();
}

} // namespace
