// SPDX-License-Identifier: Apache-2.0
// The text side of the XML hand-over: filling the template's placeholders with a record's values,
// dropping lines that became blank, and the output file name. Plain text work on strings; no file
// or database access, so the rules can be checked in isolation and run fast in the export pass.
#pragma once

#include <QString>

// The values of one record that the template needs, as stored (null columns as ""). caseIdentifier
// is the State_XmlType already looked up ("5" for an unknown state).
struct ExportValues {
    QString scanDat;
    QString formId;
    QString state;
    QString caseIdentifier;
    QString nachname;
    QString vorname;
    QString gebDat;
    QString personalId;
    QString institutId;
    QString cardId;
    QString cardExpiry;
};

// The schema version written for %VERSION%.
inline constexpr const char* ExportSchemaVersion = "2.13";

// "<name>value</name>", or "" when value is empty. value is inserted as given (the caller escapes).
QString XmlElement(const QString& value, const QString& elementName);

// text without its lines of spaces: pieces run up to and including each CR LF; a piece that is
// exactly two characters once its spaces are removed (a blank line and its CR LF) is dropped.
// Tabs are not spaces here, so a line holding a tab stays.
QString RemoveEmptyLines(const QString& text);

// A stored date "DD.MM.YYYY" as "YYYY-MM-DD": the last four characters, "-", the two from position
// 4, "-", the first two. The separators are never looked at; an empty date gives "--".
QString ExportDate(const QString& storedDate);

// text with "&", "<" and ">" written as entities, and with quotes as well when quotes is set (for
// values that may stand inside an attribute), so every file stays well-formed XML.
QString XmlEscape(const QString& text, bool quotes);

// text made fit for a Windows-1252 XML file: a character that Windows-1252 cannot hold becomes a
// numeric character reference ("Ł" -> "&#321;", one reference per character, also beyond the
// 16-bit range); a character that XML 1.0 forbids (controls below 0x20 other than tab, CR and LF,
// U+FFFE/U+FFFF, a lone surrogate, and the five code points U+0081, U+008D, U+008F, U+0090, U+009D
// that stand for the bytes Windows-1252 leaves undefined) is dropped and named in dropped as
// "U+000C" (comma-separated, when dropped is given).
QString XmlSafeText(const QString& text, QString* dropped = nullptr);

// True when text parses as one well-formed XML document; otherwise false with the parser's
// complaint and its line in problem (when given).
bool IsWellFormedXml(const QString& text, QString* problem = nullptr);

// Checks a template before a pass uses it: it must hold more than blanks, and once filled with
// harmless values and made XML-safe it must be a well-formed XML document. Returns "" when it is
// usable, otherwise the reason in German.
QString TemplateProblem(const QString& templateText);

// The template with every placeholder replaced, in the fixed order, case-sensitively; values are
// escaped. The empty lines left behind are NOT removed here (see RemoveEmptyLines).
QString FillExportTemplate(const QString& templateText, const ExportValues& values);

// The output file: exportFolder with "/" appended when it does not end in one, then the base name
// of bmpName (after the last "/" or "\", before the last "."; a name without "." whole) and ".xml".
QString ExportFileName(const QString& exportFolder, const QString& bmpName);

// The part of a path after its last "/" or "\".
QString FileNameOf(const QString& path);
