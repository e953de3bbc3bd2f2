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

// Checks a template before a pass uses it, so that no record's values can make a file that does not
// parse: it must hold more than blanks; filled with values and with every value empty it must be a
// well-formed XML document; and each placeholder must stand where any value is harmless - in the
// text between elements, or (the bare %VERSION% and %FORM_DATE%) inside an attribute value. A
// placeholder in a comment, a processing instruction, the document type or a name is refused: an
// empty date's "--" alone would break a comment. Returns "" when the template is usable, otherwise
// the reason in German.
QString TemplateProblem(const QString& templateText);

// True when a stored date can be turned around by position: empty, or ten characters whose
// positions 1-2, 4-5 and 7-10 hold the digits of a real calendar day (the separators at 3 and 6 are
// never looked at). Anything else would leave as a wrong date ("310327" as "0327-32-31").
bool IsReadableExportDate(const QString& storedDate);

// The column of the first date in values that IsReadableExportDate refuses ("SCANDAT", "GEBDAT" or
// "CARD_EXPIRY"), or "" when every date can be read.
QString UnreadableExportDate(const ExportValues& values);

// The template with every placeholder replaced, in the fixed order, case-sensitively; values are
// escaped. The empty lines left behind are NOT removed here (see RemoveEmptyLines).
QString FillExportTemplate(const QString& templateText, const ExportValues& values);

// The whole text of one hand-over file: the template filled, its blank lines removed, made fit for
// Windows-1252 (see XmlSafeText; the characters dropped are named in dropped) and ended by CR LF.
// For a template that TemplateProblem accepts, the result is well-formed XML whatever the values.
QString ExportXmlText(const QString& templateText, const ExportValues& values, QString* dropped = nullptr);

// The output file: exportFolder with "/" appended when it does not end in one, then the base name
// of bmpName (after the last "/" or "\", before the last "."; a name without "." whole) and ".xml".
QString ExportFileName(const QString& exportFolder, const QString& bmpName);

// The part of a path after its last "/" or "\".
QString FileNameOf(const QString& path);
