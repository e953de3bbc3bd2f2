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
            {"PERSONAL_ID", "1234030761"},
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
    QString code(const QString& field) { return statusCodeOf(WerteArray().GetValue("Fehlerhaft"), field); }
    QVariant stored(qint32 lfdNr, const QString& column) {
        return GetValue(column, "zvbWerte", "LfdNr=" + QString::number(lfdNr));
    }

    QString errors;
};

TEST_F(CheckEngine, a_clean_card_passes_and_its_fields_turn_ok) {
    const qint32 lfdNr = store(huber());
    EXPECT_EQ(Check("all", errors), 0);
    EXPECT_EQ(errors, "");
    EXPECT_EQ(WerteArray().GetValue("Fehlerhaft"), "0000001000")
        << "checked fields get their OK code; PERSONAL_ID (position 7) is not checked and reads as unchecked";
    EXPECT_EQ(WerteArray().GetValue("Korrigiert"), "1");
    WerteArray().EmptyArray(lfdNr);
    EXPECT_EQ(stored(lfdNr, "Fehlerhaft").toString(), "0000001000");
    EXPECT_EQ(stored(lfdNr, "Korrigiert").toInt(), 1);
    EXPECT_TRUE(messages.messages().isEmpty());
}

TEST_F(CheckEngine, a_question_mark_is_an_error_whatever_the_commands) {
    store(huber(), "NACHNAME", "Hu?er");
    EXPECT_EQ(Check("all", errors), 2);
    EXPECT_EQ(errors, "\r\nIm Feld 'Nachname' befindet sich noch ein ?");
    EXPECT_EQ(code("NACHNAME"), "3");
    EXPECT_EQ(WerteArray().GetValue("Korrigiert"), "0");

    errors.clear();
    store(huber(), "CARD_ID", "12?4");
    EXPECT_EQ(Check("CARD_ID", errors), 2);
    EXPECT_EQ(errors, "\r\nIm Feld 'Kennnummer der Karte' befindet sich noch ein ?") << "Zahl() is not run";
}

TEST_F(CheckEngine, korrigiert_follows_the_result_of_all_fields) {
    const qint32 lfdNr = store(huber(), "Korrigiert", 1);
    WerteArray().SetValue("VORNAME", "");
    EXPECT_EQ(Check("all", errors), 2);
    WerteArray().EmptyArray(lfdNr);
    EXPECT_EQ(stored(lfdNr, "Korrigiert").toInt(), 0);
    EXPECT_EQ(stored(lfdNr, "Fehlerhaft").toString(), "0000301000");

    take(lfdNr);
    WerteArray().SetValue("VORNAME", "Maria");
    errors.clear();
    EXPECT_EQ(Check("all", errors), 0);
    WerteArray().EmptyArray(lfdNr);
    EXPECT_EQ(stored(lfdNr, "Korrigiert").toInt(), 1);
    EXPECT_EQ(stored(lfdNr, "Fehlerhaft").toString(), "0000001000");
}

TEST_F(CheckEngine, checking_one_field_leaves_korrigiert_alone) {
    store(huber(), "Korrigiert", 1);
    WerteArray().SetValue("VORNAME", "");
    EXPECT_EQ(Check("VORNAME", errors), 2);
    EXPECT_EQ(errors, "\r\nVorname muss ausgefüllt sein");
    EXPECT_EQ(WerteArray().GetValue("Korrigiert"), "1");
    EXPECT_EQ(WerteArray().GetValue("Fehlerhaft"), "11113") << "only the field's own position is written";
}

TEST_F(CheckEngine, a_field_with_pruefe_0_keeps_its_code) {
    store(huber(), "Fehlerhaft", "2222222222");
    WerteArray().SetValue("PERSONAL_ID", "??");
    EXPECT_EQ(Check("PERSONAL_ID", errors), 0);
    EXPECT_EQ(errors, "");
    EXPECT_EQ(WerteArray().GetValue("Fehlerhaft"), "2222222222");

    define("NACHNAME", "Pflichtfeld()", 0);
    WerteArray().SetValue("NACHNAME", "");
    EXPECT_EQ(Check("NACHNAME", errors), 0);
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
    store(huber(), "CARD_ID", "");
    EXPECT_EQ(Check("CARD_ID", errors), 2);
    EXPECT_EQ(errors, "\r\nKennnummer der Karte muss ausgefüllt sein");

    errors.clear();
    WerteArray().SetValue("CARD_ID", "8004A");
    EXPECT_EQ(Check("CARD_ID", errors), 2);
    EXPECT_EQ(errors, "\r\nKennnummer der Karte muss eine Zahl enthalten.");
    EXPECT_EQ(code("CARD_ID"), "3");
}

TEST_F(CheckEngine, an_empty_value_that_passes_reads_as_unchecked) {
    define("CARD_ID", "Zahl()");
    store(huber(), "CARD_ID", "");
    EXPECT_EQ(Check("CARD_ID", errors), 0);
    EXPECT_EQ(code("CARD_ID"), "1");
    WerteArray().SetValue("CARD_ID", "8004");
    EXPECT_EQ(Check("CARD_ID", errors), 0);
    EXPECT_EQ(code("CARD_ID"), "0");
}

TEST_F(CheckEngine, an_unknown_keyword_is_reported_and_a_later_passing_command_clears_it) {
    define("CARD_ID", "Ziffern(20);Zahl()");
    store(huber());
    EXPECT_EQ(Check("CARD_ID", errors), 0);
    EXPECT_EQ(errors, "\r\nDer Befehl 'Ziffern(20)' wird nicht unterstützt!");
    EXPECT_EQ(code("CARD_ID"), "0");

    errors.clear();
    define("CARD_ID", "Pflichtfeld();zahl()");
    EXPECT_EQ(Check("CARD_ID", errors), 2) << "keywords compare with their case";
    EXPECT_EQ(errors, "\r\nDer Befehl 'zahl()' wird nicht unterstützt!");
    EXPECT_EQ(code("CARD_ID"), "3");
}

TEST_F(CheckEngine, a_command_without_parentheses_is_not_supported) {
    define("NACHNAME", "Pflichtfeld");
    store(huber());
    EXPECT_EQ(Check("NACHNAME", errors), 2);
    EXPECT_EQ(errors, "\r\nDer Befehl 'Pflichtfeld' wird nicht unterstützt!");

    errors.clear();
    define("NACHNAME", "Pflichtfeld();;Laenge(5)");
    EXPECT_EQ(Check("NACHNAME", errors), 0) << "the passing Laenge(5) after it decides";
    EXPECT_EQ(errors, "\r\nDer Befehl '' wird nicht unterstützt!") << "an empty command between two ';'";
    EXPECT_EQ(code("NACHNAME"), "0") << "Huber has five letters";

    errors.clear();
    define("NACHNAME", "Pflichtfeld();");
    EXPECT_EQ(Check("NACHNAME", errors), 0);
    EXPECT_EQ(errors, "") << "a trailing ';' adds no command";
}

TEST_F(CheckEngine, bereich_reports_the_range_or_the_number_fault) {
    define("CARD_ID", "Bereich(1,12)");
    store(huber(), "CARD_ID", "13");
    EXPECT_EQ(Check("CARD_ID", errors), 2);
    EXPECT_EQ(errors, "\r\nKennnummer der Karte enthält einen Wert ausserhalb des gültigen Bereiches. Gültiger "
                      "Bereich: (1,12)");

    errors.clear();
    WerteArray().SetValue("CARD_ID", "1a");
    EXPECT_EQ(Check("CARD_ID", errors), 2);
    EXPECT_EQ(errors, "\r\nKennnummer der Karte muss eine Zahl enthalten.");
    EXPECT_TRUE(messages.messages().isEmpty()) << "no run-time error";

    errors.clear();
    WerteArray().SetValue("CARD_ID", "12");
    EXPECT_EQ(Check("CARD_ID", errors), 0);
}

TEST_F(CheckEngine, decimal_checks_use_the_comma) {
    define("CARD_ID", "Gleitkommazahlbereich(0.5,2.5)");
    store(huber(), "CARD_ID", "3,7");
    EXPECT_EQ(Check("CARD_ID", errors), 0) << "a value with a separator is not measured";
    WerteArray().SetValue("CARD_ID", "3");
    EXPECT_EQ(Check("CARD_ID", errors), 2);
    EXPECT_EQ(errors, "\r\nKennnummer der Karte enthält eine Wert ausserhalb des gültigen Bereiches (0,5,2,5)");

    errors.clear();
    define("CARD_ID", "Gleitkommazahl();Gleitkommazahllaenge(3,2)");
    WerteArray().SetValue("CARD_ID", "12.5");
    EXPECT_EQ(Check("CARD_ID", errors), 2);
    WerteArray().SetValue("CARD_ID", "1234,5");
    EXPECT_EQ(Check("CARD_ID", errors), 2);
    EXPECT_EQ(errors, "\r\nKennnummer der Karte muss eine Zahl enthalten."
                      "\r\nKennnummer der Karte muss einen Wert enthalten der Laenge 3,2");

    errors.clear();
    define("CARD_ID", "Waehrung(2)");
    WerteArray().SetValue("CARD_ID", "10,5");
    EXPECT_EQ(Check("CARD_ID", errors), 2);
    EXPECT_EQ(errors, "\r\nKennnummer der Karte enthält kein gültiges Währungsformat.");
}

TEST_F(CheckEngine, a_field_with_code_4_is_skipped_when_all_are_checked) {
    store(huber(), "Fehlerhaft", "0004000000");
    WerteArray().SetValue("NACHNAME", "");
    EXPECT_EQ(Check("all", errors), 0);
    EXPECT_EQ(errors, "");
    EXPECT_EQ(code("NACHNAME"), "4");

    EXPECT_EQ(Check("NACHNAME", errors), 2) << "asked by name it is checked";
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
    store(huber(), "GEBDAT", "17.11.2026");
    EXPECT_EQ(Check("GEBDAT", errors), 0) << "two days ahead passes Datum_Bereich(43830,)";
    WerteArray().SetValue("GEBDAT", "16.11.2026");
    EXPECT_EQ(Check("GEBDAT", errors), 2);
    EXPECT_EQ(errors, "\r\nGeburtsdatum enthält ein Datum ausserhalb des gültigen Bereiches.");
    errors.clear();
    WerteArray().SetValue("CARD_EXPIRY", "31.02.2029");
    EXPECT_EQ(Check("CARD_EXPIRY", errors), 2);
    EXPECT_EQ(errors, "\r\nAblaufdatum enthält kein gültiges Datum.");
}

TEST_F(CheckEngine, lookup_finds_the_state_in_the_master_table) {
    store(huber(), "STATE", "at");
    EXPECT_EQ(Check("STATE", errors), 0);
    WerteArray().SetValue("STATE", "XX");
    EXPECT_EQ(Check("STATE", errors), 2);
    EXPECT_EQ(errors, "\r\nStaat ist nicht in der dazugehörigen Stammdatentabelle vorhanden.");

    define("STATE", "Lookup(sysStates,State_ID,State_XmlType IN (1,4))");
    WerteArray().SetValue("STATE", "DE");
    EXPECT_EQ(Check("STATE", errors), 0) << "a condition with commas and parentheses";
    WerteArray().SetValue("STATE", "CH");
    EXPECT_EQ(Check("STATE", errors), 2);
}

TEST_F(CheckEngine, a_lookup_value_with_an_apostrophe_is_only_a_value) {
    execSql("CREATE TABLE Nachnamen (Name VARCHAR(40))");
    execSql("INSERT INTO Nachnamen (Name) VALUES (?)", {"O'Brien"});
    define("NACHNAME", "Pflichtfeld();Lookup(Nachnamen,Name)");
    store(huber(), "NACHNAME", "O'Brien");
    EXPECT_EQ(Check("NACHNAME", errors), 0);
    WerteArray().SetValue("NACHNAME", "x' OR '1'='1");
    EXPECT_EQ(Check("NACHNAME", errors), 2);
    EXPECT_EQ(errors, "\r\nNachname ist nicht in der dazugehörigen Stammdatentabelle vorhanden.");
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
