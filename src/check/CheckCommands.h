// SPDX-License-Identifier: Apache-2.0
// The check commands of a field definition ("Pflichtfeld();Bereich(1,12)") split into commands with
// their parameters already converted, and kept per field for the program's life: the definitions
// do not change while it runs, and a bulk re-check must not parse the same list for every record.
#pragma once

#include <QChar>
#include <QString>
#include <QVector>

enum class CheckKeyword {
    NoParenthesis, // no "(" at all: not a command
    Unknown,       // a keyword no check answers to
    Pflichtfeld,
    Zahl,
    Gleitkommazahl,
    Gleitkommazahllaenge,
    Laenge,
    Bereich,
    Gleitkommazahlbereich,
    Werteliste,
    Lookup,
    Zeit,
    Waehrung,
    Datum,
    DatumBereich,
    EhicKarte,  // EhicKarte(STATE): the card number against the state in field STATE
    PersonenNr, // PersonenNr(STATE): the personal number by the rule of that state
};

struct CheckCommand {
    QString text; // the command as written
    CheckKeyword keyword = CheckKeyword::Unknown;
    // Why the parameters cannot be used (German, for the operator and the log); empty when they can.
    QString problem;
    // The converted parameters, by keyword:
    //  Laenge(n), Waehrung(n): whole1 = n;  Bereich(min,max), Gleitkommazahllaenge(a,b): whole1, whole2;
    //  Gleitkommazahlbereich(min,max): decimal1, decimal2;  Gleitkommazahl(p): separator;
    //  Datum_Bereich(from,to): text1, text2 (each a day count or "");
    //  Lookup(table,column[,condition]): text1 table, text2 column, text3 condition (may hold ",");
    //  EhicKarte(field), PersonenNr(field): text1 the name of the field that holds the state.
    qint64 whole1 = 0;
    qint64 whole2 = 0;
    double decimal1 = 0;
    double decimal2 = 0;
    QChar separator;
    QString text1, text2, text3;
    // What follows the message text: the range, the list or the lengths, as the keyword shows it.
    QString suffix;
};

using CheckCommandList = QVector<CheckCommand>;

// Splits a command list at ";" from the left (an empty part between two ";" is an empty command; a
// trailing ";" adds none) and reads each command's keyword (the text before the first "(",
// compared exactly) and parameters (between that "(" and the last ")", separated by ","). Never
// fails: unusable parameters are described in the command's problem.
CheckCommandList parseCheckCommands(const QString& pruefungen);

// The parsed list of fieldName's commands, kept for the calling thread. Parsed on first use and
// again only when the field's command text differs from the one parsed (a field array filled from
// other definitions). A command with unusable parameters is logged once, when parsed.
const CheckCommandList& cachedCheckCommands(const QString& fieldName, const QString& pruefungen);

// How many command lists have been parsed in this program run.
quint64 checkCommandParseCount();
