// SPDX-License-Identifier: Apache-2.0
// The check engine on stored records: a form is stored in zvbWerte, taken into the record in hand,
// checked, and written back; the tests look at the result, the status string, Korrigiert and the
// error text the operator would read.

#include "HomeTest.h"
#include "RecordRows.h"
#include "app/Database.h"
#include "app/mdlDB.h"
#include "app/mdlMessages.h"
#include "check/CheckMessages.h"
#include "check/mdlCheck.h"
#include "model/FormModel.h"

namespace {

// Maria Huber's card as the evaluation delivers it, every field clean.
QVariantMap huber() {
    return {{"BMPName", "31901001.tif"},
            {"TYP", "4"},
            {"SCANDAT", "15.11.2026"},
            {"FORM_ID", "E-111N"},
            {"STATE", "AT"},
            {"NACHNAME", "Huber"},
            {"VORNAME", "Maria"},
            {"GEBDAT", "03.07.1961"},
            {"PERSONAL_ID", "1236030761"},
            {"INSTITUT_ID", "1100 - OEGK"},
            {"CARD_ID", "80040001234567890123"},
            {"CARD_EXPIRY", "31.12.2029"},
            {"Workflow_Status", 10}};
}

class CheckEngine : public HomeTest {
protected:
    void SetUp() override { FelderArray().Fill(); }
    void TearDown() override {
        WerteArray().Clear();
        FelderArray().EmptyArray();
    }

    // Stores a record and takes it into the record in hand; returns its LfdNr.
    qint32 store(const QVariantMap& values) {
        const qint32 lfdNr = insertRecord(values);
        take(lfdNr);
        return lfdNr;
    }
    qint32 store(QVariantMap values, const QString& column, const QVariant& value) {
        values[column] = value;
        return store(values);
    }
    void take(qint32 lfdNr) {
        QSqlQuery row = execSql("SELECT * FROM zvbWerte WHERE LfdNr=?", {lfdNr});
        ASSERT_TRUE(row.next());
        WerteArray().Fill(row);
    }
    // Gives field other checks, as a changed definition table would.
    void define(const QString& field, const QString& checks, int pruefe = 1) {
        execSql("UPDATE ZVBFelder SET pruefungen=?, pruefe=? WHERE VarName=?", {checks, pruefe, field});
        FelderArray().Fill();
    }
    // Sets the field of the record in hand, checks that field alone and expects the result and the
    // text the operator reads ("" for none).
    void expectCheck(const QString& field, const QString& value, qint16 result, const QString& text = {}) {
        SCOPED_TRACE((field + " = " + value).toStdString());
        WerteArray().SetValue(field, value);
        errors.clear();
        EXPECT_EQ(Check(field, errors), result);
        EXPECT_EQ(errors, text.isEmpty() ? text : "\r\n" + text);
    }
    QString code(const QString& field) { return statusCodeOf(WerteArray().GetValue("Fehlerhaft"), field); }
    QVariant stored(qint32 lfdNr, const QString& column) {
        return GetValue(column, "zvbWerte", "LfdNr=" + QString::number(lfdNr));
    }

    QString errors;
};

TEST_F(CheckEngine, a_question_mark_is_an_error_whatever_the_commands) {
    store(huber(), "NACHNAME", "Hu?er");
    EXPECT_EQ(Check("all", errors), 2);
    EXPECT_EQ(errors, "\r\nIm Feld 'Nachname' befindet sich noch ein ?");
    EXPECT_EQ(code("NACHNAME"), "3");
    EXPECT_EQ(WerteArray().GetValue("Korrigiert"), "0");

    // Zahl() is not run.
    expectCheck("CARD_ID", "12?4", 2, "Im Feld 'Kennnummer der Karte' befindet sich noch ein ?");
}

// Checked fields get their OK code.
TEST_F(CheckEngine, korrigiert_and_the_status_follow_the_result_of_all_fields) {
    const qint32 lfdNr = store(huber(), "Korrigiert", 1);
    WerteArray().SetValue("VORNAME", "");
    EXPECT_EQ(Check("all", errors), 2);
    WerteArray().EmptyArray(lfdNr);
    EXPECT_EQ(stored(lfdNr, "Korrigiert").toInt(), 0);
    EXPECT_EQ(stored(lfdNr, "Fehlerhaft").toString(), "0000300000");

    take(lfdNr);
    WerteArray().SetValue("VORNAME", "Maria");
    errors.clear();
    EXPECT_EQ(Check("all", errors), 0);
    EXPECT_EQ(errors, "");
    WerteArray().EmptyArray(lfdNr);
    EXPECT_EQ(stored(lfdNr, "Korrigiert").toInt(), 1);
    EXPECT_EQ(stored(lfdNr, "Fehlerhaft").toString(), "0000000000");
    EXPECT_TRUE(messages.messages().isEmpty());
}

TEST_F(CheckEngine, checking_one_field_leaves_korrigiert_alone) {
    store(huber(), "Korrigiert", 1);
    expectCheck("VORNAME", "", 2, "Vorname muss ausgefüllt sein");
    EXPECT_EQ(WerteArray().GetValue("Korrigiert"), "1");
    EXPECT_EQ(WerteArray().GetValue("Fehlerhaft"), "11113") << "only the field's own position is written";
}

TEST_F(CheckEngine, a_field_with_pruefe_0_keeps_its_code) {
    store(huber(), "Fehlerhaft", "2222222222");
    define("PERSONAL_ID", "PersonenNr(STATE)", 0);
    expectCheck("PERSONAL_ID", "??", 0);
    EXPECT_EQ(WerteArray().GetValue("Fehlerhaft"), "2222222222");

    define("NACHNAME", "Pflichtfeld()", 0);
    expectCheck("NACHNAME", "", 0);
    EXPECT_EQ(code("NACHNAME"), "2");
}

TEST_F(CheckEngine, a_field_not_marked_for_checking_is_skipped) {
    execSql("UPDATE ZVBFelder SET gelbefelderjn=0 WHERE VarName='NACHNAME'");
    FelderArray().Fill();
    store(huber(), "NACHNAME", "");
    EXPECT_EQ(Check("all", errors), 0);
    EXPECT_EQ(code("NACHNAME"), "1") << "padding; the engine never wrote the field";
}

TEST_F(CheckEngine, only_the_first_failing_command_is_reported) {
    store(huber());
    expectCheck("CARD_ID", "", 2, "Kennnummer der Karte muss ausgefüllt sein");
    expectCheck("CARD_ID", "8004A", 2, "Kennnummer der Karte muss eine Zahl enthalten.");
    EXPECT_EQ(code("CARD_ID"), "3");
}

TEST_F(CheckEngine, an_empty_value_that_passes_reads_as_unchecked) {
    define("CARD_ID", "Zahl()");
    store(huber());
    expectCheck("CARD_ID", "", 0);
    EXPECT_EQ(code("CARD_ID"), "1");
    expectCheck("CARD_ID", "8004", 0);
    EXPECT_EQ(code("CARD_ID"), "0");
}

// Each row: the commands of CARD_ID, the result, the error text and the field's code (not compared
// where none is given). An unknown command is reported, and a later passing command decides.
TEST_F(CheckEngine, unknown_commands_are_reported_and_a_later_passing_command_decides) {
    store(huber());
    const struct {
        const char* checks;
        qint16 result;
        const char* errors;
        const char* code;
    } rows[] = {
        {"Ziffern(20);Zahl()", 0, "\r\nDer Befehl 'Ziffern(20)' wird nicht unterstützt!", "0"},
        {"Pflichtfeld();zahl()", 2, "\r\nDer Befehl 'zahl()' wird nicht unterstützt!", "3"}, // case counts
        {"Pflichtfeld", 2, "\r\nDer Befehl 'Pflichtfeld' wird nicht unterstützt!", nullptr},
        {"Pflichtfeld();;Laenge(20)", 0, "\r\nDer Befehl '' wird nicht unterstützt!", "0"},
        {"Pflichtfeld();", 0, "", "0"}, // a trailing ';' adds no command
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.checks);
        define("CARD_ID", row.checks);
        errors.clear();
        EXPECT_EQ(Check("CARD_ID", errors), row.result);
        EXPECT_EQ(errors, row.errors);
        if (row.code) {
            EXPECT_EQ(code("CARD_ID"), row.code);
        }
    }
}

TEST_F(CheckEngine, bereich_reports_the_range_or_the_number_fault) {
    define("CARD_ID", "Bereich(1,12)");
    store(huber());
    expectCheck("CARD_ID", "13", 2,
                "Kennnummer der Karte enthält einen Wert ausserhalb des gültigen Bereiches. Gültiger Bereich: (1,12)");
    expectCheck("CARD_ID", "1a", 2, "Kennnummer der Karte muss eine Zahl enthalten.");
    EXPECT_TRUE(messages.messages().isEmpty()) << "no run-time error";
}

TEST_F(CheckEngine, decimal_checks_use_the_comma) {
    define("CARD_ID", "Gleitkommazahlbereich(0.5,2.5)");
    store(huber());
    expectCheck("CARD_ID", "3,7", 0); // a value with a separator is not measured
    expectCheck("CARD_ID", "3", 2,
                "Kennnummer der Karte enthält eine Wert ausserhalb des gültigen Bereiches (0,5,2,5)");

    // The errors of two checks add up in the caller's text.
    errors.clear();
    define("CARD_ID", "Gleitkommazahl();Gleitkommazahllaenge(3,2)");
    WerteArray().SetValue("CARD_ID", "12.5");
    EXPECT_EQ(Check("CARD_ID", errors), 2);
    WerteArray().SetValue("CARD_ID", "1234,5");
    EXPECT_EQ(Check("CARD_ID", errors), 2);
    EXPECT_EQ(errors, "\r\nKennnummer der Karte muss eine Zahl enthalten."
                      "\r\nKennnummer der Karte muss einen Wert enthalten der Laenge 3,2");

    define("CARD_ID", "Waehrung(2)");
    expectCheck("CARD_ID", "10,5", 2, "Kennnummer der Karte enthält kein gültiges Währungsformat.");
}

TEST_F(CheckEngine, a_field_with_code_4_is_skipped_when_all_are_checked) {
    store(huber(), "Fehlerhaft", "0004000000");
    WerteArray().SetValue("NACHNAME", "");
    EXPECT_EQ(Check("all", errors), 0);
    EXPECT_EQ(errors, "");
    EXPECT_EQ(code("NACHNAME"), "4");

    // Asked by name it is checked.
    expectCheck("NACHNAME", "", 2, "Nachname muss ausgefüllt sein");
    EXPECT_EQ(code("NACHNAME"), "3");
}

TEST_F(CheckEngine, results_merge_error_over_warning) {
    qint16 total = 0;
    EXPECT_EQ(KombiniereErg(total, 3), 3);
    EXPECT_EQ(KombiniereErg(total, 0), 3);
    EXPECT_EQ(KombiniereErg(total, 2), 2);
    EXPECT_EQ(KombiniereErg(total, 3), 2);
    EXPECT_EQ(total, 2);
}

TEST_F(CheckEngine, pruefe_2_asks_for_code_0_on_a_filled_field) {
    define("NACHNAME", "Pflichtfeld()", 2);
    store(huber());
    EXPECT_EQ(Check("NACHNAME", errors), 0);
    execSql("UPDATE ZVBFelder SET OkFarbe=2 WHERE VarName='NACHNAME'");
    FelderArray().Fill();
    EXPECT_EQ(Check("NACHNAME", errors), 2) << "a passed field with another OK code does not count as OK";
    EXPECT_EQ(code("NACHNAME"), "2");
    EXPECT_EQ(errors, "");
}

TEST_F(CheckEngine, date_checks_run_on_the_clock) {
    store(huber());
    expectCheck("GEBDAT", "17.11.2026", 0); // two days ahead passes Datum_Bereich(43830,)
    expectCheck("GEBDAT", "16.11.2026", 2, "Geburtsdatum enthält ein Datum ausserhalb des gültigen Bereiches.");
    expectCheck("CARD_EXPIRY", "31.02.2029", 2, "Ablaufdatum enthält kein gültiges Datum.");
}

TEST_F(CheckEngine, lookup_finds_the_state_in_the_master_table) {
    const QString missing = "Staat ist nicht in der dazugehörigen Stammdatentabelle vorhanden.";
    store(huber());
    expectCheck("STATE", "at", 0);
    expectCheck("STATE", "XX", 2, missing);
    // A condition with commas and parentheses.
    define("STATE", "Lookup(sysStates,State_ID,State_XmlType IN (1,4))");
    expectCheck("STATE", "DE", 0);
    expectCheck("STATE", "CH", 2, missing);
}

TEST_F(CheckEngine, a_lookup_value_with_an_apostrophe_is_only_a_value) {
    execSql("CREATE TABLE Nachnamen (Name VARCHAR(40))");
    execSql("INSERT INTO Nachnamen (Name) VALUES (?)", {"O'Brien"});
    define("NACHNAME", "Pflichtfeld();Lookup(Nachnamen,Name)");
    store(huber());
    expectCheck("NACHNAME", "O'Brien", 0);
    expectCheck("NACHNAME", "x' OR '1'='1", 2, "Nachname ist nicht in der dazugehörigen Stammdatentabelle vorhanden.");
    EXPECT_TRUE(messages.messages().isEmpty());
}

TEST_F(CheckEngine, a_lookup_on_an_unknown_table_is_a_check_failure_not_a_crash) {
    define("STATE", "Lookup(Staaten,State_ID)");
    const qint32 first = store(huber());
    EXPECT_EQ(Check("all", errors), 2);
    EXPECT_EQ(errors, "\r\nDer Befehl 'Lookup(Staaten,State_ID)' im Feld 'Staat' kann nicht ausgeführt werden: "
                      "Die Tabelle 'Staaten' ist nicht vorhanden.");
    EXPECT_EQ(code("STATE"), "3");
    EXPECT_TRUE(messages.messages().isEmpty()) << "no run-time error box";

    store(huber());
    errors.clear();
    EXPECT_EQ(Check("all", errors), 2);
    define("STATE", "Lookup(sysStates,Staat)");
    take(first);
    errors.clear();
    EXPECT_EQ(Check("STATE", errors), 2);
    EXPECT_TRUE(errors.contains("Das Feld 'Staat' ist in der Tabelle 'sysStates' nicht vorhanden."));

    const QString log = QString::fromUtf8(home.readFile("zvMsgLog.txt"));
    EXPECT_EQ(log.count("Lookup(Staaten,State_ID)"), 1) << "logged once, not per record:\n" << log.toStdString();
    EXPECT_EQ(log.count("Lookup(sysStates,Staat)"), 1);
}

TEST_F(CheckEngine, parameters_that_do_not_fit_are_reported_in_the_error_text) {
    define("CARD_ID", "Bereich(a,12)");
    store(huber());
    EXPECT_EQ(Check("CARD_ID", errors), 2);
    EXPECT_EQ(errors, "\r\nDer Befehl 'Bereich(a,12)' im Feld 'Kennnummer der Karte' kann nicht ausgeführt werden: "
                      "'a' ist keine ganze Zahl.");
    errors.clear();
    define("CARD_ID", "Laenge()");
    EXPECT_EQ(Check("CARD_ID", errors), 2);
    EXPECT_TRUE(errors.contains("Angabe Nr. 1 in den Klammern fehlt.")) << errors.toStdString();
    EXPECT_TRUE(messages.messages().isEmpty());
}

TEST_F(CheckEngine, messages_follow_the_language) {
    SetSysValue("APP_Language", "EN");
    ReloadLanguage();
    store(huber(), "VORNAME", "");
    WerteArray().SetValue("STATE", "XX");
    WerteArray().SetValue("SCANDAT", "15.13.2026");
    EXPECT_EQ(Check("all", errors), 2);
    EXPECT_EQ(errors, "\r\nScan date contains no valid date."
                      "\r\nState is not present in the corresponding master data table."
                      "\r\nGiven names must be filled in");
    SetSysValue("APP_Language", "DE");
    ReloadLanguage();
}

} // namespace
