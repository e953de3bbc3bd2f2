// SPDX-License-Identifier: Apache-2.0
// The Jet dialect as the master data and procedures use it, run on a real data.mdb.

#include "app/JetDialect.h"
#include "HomeTest.h"
#include "app/Database.h"
#include "app/mdlDB.h"

namespace {

class JetDialect : public HomeTest {
protected:
    void SetUp() override {
        execSql("DELETE FROM sysStates");
        for (const char* id : {"DE", "AT", "NL", "D1", "d?"})
            execSql("INSERT INTO sysStates (State_ID, State_Name) VALUES (?, ?)",
                    {QString::fromLatin1(id), "Name von " + QString::fromLatin1(id)});
    }

    QStringList statesLike(const QString& pattern) {
        QStringList ids;
        QSqlQuery q = execSql(
            QString("SELECT State_ID FROM sysStates WHERE State_ID LIKE %1 ORDER BY rowid").arg(sqlQuote(pattern)));
        while (q.next())
            ids << q.value(0).toString();
        return ids;
    }
};

// Each row: a pattern and the states it finds, in table order. SQL's own wildcards are plain
// characters in Jet, and the comparison ignores case.
TEST_F(JetDialect, like_patterns_follow_jet_not_sql_in_statements_and_in_the_rules) {
    for (const char* row :
         {"* -> DE AT NL D1 d?", "D* -> DE D1 d?", "?T -> AT", "D# -> D1", "D% -> ", "_E -> ", "de -> DE", "n* -> NL",
          "[A-D]* -> DE AT D1 d?", "D[!0-9] -> DE d?", "D[?] -> d?", "[NA][LT] -> AT NL"}) {
        const QStringList parts = QString::fromLatin1(row).split(" -> ");
        EXPECT_EQ(statesLike(parts[0]).join(' '), parts[1]) << row;
    }

    // The patterns the import and image rules use, on texts of their own; null is no text, and many
    // "*" before a part that never matches are answered at once, not after trying every split.
    const struct {
        const char* pattern;
        QString text;
        bool matches;
    } cases[] = {
        {"*[!0-9]*", "12a4", true},
        {"*[!0-9]*", "1234", false},
        {"*[!0-9]*", "", false},
        {"*[!0-9]*", QString(), false},
        {"*[\\,:]*", "C:\\scan\\0815.tif", true},
        {"*[\\,:]*", "a,b.tif", true},
        {"*[\\,:]*", "0815_0001.tif", false},
        {"##.##.####", "15.11.2026", true},
        {"##.##.####", "15.11.26", false},
    };
    for (const auto& c : cases)
        EXPECT_EQ(jetLike(QString::fromLatin1(c.pattern), c.text), c.matches)
            << c.pattern << " on " << c.text.toStdString();
    EXPECT_FALSE(jetLike(QString("*a").repeated(40) + "[0-9]", QString("a").repeated(200)));
}

// DELETE *, InStr with and without a start, "&" outside literals, texts compared without case, Now()
// and TRUE are Jet's; an apostrophe inside a quoted value is stored, not a break; a failing statement
// names itself.
TEST_F(JetDialect, statements_of_the_procedures_run_as_jet_runs_them) {
    QSqlQuery q = execSql("SELECT InStr('Müller-Lüdenscheidt', '-'), InStr(5, 'abcabc', 'B'),"
                          " InStr('abc', 'x'), InStr(3, 'abcabc', 'a'), State_ID & '-' & 'A&B'"
                          " FROM sysStates WHERE State_ID='AT'");
    ASSERT_TRUE(q.next());
    QStringList values;
    for (int i = 0; i < 5; ++i)
        values << q.value(i).toString();
    EXPECT_EQ(values, (QStringList{"7", "5", "0", "4", "AT-A&B"}));
    EXPECT_EQ(CountRows("*", "sysStates", "State_ID='at' OR State_ID=\"nl\""), 2);
    execSql("UPDATE sysStates SET State_Name=Now() & ' ' & TRUE WHERE State_ID='AT'");
    EXPECT_EQ(GetValue("State_Name", "sysStates", "State_ID='AT'").toString(), "2026-11-15 10:30:00 1");
    const QString name = "D'Alembert'; DROP TABLE sysStates; --";
    execSql(QString("UPDATE sysStates SET State_Name=%1 WHERE State_ID='NL'").arg(sqlQuote(name)));
    EXPECT_EQ(GetValue("State_Name", "sysStates", "State_ID='NL'").toString(), name);
    try {
        execSql("SELECT Nichtda FROM sysStates");
        ADD_FAILURE() << "no error raised";
    } catch (const VeridonError& e) {
        EXPECT_TRUE(e.description().contains("Nichtda"));
        EXPECT_NE(e.number(), 0);
    }
    execSql("DELETE * FROM sysStates WHERE State_ID LIKE 'D*'");
    EXPECT_EQ(CountRows("*", "sysStates", QString()), 2);
    execSql("delete  *  from sysStates");
    EXPECT_EQ(CountRows("*", "sysStates", QString()), 0);
}

} // namespace
