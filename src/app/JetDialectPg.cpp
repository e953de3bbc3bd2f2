// SPDX-License-Identifier: Apache-2.0
#include "JetDialectPg.h"

#include "Clock.h"
#include "Database.h"
#include "PoolConnection.h"

#include <QHash>
#include <QRegularExpression>
#include <QSqlQuery>

namespace {

// The server's table and column names by their lower-case form. A name may be spelt differently in
// two tables ("id" and "ID"): then the spelling of a table the statement names wins.
struct Catalog {
    quint64 generation = 0;
    bool loaded = false;
    QHash<QString, QString> tables;                           // lower -> spelling
    QHash<QString, QVector<QPair<QString, QString>>> columns; // lower -> (table, spelling)
};
thread_local Catalog catalog;

const Catalog& catalogOf(const QSqlDatabase& db) {
    if (catalog.loaded && catalog.generation == connectionGeneration())
        return catalog;
    catalog = Catalog();
    QSqlQuery q(db);
    if (!q.exec(QStringLiteral("SELECT table_name, column_name FROM information_schema.columns "
                               "WHERE table_schema = 'public' ORDER BY table_name, ordinal_position")))
        throwPoolError(q.lastError());
    while (q.next()) {
        const QString table = q.value(0).toString();
        const QString column = q.value(1).toString();
        catalog.tables.insert(table.toLower(), table);
        catalog.columns[column.toLower()].append({table, column});
    }
    catalog.generation = connectionGeneration();
    catalog.loaded = true;
    return catalog;
}

QString quoted(const QString& name) {
    QString inner = name;
    inner.replace(QLatin1Char('"'), QLatin1String("\"\""));
    return QLatin1Char('"') + inner + QLatin1Char('"');
}

bool isWordStart(QChar c) {
    return c.isLetter() || c == QLatin1Char('_');
}

bool isWordChar(QChar c) {
    return c.isLetterOrNumber() || c == QLatin1Char('_');
}

// The tables a statement names, by their lower-case form.
QStringList namedTables(const QString& sql, const Catalog& names) {
    QStringList found;
    static const QRegularExpression word(QStringLiteral("[A-Za-z_][A-Za-z0-9_]*"));
    auto it = word.globalMatch(sql);
    while (it.hasNext()) {
        const QString w = it.next().captured(0).toLower();
        if (names.tables.contains(w) && !found.contains(w))
            found << w;
    }
    return found;
}

// A name in the server's spelling, quoted; null when the server does not know it.
QString serverName(const QString& name, const Catalog& names, const QStringList& tables) {
    const QString key = name.toLower();
    const auto table = names.tables.constFind(key);
    if (table != names.tables.constEnd())
        return quoted(table.value());
    const auto column = names.columns.constFind(key);
    if (column == names.columns.constEnd())
        return QString();
    for (const auto& [owner, spelling] : column.value())
        if (tables.contains(owner.toLower()))
            return quoted(spelling);
    return quoted(column.value().first().second);
}

QString literal(const QString& text) {
    QString inner = text;
    inner.replace(QLatin1Char('\''), QLatin1String("''"));
    return QLatin1Char('\'') + inner + QLatin1Char('\'');
}

// The type on the server for a column type written for data.mdb.
QString serverType(const QString& declared) {
    QString t = declared.trimmed();
    static const QRegularExpression nocase(QStringLiteral("\\s+COLLATE\\s+NOCASE"),
                                           QRegularExpression::CaseInsensitiveOption);
    t.remove(nocase);
    const QString upper = t.toUpper();
    if (upper.contains(QLatin1String("AUTOINCREMENT")))
        return QStringLiteral("serial PRIMARY KEY");
    const QString notNull = upper.contains(QLatin1String("NOT NULL")) ? QStringLiteral(" NOT NULL") : QString();
    const QString base = upper.section(QLatin1Char(' '), 0, 0);
    if (base.startsWith(QLatin1String("VARCHAR")))
        return base.toLower() + QStringLiteral(" COLLATE jet_nocase") + notNull;
    static const QHash<QString, QString> types = {
        {QStringLiteral("LONGTEXT"), QStringLiteral("jet_longtext")},
        {QStringLiteral("BOOLEAN"), QStringLiteral("jet_boolean")},
        {QStringLiteral("DATETIME"), QStringLiteral("jet_datetime")},
        {QStringLiteral("CURRENCY"), QStringLiteral("jet_currency")},
        {QStringLiteral("DOUBLE"), QStringLiteral("double precision")},
        {QStringLiteral("BLOB"), QStringLiteral("bytea")},
        {QStringLiteral("SMALLINT"), QStringLiteral("smallint")},
        {QStringLiteral("INTEGER"), QStringLiteral("integer")},
    };
    return types.value(base, base.toLower()) + notNull;
}

// CREATE TABLE [IF NOT EXISTS] name (column type, ...): names keep their spelling, types become
// the pool's, and a table without a counter gets the hidden column that keeps table order.
QString createTable(const QString& sql) {
    static const QRegularExpression head(
        QStringLiteral("^\\s*CREATE\\s+TABLE\\s+(IF\\s+NOT\\s+EXISTS\\s+)?\\[?(\\w+)\\]?\\s*\\((.*)\\)\\s*;?\\s*$"),
        QRegularExpression::CaseInsensitiveOption | QRegularExpression::DotMatchesEverythingOption);
    const auto m = head.match(sql);
    if (!m.hasMatch())
        return sql;
    QStringList columns;
    bool counter = false;
    int depth = 0;
    QString current;
    const QString body = m.captured(3) + QLatin1Char(',');
    for (const QChar c : body) {
        if (c == QLatin1Char('('))
            ++depth;
        else if (c == QLatin1Char(')'))
            --depth;
        if (c == QLatin1Char(',') && depth == 0) {
            const QString def = current.trimmed();
            current.clear();
            if (def.isEmpty())
                continue;
            const qsizetype space = def.indexOf(QLatin1Char(' '));
            QString name = space < 0 ? def : def.left(space);
            name.remove(QLatin1Char('[')).remove(QLatin1Char(']'));
            const QString type = serverType(space < 0 ? QString() : def.mid(space + 1));
            counter = counter || type.startsWith(QLatin1String("serial"));
            columns << quoted(name) + QLatin1Char(' ') + type;
            continue;
        }
        current += c;
    }
    if (!counter)
        columns << QStringLiteral("rowid bigserial");
    return QStringLiteral("CREATE TABLE %1%2 (%3)")
        .arg(m.captured(1).isEmpty() ? QString() : QStringLiteral("IF NOT EXISTS "), quoted(m.captured(2)),
             columns.join(QStringLiteral(", ")));
}

} // namespace

QString translateJetPg(const QString& jetSql, const QSqlDatabase& db) {
    static const QRegularExpression createTableHead(QStringLiteral("^\\s*CREATE\\s+TABLE\\b"),
                                                    QRegularExpression::CaseInsensitiveOption);
    if (createTableHead.match(jetSql).hasMatch())
        return createTable(jetSql);
    static const QRegularExpression deleteStar(QStringLiteral("^\\s*DELETE\\s+\\*\\s+FROM\\b"),
                                               QRegularExpression::CaseInsensitiveOption);
    QString sql = jetSql;
    sql.replace(deleteStar, QStringLiteral("DELETE FROM"));

    const Catalog& names = catalogOf(db);
    const QStringList tables = namedTables(sql, names);
    // In the pool the counter LfdNr is the row order of zvbWerte, as rowid is in data.mdb.
    const bool values = tables.contains(QLatin1String("zvbwerte"));
    QString out;
    out.reserve(sql.size() + 32);
    for (qsizetype i = 0; i < sql.size(); ++i) {
        const QChar c = sql[i];
        if (c == QLatin1Char('\'')) {
            const qsizetype end = sql.indexOf(QLatin1Char('\''), i + 1);
            const qsizetype stop = end < 0 ? sql.size() : end + 1;
            out += sql.mid(i, stop - i); // '' inside a literal is two adjacent literals here: same text
            i = stop - 1;
        } else if (c == QLatin1Char('"')) {
            // Jet reads a text in double quotes as a literal; "" inside stands for one quote.
            QString text;
            qsizetype j = i + 1;
            for (; j < sql.size(); ++j) {
                if (sql[j] == QLatin1Char('"')) {
                    if (j + 1 < sql.size() && sql[j + 1] == QLatin1Char('"')) {
                        text += QLatin1Char('"');
                        ++j;
                        continue;
                    }
                    break;
                }
                text += sql[j];
            }
            out += literal(text);
            i = j;
        } else if (c == QLatin1Char('[')) {
            const qsizetype end = sql.indexOf(QLatin1Char(']'), i + 1);
            const QString name = sql.mid(i + 1, (end < 0 ? sql.size() : end) - i - 1);
            const QString known = serverName(name, names, tables);
            out += known.isNull() ? quoted(name) : known;
            i = end < 0 ? sql.size() : end;
        } else if (c == QLatin1Char('&')) {
            out += QStringLiteral("||");
        } else if (isWordStart(c) && (i == 0 || !isWordChar(sql[i - 1]))) {
            qsizetype end = i + 1;
            while (end < sql.size() && isWordChar(sql[end]))
                ++end;
            const QString word = sql.mid(i, end - i);
            qsizetype next = end;
            while (next < sql.size() && sql[next].isSpace())
                ++next;
            const bool call = next < sql.size() && sql[next] == QLatin1Char('(');
            const QString lower = word.toLower();
            if (call && (lower == QLatin1String("now") || lower == QLatin1String("date"))) {
                // The program clock, as Now() and Date() read it on data.mdb; tests set that clock.
                const qsizetype close = sql.indexOf(QLatin1Char(')'), next);
                out += literal(lower == QLatin1String("now")
                                   ? appClock().now().toString(QStringLiteral("yyyy-MM-dd HH:mm:ss"))
                                   : appClock().today().toString(QStringLiteral("yyyy-MM-dd")) +
                                         QStringLiteral(" 00:00:00"));
                i = close < 0 ? sql.size() : close;
                continue;
            }
            QString replacement;
            if (names.tables.contains(lower)) {
                replacement = quoted(names.tables.value(lower)); // "INTO t (a, b)" is no call
            } else if (!call) {
                if (lower == QLatin1String("true"))
                    replacement = QStringLiteral("1");
                else if (lower == QLatin1String("false"))
                    replacement = QStringLiteral("0");
                else if (lower == QLatin1String("rowid") && values)
                    replacement = quoted(QStringLiteral("LfdNr"));
                else
                    replacement = serverName(word, names, tables);
            }
            out += replacement.isNull() ? word : replacement;
            i = end - 1;
        } else {
            out += c;
        }
    }
    return out;
}

QStringList poolDialectObjects() {
    return {
        // Jet compares texts without regard to case (and the pool's conditions rely on it).
        QStringLiteral("CREATE COLLATION IF NOT EXISTS jet_nocase "
                       "(provider = icu, locale = 'und-u-ks-level2', deterministic = false)"),
        QStringLiteral("CREATE DOMAIN jet_boolean AS smallint"),
        QStringLiteral("CREATE DOMAIN jet_longtext AS text COLLATE jet_nocase"),
        QStringLiteral("CREATE DOMAIN jet_datetime AS varchar(19)"),
        QStringLiteral("CREATE DOMAIN jet_currency AS numeric(19,4)"),
        // Jet's pattern as a regular expression: * any run, ? one character, # one digit, [..] and
        // [!..] classes; everything else literal. Pattern and value are lower-cased first.
        QStringLiteral(R"SQL(CREATE FUNCTION jet_like(value text, pattern text) RETURNS boolean
LANGUAGE plpgsql IMMUTABLE STRICT AS $f$
DECLARE
  v text COLLATE "C" := lower(value COLLATE "und-x-icu");
  p text COLLATE "C" := lower(pattern COLLATE "und-x-icu");
  r text COLLATE "C" := '^';
  c text COLLATE "C";
  cls text COLLATE "C";
  i int := 1;
  j int;
BEGIN
  WHILE i <= length(p) LOOP
    c := substr(p, i, 1);
    IF c = '*' THEN r := r || '.*';
    ELSIF c = '?' THEN r := r || '.';
    ELSIF c = '#' THEN r := r || '[0-9]';
    ELSIF c = '[' AND strpos(substr(p, i + 2), ']') > 0 THEN
      j := strpos(substr(p, i + 2), ']');
      cls := substr(p, i + 1, j);
      i := i + j + 1;
      IF left(cls, 1) = '!' AND length(cls) > 1 THEN
        r := r || '[^' || regexp_replace(substr(cls, 2), '([\\\]\[^])', '\\\1', 'g') || ']';
      ELSE
        r := r || '[' || regexp_replace(cls, '([\\\]\[^])', '\\\1', 'g') || ']';
      END IF;
    ELSE r := r || regexp_replace(c, '([^[:alnum:] ])', '\\\1', 'g');
    END IF;
    i := i + 1;
  END LOOP;
  RETURN v ~ (r || '$');
END $f$)SQL"),
        QStringLiteral("CREATE FUNCTION jet_not_like(value text, pattern text) RETURNS boolean "
                       "LANGUAGE sql IMMUTABLE STRICT AS $f$ SELECT NOT jet_like(value, pattern) $f$"),
        // The pool's sessions find public before pg_catalog, so LIKE and NOT LIKE of texts are Jet's.
        QStringLiteral("CREATE OPERATOR public.~~ (LEFTARG = text, RIGHTARG = text, FUNCTION = jet_like)"),
        QStringLiteral("CREATE OPERATOR public.!~~ (LEFTARG = text, RIGHTARG = text, FUNCTION = jet_not_like)"),
        // Jet compares a text column with a number as text ("State_XmlType=4").
        QStringLiteral("CREATE FUNCTION jet_text_eq_int(a text, b integer) RETURNS boolean "
                       "LANGUAGE sql IMMUTABLE STRICT AS $f$ SELECT a = b::text $f$"),
        QStringLiteral("CREATE FUNCTION jet_text_ne_int(a text, b integer) RETURNS boolean "
                       "LANGUAGE sql IMMUTABLE STRICT AS $f$ SELECT a <> b::text $f$"),
        QStringLiteral("CREATE OPERATOR public.= (LEFTARG = text, RIGHTARG = integer, FUNCTION = jet_text_eq_int)"),
        QStringLiteral("CREATE OPERATOR public.<> (LEFTARG = text, RIGHTARG = integer, FUNCTION = jet_text_ne_int)"),
        QStringLiteral(R"SQL(CREATE FUNCTION instr(start int, haystack text, needle text) RETURNS int
LANGUAGE plpgsql IMMUTABLE STRICT AS $f$
DECLARE
  h text COLLATE "C" := lower(haystack COLLATE "und-x-icu");
  n text COLLATE "C" := lower(needle COLLATE "und-x-icu");
  at int;
BEGIN
  IF start < 1 OR start > length(h) + 1 THEN RETURN 0; END IF;
  IF n = '' THEN RETURN start; END IF;
  at := strpos(substr(h, start), n);
  RETURN CASE WHEN at = 0 THEN 0 ELSE at + start - 1 END;
END $f$)SQL"),
        QStringLiteral("CREATE FUNCTION instr(haystack text, needle text) RETURNS int "
                       "LANGUAGE sql IMMUTABLE STRICT AS $f$ SELECT instr(1, haystack, needle) $f$"),
        QStringLiteral("CREATE FUNCTION mid(s text, start int) RETURNS text "
                       "LANGUAGE sql IMMUTABLE STRICT AS $f$ SELECT substr(s, greatest(start, 1)) $f$"),
        QStringLiteral("CREATE FUNCTION mid(s text, start int, len int) RETURNS text LANGUAGE sql IMMUTABLE STRICT "
                       "AS $f$ SELECT substr(s, greatest(start, 1), greatest(len, 0)) $f$"),
        QStringLiteral("CREATE FUNCTION ucase(s text) RETURNS text "
                       "LANGUAGE sql IMMUTABLE STRICT AS $f$ SELECT upper(s) $f$"),
        QStringLiteral("CREATE FUNCTION lcase(s text) RETURNS text "
                       "LANGUAGE sql IMMUTABLE STRICT AS $f$ SELECT lower(s) $f$"),
        QStringLiteral("CREATE FUNCTION len(s text) RETURNS int "
                       "LANGUAGE sql IMMUTABLE STRICT AS $f$ SELECT length(s) $f$"),
        QStringLiteral("CREATE FUNCTION nz(v anyelement, d anyelement) RETURNS anyelement "
                       "LANGUAGE sql IMMUTABLE AS $f$ SELECT coalesce(v, d) $f$"),
        QStringLiteral("CREATE FUNCTION nz(v text) RETURNS text "
                       "LANGUAGE sql IMMUTABLE AS $f$ SELECT coalesce(v, '') $f$"),
        QStringLiteral("CREATE FUNCTION iif(c boolean, a anyelement, b anyelement) RETURNS anyelement "
                       "LANGUAGE sql IMMUTABLE AS $f$ SELECT CASE WHEN c THEN a ELSE b END $f$"),
    };
}

QVector<ColumnInfo> poolTableColumns(const QSqlDatabase& db, const QString& table) {
    static const QHash<QString, QString> domains = {
        {QStringLiteral("jet_boolean"), QStringLiteral("BOOLEAN")},
        {QStringLiteral("jet_longtext"), QStringLiteral("LONGTEXT")},
        {QStringLiteral("jet_datetime"), QStringLiteral("DATETIME")},
        {QStringLiteral("jet_currency"), QStringLiteral("CURRENCY")},
    };
    static const QHash<QString, QString> types = {
        {QStringLiteral("smallint"), QStringLiteral("SMALLINT")},
        {QStringLiteral("integer"), QStringLiteral("INTEGER")},
        {QStringLiteral("bigint"), QStringLiteral("INTEGER")},
        {QStringLiteral("double precision"), QStringLiteral("DOUBLE")},
        {QStringLiteral("real"), QStringLiteral("REAL")},
        {QStringLiteral("text"), QStringLiteral("LONGTEXT")},
        {QStringLiteral("bytea"), QStringLiteral("BLOB")},
    };
    QVector<ColumnInfo> columns;
    QSqlQuery q(db);
    q.prepare(QStringLiteral("SELECT column_name, data_type, character_maximum_length, domain_name,"
                             " starts_with(coalesce(column_default, ''), 'nextval') FROM information_schema.columns"
                             " WHERE table_schema = 'public' AND lower(table_name) = lower(?)"
                             " ORDER BY ordinal_position"));
    q.addBindValue(table);
    if (!q.exec())
        throwPoolError(q.lastError());
    while (q.next()) {
        ColumnInfo c;
        c.name = q.value(0).toString();
        const QString dataType = q.value(1).toString();
        const QString domain = q.value(3).toString();
        if (c.name == QLatin1String("rowid"))
            continue;
        if (domains.contains(domain))
            c.declaredType = domains.value(domain);
        else if (dataType == QLatin1String("character varying"))
            c.declaredType = QStringLiteral("VARCHAR(%1)").arg(q.value(2).toInt());
        else
            c.declaredType = types.value(dataType, dataType.toUpper());
        c.type = daoTypeOf(c.declaredType);
        c.primaryKey = q.value(4).toBool();
        if (c.type == DaoType::Text)
            c.size = q.value(2).isNull() ? 255 : q.value(2).toInt();
        columns.push_back(c);
    }
    return columns;
}

bool poolTableExists(const QSqlDatabase& db, const QString& table) {
    QSqlQuery q(db);
    q.prepare(QStringLiteral("SELECT 1 FROM information_schema.tables WHERE table_schema = 'public'"
                             " AND lower(table_name) = lower(?)"));
    q.addBindValue(table);
    if (!q.exec())
        throwPoolError(q.lastError());
    return q.next();
}

void forgetPoolCatalog() {
    catalog = Catalog();
}
