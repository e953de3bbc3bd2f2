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

// Maria Huber's Austrian card as the evaluation delivers it, every field clean.
RowValues huber() {
    RowValues row = demoForm(0);
    row.insert("Workflow_Status", 10);
    return row;
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
    // Checks the whole record in hand with the given field values and returns the result.
    qint16 checkWith(std::initializer_list<std::pair<const char*, const char*>> values) {
        for (const auto& [field, value] : values)
            WerteArray().SetValue(field, value);
        errors.clear();
        return Check("all", errors);
    }
    QString code(const QString& field) { return statusCodeOf(WerteArray().GetValue("Fehlerhaft"), field); }
    QVariant stored(qint32 lfdNr, const QString& column) {
        return GetValue(column, "zvbWerte", "LfdNr=" + QString::number(lfdNr));
    }

    QString errors;
};

// Checking one field writes only its own code and leaves Korrigiert alone; checking all fields sets
// the status and Korrigiert from the result, checked fields getting their OK code.
TEST_F(CheckEngine, korrigiert_and_the_status_follow_the_result_of_all_fields) {
    const qint32 lfdNr = store(huber(), "Korrigiert", 1);
    expectCheck("VORNAME", "", 2, "Vorname muss ausgefüllt sein");
    EXPECT_EQ(WerteArray().GetValue("Korrigiert"), "1");
    EXPECT_EQ(WerteArray().GetValue("Fehlerhaft"), "11113") << "only the field's own position is written";
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

// pruefe 0 keeps a field's code whatever it holds; pruefe 2 asks for code 0 on a filled field, so a
// passed field with another OK code does not count as OK.
TEST_F(CheckEngine, the_code_a_field_gets_follows_pruefe_and_its_value) {
    store(huber(), "Fehlerhaft", "2222222222");
    define("PERSONAL_ID", "PersonenNr(STATE)", 0);
    expectCheck("PERSONAL_ID", "??", 0);
    EXPECT_EQ(WerteArray().GetValue("Fehlerhaft"), "2222222222");

    define("NACHNAME", "Pflichtfeld()", 0);
    expectCheck("NACHNAME", "", 0);
    EXPECT_EQ(code("NACHNAME"), "2");

    define("NACHNAME", "Pflichtfeld()", 2);
    expectCheck("NACHNAME", "Huber", 0);
    EXPECT_EQ(code("NACHNAME"), "0");
    execSql("UPDATE ZVBFelder SET OkFarbe=2 WHERE VarName='NACHNAME'");
    FelderArray().Fill();
    EXPECT_EQ(Check("NACHNAME", errors), 2);
    EXPECT_EQ(code("NACHNAME"), "2");
    EXPECT_EQ(errors, "");

    // An empty value that passes reads as unchecked.
    define("CARD_ID", "Zahl()");
    expectCheck("CARD_ID", "", 0);
    EXPECT_EQ(code("CARD_ID"), "1");
    expectCheck("CARD_ID", "8004", 0);
    EXPECT_EQ(code("CARD_ID"), "0");
}

// Each row: a field, its commands (as defined where none are given), the value typed, the result
// and the text the operator reads. Only the first failing command is reported; parameters that do
// not fit are reported in the text, never as a run-time error.
TEST_F(CheckEngine, each_command_reports_its_own_text) {
    const QString missing = "Staat ist nicht in der dazugehörigen Stammdatentabelle vorhanden.";
    const char* const card = "80040001234567890123";
    const QString cannot = "Der Befehl '%1' im Feld 'Kennnummer der Karte' kann nicht ausgeführt werden: %2";
    const struct {
        const char* field;
        const char* checks;
        const char* value;
        qint16 result;
        QString text;
    } rows[] = {
        {"CARD_ID", nullptr, "", 2, "Kennnummer der Karte muss ausgefüllt sein"},
        {"CARD_ID", nullptr, "8004A", 2, "Kennnummer der Karte muss eine Zahl enthalten."},
        {"CARD_ID", nullptr, "12?4", 2, "Im Feld 'Kennnummer der Karte' befindet sich noch ein ?"}, // no Zahl()
        {"CARD_ID", "Bereich(1,12)", "13", 2,
         "Kennnummer der Karte enthält einen Wert ausserhalb des gültigen Bereiches. Gültiger Bereich: (1,12)"},
        {"CARD_ID", "Bereich(1,12)", "1a", 2, "Kennnummer der Karte muss eine Zahl enthalten."},
        {"CARD_ID", "Gleitkommazahlbereich(0.5,2.5)", "3,7", 0, {}}, // a value with a separator is not measured
        {"CARD_ID", "Gleitkommazahlbereich(0.5,2.5)", "3", 2,
         "Kennnummer der Karte enthält eine Wert ausserhalb des gültigen Bereiches (0,5,2,5)"},
        {"CARD_ID", "Waehrung(2)", "10,5", 2, "Kennnummer der Karte enthält kein gültiges Währungsformat."},
        {"CARD_ID", "Gleitkommazahl();Gleitkommazahllaenge(3,2)", "1234,5", 2,
         "Kennnummer der Karte muss einen Wert enthalten der Laenge 3,2"},
        {"CARD_ID", "Bereich(a,12)", "5", 2, cannot.arg("Bereich(a,12)", "'a' ist keine ganze Zahl.")},
        {"CARD_ID", "Laenge()", "5", 2, cannot.arg("Laenge()", "Angabe Nr. 1 in den Klammern fehlt.")},
        // An unknown command is reported (the case counts), and a later passing command decides.
        {"CARD_ID", "Ziffern(20);Zahl()", card, 0, "Der Befehl 'Ziffern(20)' wird nicht unterstützt!"},
        {"CARD_ID", "Pflichtfeld();zahl()", card, 2, "Der Befehl 'zahl()' wird nicht unterstützt!"},
        {"CARD_ID", "Pflichtfeld();;Laenge(20)", card, 0, "Der Befehl '' wird nicht unterstützt!"},
        {"CARD_ID", "Pflichtfeld();", card, 0, {}}, // a trailing ';' adds no command
        {"GEBDAT", nullptr, "17.11.2026", 0, {}},   // two days ahead passes Datum_Bereich(43830,)
        {"GEBDAT", nullptr, "16.11.2026", 2, "Geburtsdatum enthält ein Datum ausserhalb des gültigen Bereiches."},
        {"CARD_EXPIRY", nullptr, "31.02.2029", 2, "Ablaufdatum enthält kein gültiges Datum."},
        {"STATE", nullptr, "at", 0, {}},
        {"STATE", nullptr, "XX", 2, missing},
        {"STATE", "Lookup(sysStates,State_ID,State_XmlType IN (1,4))", "DE", 0, {}},
        {"STATE", "Lookup(sysStates,State_ID,State_XmlType IN (1,4))", "CH", 2, missing},
        // A looked-up value with an apostrophe is only a value.
        {"NACHNAME", "Pflichtfeld();Lookup(Nachnamen,Name)", "O'Brien", 0, {}},
        {"NACHNAME", nullptr, "x' OR '1'='1", 2,
         "Nachname ist nicht in der dazugehörigen Stammdatentabelle vorhanden."},
    };
    execSql("CREATE TABLE Nachnamen (Name VARCHAR(40))");
    execSql("INSERT INTO Nachnamen (Name) VALUES (?)", {"O'Brien"});
    store(huber());
    for (const auto& row : rows) {
        if (row.checks)
            define(row.field, row.checks);
        expectCheck(row.field, row.value, row.result, row.text);
        EXPECT_EQ(code(row.field), row.result == 2 ? "3" : "0")
            << row.field << " " << (row.checks ? row.checks : "") << " = " << row.value;
    }
    EXPECT_TRUE(messages.messages().isEmpty()) << "no run-time error";
}

// When all fields are checked, a field not marked for checking is never written and one with code 4
// is skipped.
TEST_F(CheckEngine, unmarked_fields_and_code_4_are_skipped_when_all_are_checked) {
    execSql("UPDATE ZVBFelder SET gelbefelderjn=0 WHERE VarName='VORNAME'");
    FelderArray().Fill();
    store(huber(), "Fehlerhaft", "0004");
    EXPECT_EQ(checkWith({{"NACHNAME", ""}, {"VORNAME", ""}}), 0);
    EXPECT_EQ(errors, "");
    EXPECT_EQ(code("NACHNAME"), "4");
    EXPECT_EQ(code("VORNAME"), "1") << "padding; the engine never wrote the field";

    // Asked by name it is checked.
    expectCheck("NACHNAME", "", 2, "Nachname muss ausgefüllt sein");
    EXPECT_EQ(code("NACHNAME"), "3");
}

// A two-digit year takes its century from what the field holds: the birth date, checked against a
// range into the past, lies behind today; a card's expiry and the scan date lie near it. The value
// that passed is written back in full (the clock stands at 15.11.2026).
TEST_F(CheckEngine, a_two_digit_year_is_read_by_the_kind_of_date) {
    store(huber());
    const struct {
        const char* field;
        const char* typed;
        const char* stored;
    } rows[] = {
        {"GEBDAT", "010127", "01.01.1927"},        {"CARD_EXPIRY", "010127", "01.01.2027"},
        {"GEBDAT", "3.7.61", "03.07.1961"},        {"CARD_EXPIRY", "31.3.26", "31.03.2026"},
        {"GEBDAT", "01.01.46", "01.01.1946"},      {"CARD_EXPIRY", "01.01.46", "01.01.2046"},
        {"CARD_EXPIRY", "01.01.47", "01.01.1947"}, {"SCANDAT", "151127", "15.11.2027"},
    };
    for (const auto& r : rows) {
        expectCheck(r.field, r.typed, 0);
        EXPECT_EQ(WerteArray().GetValue(r.field), r.stored) << r.field << " " << r.typed;
    }
}

// A command that cannot run (an unknown table or column, master data without the country numbers,
// a field the record lacks) fails the check with its reason, logged once and not per record, and no
// run-time error box shows.
TEST_F(CheckEngine, a_command_that_cannot_run_is_a_check_failure_not_a_crash) {
    define("STATE", "Lookup(Staaten,State_ID)");
    const qint32 first = store(huber());
    EXPECT_EQ(Check("all", errors), 2);
    EXPECT_EQ(errors, "\r\nDer Befehl 'Lookup(Staaten,State_ID)' im Feld 'Staat' kann nicht ausgeführt werden: "
                      "Die Tabelle 'Staaten' ist nicht vorhanden.");
    EXPECT_EQ(code("STATE"), "3");

    store(huber());
    EXPECT_EQ(checkWith({}), 2);
    define("STATE", "Lookup(sysStates,Staat)");
    take(first);
    EXPECT_EQ(checkWith({}), 2);
    EXPECT_TRUE(errors.contains("Das Feld 'Staat' ist in der Tabelle 'sysStates' nicht vorhanden."));
    const QString log = QString::fromUtf8(home.readFile("zvMsgLog.txt"));
    EXPECT_EQ(log.count("Lookup(Staaten,State_ID)"), 1) << "logged once, not per record:\n" << log.toStdString();
    EXPECT_EQ(log.count("Lookup(sysStates,Staat)"), 1);

    execSql("ALTER TABLE sysStates DROP COLUMN State_IsoNumeric");
    define("PERSONAL_ID", "PersonenNr(LAND)");
    EXPECT_EQ(checkWith({}), 2);
    EXPECT_TRUE(errors.contains("Der Befehl 'EhicKarte(STATE)' im Feld 'Kennnummer der Karte' kann nicht ausgeführt "
                                "werden: "))
        << errors.toStdString();
    EXPECT_TRUE(errors.contains("State_IsoNumeric"));
    EXPECT_TRUE(errors.contains("Das Feld 'LAND' gibt es im Beleg nicht."));
    EXPECT_TRUE(messages.messages().isEmpty()) << messages.prompts().join("|").toStdString();
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

// EhicKarte and PersonenNr on the stored card: the warning the operator reads, the field's warning
// code and a record that still counts as faulty until the operator confirms it. A wrong personal
// number or asterisks warn too, unless the state prints asterisks in place of the number.
TEST_F(CheckEngine, the_card_and_personal_numbers_must_fit_the_issuing_state) {
    store(huber());
    struct Row {
        const char* state;
        const char* card;
        qint16 result;
    };
    const QString warning = "\r\nKennnummer der Karte ist keine Kartennummer (20 Ziffern, beginnend mit 80 und der "
                            "Ländernummer) des Staates ";
    const Row rows[] = {
        {"AT", "80040001234567890123", 0}, {"GR", "80300001234567890123", 0},
        {"EL", "80300001234567890123", 0}, {"UK", "80826001234567890123", 0},
        {"GB", "80826001234567890123", 0}, {"AT", "80276001234567890123", 3},
        {"AT", "81040001234567890123", 3}, {"D?", "80276001234567890123", 2 /* the "?" of the state */},
    };
    for (const Row& r : rows) {
        SCOPED_TRACE(std::string(r.state) + " " + r.card);
        EXPECT_EQ(checkWith({{"STATE", r.state}, {"CARD_ID", r.card}}), r.result);
        if (r.result == 3) {
            EXPECT_EQ(errors, warning + r.state);
            EXPECT_EQ(code("CARD_ID"), "5");
            EXPECT_EQ(WerteArray().GetValue("Korrigiert"), "0") << "a warning is not yet a clean record";
        } else {
            EXPECT_FALSE(errors.contains("Kennnummer der Karte")) << errors.toStdString();
        }
    }
    EXPECT_EQ(checkWith({{"STATE", "AT"}, {"CARD_ID", "80040001234567890123"}, {"PERSONAL_ID", "1234030761"}}), 3);
    EXPECT_EQ(errors, "\r\nPersönliche Kennnummer passt nicht zu Aufbau und Prüfziffer der persönlichen Kennnummer "
                      "des Staates AT");
    EXPECT_EQ(code("PERSONAL_ID"), "5");
    // An Austrian e-card without entitlement prints asterisks in place of the number.
    EXPECT_EQ(checkWith({{"PERSONAL_ID", "**********"}}), 0) << errors.toStdString();
    EXPECT_EQ(code("PERSONAL_ID"), "0");
    EXPECT_EQ(checkWith({{"STATE", "NL"}, {"CARD_ID", "80528000012345678901"}, {"PERSONAL_ID", "*********"}}), 3);
    EXPECT_TRUE(errors.endsWith("des Staates NL")) << errors.toStdString();
    // An error elsewhere outranks the warning.
    EXPECT_EQ(checkWith({{"NACHNAME", ""}}), 2);
    EXPECT_EQ(code("PERSONAL_ID"), "5");
}

} // namespace
