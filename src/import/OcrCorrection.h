// SPDX-License-Identifier: Apache-2.0
// Repairs of reading errors in what the evaluation program read off the card: the replacement rules
// of table ocrErsetzungen, and the helpers that turn one raw card line into clean field values
// (frame characters, the case of names, the gap between two fields, dates, state codes).
#pragma once

#include <QHash>
#include <QString>
#include <QStringList>
#include <QVector>

// One replacement rule, with "#" already turned into the blank it stands for.
struct OcrRule {
    QString search;
    QString replacement;
};

// The rules of table ocrErsetzungen, read once for a batch and then asked per column.
class OcrRules {
public:
    // Reads every rule in table order. Throws VeridonError when the table cannot be read.
    static OcrRules load();
    // The rules for column (Feld equal to it without regard to case) and for every column
    // (Feld "*"), in table order.
    QVector<OcrRule> forColumn(const QString& column) const;

private:
    struct Row {
        QString feld;
        OcrRule rule;
    };
    QVector<Row> rows_;
};

// value after each rule in turn, every exact occurrence of its search text replaced. A rule with an
// empty search text changes nothing.
QString applyOcrRules(const QVector<OcrRule>& rules, QString value);

// value after every rule of ocrErsetzungen for column and for "*", in table order ("#" in a rule is
// a blank). Throws VeridonError when the table cannot be read.
QString OcrErsetzen(const QString& column, const QString& value);

// line without a frame character the reader took from the card's border: trimmed; then a leading
// "]" or one of ? [ ( ) i I l / \ | 1 followed by at least n blanks is dropped and the rest trimmed;
// then the same for such a character at the end preceded by at least n blanks.
QString EntferneRandzeichen(const QString& line, int n);

// text with its first character and every character after a blank or "-" made upper case; all
// other characters stay as they are ("anna-lena" -> "Anna-Lena", "MUELLER" stays "MUELLER").
QString SmartCase(const QString& text);

// Splits text at its longest run of blanks (the first such run when several are equally long):
// first is the trimmed text before it, second the trimmed rest. Without a blank first is text and
// second is "".
void TrenneAmGroesstenAbstand(const QString& text, QString& first, QString& second);

// The date "##/##/####" inside text when text holds one and is not just the ten characters of it;
// any other text is returned unchanged.
QString SchneideDatumAus(const QString& text);

// The codes of table sysStates, read once for a batch.
class StateCodes {
public:
    // The codes given, in this order (the known states without a database).
    explicit StateCodes(QStringList codes = {});
    // Reads State_ID of every row in table order. Throws VeridonError when the table cannot be read.
    static StateCodes load();
    // Number of rows whose code equals code (without regard to case).
    int countEqual(const QString& code) const;
    // Codes of the rows that match the Jet pattern ("D?" -> every code beginning with D).
    QStringList matching(const QString& pattern) const;
    // Whether any row's code matches the Jet pattern; the same as !matching(pattern).isEmpty().
    bool anyMatching(const QString& pattern) const;
    // Codes of the rows whose code occurs in text (without regard to case).
    QStringList containedIn(const QString& text) const;

private:
    QStringList codes_;
    // Rows by code, so that the clean-up's lookups for every line need not walk every code: the
    // key as a case-insensitive comparison sees it, and as a Jet pattern without wildcards does.
    QHash<QString, int> folded_;
    QHash<QString, int> lowered_;
};

// The state code in text, repaired against the known states: a text shorter than 2 characters is
// returned as it is; otherwise it is upper-cased and
// - two letters: kept when exactly one state has that code, else "?";
// - a letter and "?" (the second character unreadable): the one state the pattern matches, else the
//   text unchanged (an unreadable first character is not looked up and gives "?");
// - any other two characters: "?";
// - three or more characters: the one state whose code occurs in the text, else "?".
QString ErmittleStaat(const QString& text, const StateCodes& states);
// The same, reading sysStates for this one call. Throws VeridonError when it cannot be read.
QString ErmittleStaat(const QString& text);

// A date as read from the card made into "DD/MM/YYYY" where the reading allows: blanks removed,
// "|" and "\" read for the slash made "/", a date cut out of surrounding characters, and a slash
// read as "1" (or as l, I, i, !) put back; not cut to any length. Text that holds no date comes
// back with only those character repairs.
QString repairCardDate(const QString& text);
