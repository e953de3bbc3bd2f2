// SPDX-License-Identifier: Apache-2.0
#include "AlternativesImport.h"

#include "FieldLengths.h"
#include "ImportText.h"
#include "OcrCorrection.h"
#include "ResultLine.h"
#include "app/ColumnInfo.h"
#include "app/Database.h"
#include "app/TextFile.h"
#include "app/mdlMessages.h"
#include "mdlImportNachbearbeitung.h"
#include "model/OcrAlternatives.h"
#include "model/ZVBFelderArray.h"

#include <QFile>
#include <QHash>
#include <QSet>
#include <QStringDecoder>
#include <optional>

namespace {

QString procedureName() {
    return QStringLiteral("ImportZVBWerte()");
}

// A file larger than this is no alternatives file the evaluation program wrote for one run.
constexpr qint64 largestFile = 64 << 20;
constexpr int mostCandidates = 5;

// One usable line of the file.
struct MarkLine {
    QString column;
    int ordinal = 0;    // 1-based among the marks of the column's value
    QString candidates; // distinct characters, best first
};

struct ParsedFile {
    QHash<QString, QVector<MarkLine>> byImage; // by BMPName
    int badLines = 0;
    int firstBadLine = 0;
};

// A character the operator could be offered in place of a "?".
bool offerable(char32_t c) {
    if (c == U'\t' || c == U'\r' || c == U'\n' || c == U'\\' || c == U'?')
        return false;
    const QChar::Category category = QChar::category(c);
    return category != QChar::Other_Control && category != QChar::Other_Format && category != QChar::Other_Surrogate &&
           category != QChar::Other_NotAssigned;
}

// The candidates of a line, or nothing when the field breaks the file's rules. A character outside
// the basic plane is allowed in the file but cannot stand in a field's single place, so it is left
// out without counting the line as faulty.
std::optional<QString> parseCandidates(QStringView text) {
    const QList<uint> points = text.toUcs4();
    if (points.isEmpty() || points.size() > mostCandidates)
        return std::nullopt;
    QString candidates;
    QSet<uint> seen;
    for (const uint c : points) {
        if (!offerable(char32_t(c)) || seen.contains(c))
            return std::nullopt;
        seen.insert(c);
        if (!QChar::requiresSurrogates(c))
            candidates += QChar(char16_t(c));
    }
    return candidates;
}

bool isColumnName(QStringView name) {
    if (name.isEmpty() || name.size() > 64)
        return false;
    for (const QChar c : name)
        if (!(c.isLetterOrNumber() && c.unicode() < 128) && c != u'_')
            return false;
    return true;
}

// Reads the file's lines; a line that breaks the rules (fields, ordinal, candidates, encoding, a
// second line for the same mark) is counted and skipped.
ParsedFile parseFile(const QString& path) {
    ParsedFile parsed;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return parsed;
    if (file.size() > largestFile) {
        parsed.badLines = 1;
        parsed.firstBadLine = 1;
        return parsed;
    }
    const QByteArray bytes = file.readAll();
    QSet<QString> marks;
    int lineNumber = 0;
    const auto bad = [&] {
        if (parsed.badLines++ == 0)
            parsed.firstBadLine = lineNumber;
    };
    for (qsizetype from = 0; from < bytes.size();) {
        qsizetype end = bytes.indexOf('\n', from);
        if (end < 0)
            end = bytes.size();
        QByteArrayView raw(bytes.constData() + from, end - from);
        from = end + 1;
        ++lineNumber;
        if (raw.endsWith('\r'))
            raw.chop(1);
        if (lineNumber == 1 && raw.startsWith("\xEF\xBB\xBF"))
            raw = raw.sliced(3);
        if (raw.isEmpty())
            continue;
        QStringDecoder utf8(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
        const QString line = utf8(raw);
        if (utf8.hasError()) {
            bad();
            continue;
        }
        const QList<QStringView> parts = QStringView(line).split(u'\t');
        bool numberOk = false;
        const int ordinal = parts.size() == 4 ? parts[2].toInt(&numberOk) : 0;
        const std::optional<QString> candidates =
            parts.size() == 4 ? parseCandidates(parts[3]) : std::optional<QString>();
        if (!numberOk || ordinal < 1 || parts[0].isEmpty() || !isColumnName(parts[1]) || !candidates) {
            bad();
            continue;
        }
        const QString key =
            parts[0].toString() + u'\t' + parts[1].toString().toUpper() + u'\t' + QString::number(ordinal);
        if (marks.contains(key)) {
            bad();
            continue;
        }
        marks.insert(key);
        if (!candidates->isEmpty())
            parsed.byImage[parts[0].toString()].push_back({parts[1].toString(), ordinal, *candidates});
    }
    return parsed;
}

// A column as the import fills it from its part of a line.
struct Column {
    QString name;
    bool text = false;    // a text column: its value is the text itself
    bool escapes = false; // escape codes resolved (all but BMPName)
    int size = 0;
    int length = NoFieldLength;
    QVector<OcrRule> rules;
};

// The row the import wrote for a line, rebuilt from the line, so that a mark can be read again with
// a candidate in its place. The steps are the import's, in its order.
class RowRebuilder {
public:
    // Throws VeridonError when the table or the master data cannot be read.
    RowRebuilder(const QString& table) : mapping_(CardLineMapping::load()) {
        const QVector<ColumnInfo> info = tableColumns(table);
        const OcrRules rules = OcrRules::load();
        ZVBFelderArray felder;
        felder.Fill();
        // The table's last column is never filled from the file.
        for (int i = 0; i + 1 < info.size(); ++i) {
            Column c;
            c.name = info[i].name;
            c.text = info[i].type == DaoType::Text || info[i].type == DaoType::Memo;
            c.escapes = c.name.compare(QLatin1String("BMPName"), Qt::CaseInsensitive) != 0;
            c.size = info[i].type == DaoType::Text ? info[i].size : 0;
            // Read without the import's report of a missing definition, which it made already.
            c.length = felder.Exists(c.name) ? felder.GetLaenge(c.name) : NoFieldLength;
            c.rules = rules.forColumn(c.name);
            columns_.push_back(c);
        }
        const auto indexOf = [&](const QString& name) {
            for (int i = 0; i < columns_.size(); ++i)
                if (columns_[i].name.compare(name, Qt::CaseInsensitive) == 0)
                    return i;
            return -1;
        };
        for (const QString& name : CardLineMapping::sourceColumns())
            sources_.push_back(indexOf(name));
        for (const QString& name : CardLineMapping::targetColumns())
            targets_.push_back(indexOf(name));
        // The fields the operator sees: the mapping's results and every other text column except
        // the raw card lines and the image name.
        for (int i = 0; i < columns_.size(); ++i) {
            const bool source = sources_.contains(i);
            if (columns_[i].text && (targets_.contains(i) || (!source && columns_[i].escapes)))
                compared_.push_back(i);
        }
    }

    int columnCount() const { return int(columns_.size()); }
    const QVector<int>& compared() const { return compared_; }
    const Column& column(int i) const { return columns_[i]; }
    int indexOf(const QString& name) const {
        for (int i = 0; i < columns_.size(); ++i)
            if (columns_[i].name.compare(name, Qt::CaseInsensitive) == 0)
                return i;
        return -1;
    }

    // The value the import stores for part in column i; with ordinal > 0 the ordinal-th mark "\f"
    // of the part is read as candidate instead. Null when the part has fewer marks.
    QString columnValue(int i, const ResultPart& part, int ordinal = 0, QChar candidate = {}) const {
        const Column& c = columns_[i];
        QString text = part.text;
        if (ordinal > 0) {
            qsizetype at = -2;
            for (int n = 0; n < ordinal; ++n) {
                at = text.indexOf(QLatin1String("\\f"), at + 2);
                if (at < 0)
                    return QString();
            }
            text.replace(at, 2, candidate);
        }
        bool invalid = false;
        const QString value = c.escapes && !part.null ? resolveEscapeCodes(text, invalid) : text;
        QString stored;
        if (c.size > 0 && value.size() > c.size) {
            stored = value.left(c.size);
        } else {
            stored = value;
            stored.replace(QLatin1Char(';'), QLatin1Char('.'));
        }
        stored = applyOcrRules(c.rules, stored);
        if (c.length != NoFieldLength && value.size() > c.length)
            stored = value.left(c.length);
        if (c.size > 0 && stored.size() > c.size)
            stored.truncate(c.size);
        return stored.isNull() ? QStringLiteral("") : stored;
    }

    // The compared fields of a row whose columns hold values (one per column of the file; a column
    // the line did not reach holds a null).
    QVector<QString> fields(const QVector<QString>& values) const {
        CardLineMapping::Raw raw;
        for (size_t k = 0; k < raw.size(); ++k) {
            const int i = sources_[qsizetype(k)];
            if (i >= 0 && i < values.size())
                raw[k] = values[i];
        }
        const CardLineMapping::Fields mapped = mapping_.map(raw);
        QVector<QString> out;
        out.reserve(compared_.size());
        for (const int i : compared_) {
            const qsizetype t = targets_.indexOf(i);
            out.push_back(t >= 0 ? mapped[size_t(t)] : (i < values.size() ? values[i] : QString()));
            if (out.back().isNull())
                out.back() = QStringLiteral("");
        }
        return out;
    }

private:
    CardLineMapping mapping_;
    QVector<Column> columns_;
    QVector<int> sources_;
    QVector<int> targets_;
    QVector<int> compared_;
};

// Where a candidate put in place of a mark shows: the one compared field that changed, in exactly
// one character, where the row as imported holds a "?". position -1 when the change is anything
// else (nothing changed, the field's length or several characters changed, several fields).
struct Place {
    int field = -1; // index into compared
    int position = -1;
    QChar character;
};

Place placeOf(const QVector<QString>& imported, const QVector<QString>& withCandidate) {
    Place place;
    for (int f = 0; f < imported.size(); ++f) {
        if (imported[f] == withCandidate[f])
            continue;
        if (place.field >= 0 || imported[f].size() != withCandidate[f].size())
            return {};
        for (qsizetype p = 0; p < imported[f].size(); ++p) {
            if (imported[f][p] == withCandidate[f][p])
                continue;
            if (place.position >= 0 || imported[f][p] != u'?')
                return {};
            place.field = f;
            place.position = int(p);
            place.character = withCandidate[f][p];
        }
    }
    return place;
}

// The candidates of one row, each at its place in the fields; a mark whose candidates do not all
// land on the same "?" is left out, and so are two marks that land on the same one.
QVector<CharacterAlternatives> placeMarks(const RowRebuilder& row, const QVector<ResultPart>& parts,
                                          const QVector<QString>& values, const QVector<QString>& imported,
                                          const QVector<MarkLine>& marks) {
    QVector<CharacterAlternatives> placed;
    QSet<QString> taken, twice;
    for (const MarkLine& mark : marks) {
        const int i = row.indexOf(mark.column);
        if (i < 0 || i >= parts.size() || parts[i].null || !row.column(i).text || !row.column(i).escapes)
            continue;
        Place at;
        QString candidates;
        bool certain = true;
        for (const QChar candidate : mark.candidates) {
            QVector<QString> changed = values;
            changed[i] = row.columnValue(i, parts[i], mark.ordinal, candidate);
            if (changed[i].isNull()) { // the value has fewer marks than the line says
                certain = false;
                break;
            }
            const Place p = placeOf(imported, row.fields(changed));
            if (p.field < 0)
                continue; // this candidate would read differently; the others may still fit
            if (at.field >= 0 && (p.field != at.field || p.position != at.position)) {
                certain = false;
                break;
            }
            at = p;
            if (p.character != u'?' && !candidates.contains(p.character))
                candidates += p.character;
        }
        if (!certain || at.field < 0 || candidates.isEmpty())
            continue;
        const int column = row.compared()[at.field];
        const QString key = row.column(column).name + u'\t' + QString::number(at.position);
        if (taken.contains(key))
            twice.insert(key);
        taken.insert(key);
        placed.push_back({row.column(column).name, at.position, candidates, imported[at.field]});
    }
    if (!twice.isEmpty())
        placed.removeIf([&](const CharacterAlternatives& m) {
            return twice.contains(m.field + u'\t' + QString::number(m.position));
        });
    return placed;
}

QString firstPart(const QString& line, const QString& separator) {
    const qsizetype at = line.indexOf(separator);
    return at == 0 ? QString() : trimBlanks(at < 0 ? QStringView(line) : QStringView(line).left(at));
}

} // namespace

QString alternativesFileName(const QString& path) {
    const qsizetype slash = path.lastIndexOf(QLatin1Char('/'));
    const qsizetype dot = path.lastIndexOf(QLatin1Char('.'));
    return (dot > slash ? path.left(dot) : path) + QStringLiteral(".alt");
}

QString alternativesTempName(const QString& resultTemp) {
    return resultTemp + QStringLiteral(".alt");
}

int ImportAlternatives(const QString& altTemp, const QString& resultTemp, const QString& separator,
                       const QString& table, qint64 numberBefore) {
    int stored = 0;
    try {
        const ParsedFile parsed = parseFile(altTemp);
        if (parsed.badLines > 0)
            WriteLog(procedureName(), QStringLiteral("Alternativendatei '%1': %2 fehlerhafte Zeile(n) übersprungen, "
                                                     "die erste ist Zeile %3.")
                                          .arg(altTemp)
                                          .arg(parsed.badLines)
                                          .arg(parsed.firstBadLine));
        if (parsed.byImage.isEmpty())
            return 0;
        const RowRebuilder row(table);

        // The rows of this import in the order of the file's lines.
        QVector<qint64> numbers;
        QVector<QVector<QString>> storedFields;
        {
            QStringList names;
            for (const int i : row.compared())
                names << QLatin1Char('[') + row.column(i).name + QLatin1Char(']');
            QSqlQuery q = execSql(QStringLiteral("SELECT LfdNr, %1 FROM %2 WHERE LfdNr>? ORDER BY LfdNr")
                                      .arg(names.join(QLatin1Char(',')), table),
                                  {numberBefore});
            while (q.next()) {
                numbers.push_back(q.value(0).toLongLong());
                QVector<QString> f;
                for (int k = 0; k < row.compared().size(); ++k)
                    f.push_back(q.value(k + 1).isNull() ? QStringLiteral("") : q.value(k + 1).toString());
                storedFields.push_back(f);
            }
        }

        // Lines whose image has candidates; an image named on two lines is not told apart.
        QHash<QString, int> lineOfImage;
        QSet<QString> ambiguous;
        QVector<QString> lines;
        TextLineReader reader;
        if (!reader.open(resultTemp))
            return 0;
        QString line;
        qsizetype count = 0;
        while (reader.next(line)) {
            const QString image = firstPart(line, separator);
            if (!image.isEmpty() && parsed.byImage.contains(image)) {
                if (lineOfImage.contains(image))
                    ambiguous.insert(image);
                lineOfImage.insert(image, int(count));
                lines.resize(count + 1);
                lines[count] = line;
            }
            ++count;
        }
        if (reader.failed() || count != numbers.size()) {
            WriteLog(procedureName(),
                     QStringLiteral("Alternativen nicht übernommen: %1 Zeilen in '%2', %3 neue Datensätze.")
                         .arg(count)
                         .arg(resultTemp)
                         .arg(numbers.size()));
            return 0;
        }

        int differing = 0;
        bool tableReady = false;
        for (auto it = lineOfImage.cbegin(); it != lineOfImage.cend(); ++it) {
            if (ambiguous.contains(it.key()))
                continue;
            const int k = it.value();
            const QVector<ResultPart> parts = splitResultLine(lines[k], separator, row.columnCount());
            QVector<QString> values(row.columnCount());
            for (int i = 0; i < parts.size(); ++i)
                values[i] = row.columnValue(i, parts[i]);
            const QVector<QString> imported = row.fields(values);
            // Read again as the import read it, the row must come out as it was stored; otherwise
            // the row changed in between (or the reading differs) and no place can be trusted.
            if (imported != storedFields[k]) {
                ++differing;
                continue;
            }
            const QVector<CharacterAlternatives> marks =
                placeMarks(row, parts, values, imported, parsed.byImage.value(it.key()));
            if (marks.isEmpty())
                continue;
            if (!tableReady) {
                ensureAlternativesTable();
                tableReady = true;
            }
            storeAlternatives(numbers[k], marks);
            stored += int(marks.size());
        }
        if (differing > 0)
            WriteLog(procedureName(), QStringLiteral("Alternativen von %1 Datensätzen verworfen: die Zeile ergibt "
                                                     "nicht mehr die gespeicherten Werte.")
                                          .arg(differing));
    } catch (const std::exception& e) {
        WriteLog(procedureName(), QStringLiteral("Alternativen nicht übernommen: %1").arg(QString::fromUtf8(e.what())));
    }
    return stored;
}
