// The Jet dialect as the master data and procedures use it, run on a real data.mdb.

#include "app/JetDialect.h"
#include "HomeTest.h"
#include "app/Database.h"
#include "app/mdlDB.h"

namespace {

class JetDialect : public HomeTest {
protected:
    void SetUp() override {
        execSql(QStringLiteral("DELETE FROM sysStates"));
        for (const char* id : {"DE", "AT", "NL", "D1", "d?"})
            execSql(QStringLiteral("INSERT INTO sysStates (State_ID, State_Name) VALUES (?, ?)"),
                    {QString::fromLatin1(id), QStringLiteral("Name von ") + QString::fromLatin1(id)});
    }

    QStringList statesLike(const QString& pattern) {
        QStringList ids;
        QSqlQuery q = execSql(QStringLiteral("SELECT State_ID FROM sysStates WHERE State_ID LIKE %1 ORDER BY rowid")
                                  .arg(sqlQuote(pattern)));
        while (q.next())
            ids << q.value(0).toString();
        return ids;
    }
};

// Each row: a pattern and the states it finds, in table order. SQL's own wildcards are plain
// characters in Jet, and the comparison ignores case.
TEST_F(JetDialect, like_patterns_follow_jet_not_sql) {
    for (const char* row :
         {"* -> DE AT NL D1 d?", "D* -> DE D1 d?", "?T -> AT", "D# -> D1", "D% -> ", "_E -> ", "de -> DE", "n* -> NL",
          "[A-D]* -> DE AT D1 d?", "D[!0-9] -> DE d?", "D[?] -> d?", "[NA][LT] -> AT NL"}) {
        const QStringList parts = QString::fromLatin1(row).split(QStringLiteral(" -> "));
        EXPECT_EQ(statesLike(parts[0]).join(' '), parts[1]) << row;
    }
}

TEST_F(JetDialect, like_patterns_of_the_import_and_image_rules) {
    const auto expectLike = [](const char* pattern, QStringList matching, QStringList other) {
        for (const QString& text : matching)
            EXPECT_TRUE(jetLike(QString::fromLatin1(pattern), text)) << pattern << " on " << text.toStdString();
        for (const QString& text : other)
            EXPECT_FALSE(jetLike(QString::fromLatin1(pattern), text)) << pattern << " on " << text.toStdString();
    };
    expectLike("*[!0-9]*", {"12a4"}, {"1234", ""});
    expectLike("*[\\,:]*", {"C:\\scan\\0815.tif", "a,b.tif"}, {"0815_0001.tif"});
    expectLike("##.##.####", {"15.11.2026"}, {"15.11.26"});
    EXPECT_FALSE(jetLike(QStringLiteral("*[!0-9]*"), QString())) << "null is no text";
}

TEST_F(JetDialect, delete_star_removes_the_rows) {
    EXPECT_EQ(CountRows(QStringLiteral("*"), QStringLiteral("sysStates"), QString()), 5);
    execSql(QStringLiteral("DELETE * FROM sysStates WHERE State_ID LIKE 'D*'"));
    EXPECT_EQ(CountRows(QStringLiteral("*"), QStringLiteral("sysStates"), QString()), 2);
    execSql(QStringLiteral("delete  *  from sysStates"));
    EXPECT_EQ(CountRows(QStringLiteral("*"), QStringLiteral("sysStates"), QString()), 0);
}

TEST_F(JetDialect, instr_with_and_without_start) {
    QSqlQuery q = execSql(QStringLiteral("SELECT InStr('Müller-Lüdenscheidt', '-'), InStr(5, 'abcabc', 'B'),"
                                         " InStr('abc', 'x'), InStr(3, 'abcabc', 'a')"));
    ASSERT_TRUE(q.next());
    EXPECT_EQ(QList<int>({q.value(0).toInt(), q.value(1).toInt(), q.value(2).toInt(), q.value(3).toInt()}),
              QList<int>({7, 5, 0, 4}));
}

TEST_F(JetDialect, now_reads_the_program_clock) {
    execSql(QStringLiteral("UPDATE zvbSys SET APP_LastOpened=Now()"));
    EXPECT_EQ(GetValue(QStringLiteral("APP_LastOpened"), QStringLiteral("zvbSys"), QString()).toString(),
              QStringLiteral("2026-11-15 10:30:00"));
}

TEST_F(JetDialect, ampersand_concatenates_outside_literals) {
    QSqlQuery q = execSql(QStringLiteral("SELECT State_ID & '-' & 'A&B' FROM sysStates WHERE State_ID='AT'"));
    ASSERT_TRUE(q.next());
    EXPECT_EQ(q.value(0).toString(), QStringLiteral("AT-A&B"));
}

TEST_F(JetDialect, apostrophe_inside_a_quoted_value_is_stored_not_a_break) {
    const QString name = QStringLiteral("D'Alembert'; DROP TABLE sysStates; --");
    execSql(QStringLiteral("UPDATE sysStates SET State_Name=%1 WHERE State_ID='AT'").arg(sqlQuote(name)));
    EXPECT_EQ(
        GetValue(QStringLiteral("State_Name"), QStringLiteral("sysStates"), QStringLiteral("State_ID='AT'")).toString(),
        name);
    EXPECT_EQ(CountRows(QStringLiteral("*"), QStringLiteral("sysStates"), QString()), 5);
}

TEST_F(JetDialect, text_comparison_ignores_case_as_in_the_master_data) {
    EXPECT_EQ(
        GetValue(QStringLiteral("State_Name"), QStringLiteral("sysStates"), QStringLiteral("State_ID='nl'")).toString(),
        QStringLiteral("Name von NL"));
}

TEST_F(JetDialect, a_failing_statement_names_the_statement) {
    try {
        execSql(QStringLiteral("SELECT Nichtda FROM sysStates"));
        FAIL() << "no error raised";
    } catch (const VeridonError& e) {
        EXPECT_TRUE(e.description().contains(QStringLiteral("Nichtda")));
        EXPECT_NE(e.number(), 0);
    }
}

} // namespace
