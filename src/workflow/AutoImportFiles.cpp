// SPDX-License-Identifier: Apache-2.0
// Reading master-data files into a table: the delimited and the fixed-width format. Both keep the
// old format's quirks, which the files delivered so far rely on (a separator inside text delimiters
// still splits; an empty line ends a fixed-width file), and both refuse a value that does not fit
// its column's type instead of storing it silently.
#include "mdlAutoImport.h"

#include "CommittedBatch.h"
#include "app/ColumnInfo.h"
#include "app/Progress.h"
#include "app/TextFile.h"
#include "app/mdlDB.h"
#include "app/mdlMessages.h"

#include <QDateTime>
#include <QHash>

namespace {

VeridonError typeMismatch(int line, const QString& value, const ColumnInfo& column) {
    return VeridonError(ErrorNumber::TypeMismatch, Msg::ErrAutoImportValue, {line, value, column.name});
}

// A piece of a line as the value of column: texts cut to the column's size, other types converted
// (an empty piece is null there). Throws for a piece that is not a value of the column's type.
QVariant columnValue(const ColumnInfo& column, const QString& piece, int line) {
    switch (column.type) {
    case DaoType::Text:
        return column.size > 0 && piece.size() > column.size ? piece.left(column.size) : piece;
    case DaoType::Memo:
    case DaoType::Binary:
    case DaoType::LongBinary:
        return piece;
    default:
        break;
    }
    const QString t = piece.trimmed();
    if (t.isEmpty())
        return QVariant();
    bool ok = false;
    switch (column.type) {
    case DaoType::Boolean: {
        const QString f = t.toLower();
        if (f == QLatin1String("1") || f == QLatin1String("-1") || f == QLatin1String("true") ||
            f == QLatin1String("wahr") || f == QLatin1String("ja") || f == QLatin1String("yes"))
            return 1;
        if (f == QLatin1String("0") || f == QLatin1String("false") || f == QLatin1String("falsch") ||
            f == QLatin1String("nein") || f == QLatin1String("no"))
            return 0;
        throw typeMismatch(line, piece, column);
    }
    case DaoType::Integer:
    case DaoType::Long: {
        const qlonglong n = t.toLongLong(&ok);
        const qlonglong limit = column.type == DaoType::Integer ? 32767 : 2147483647;
        if (!ok || n > limit || n < -limit - 1)
            throw typeMismatch(line, piece, column);
        return n;
    }
    case DaoType::Single:
    case DaoType::Double:
    case DaoType::Currency: {
        QString number = t;
        number.replace(QLatin1Char(','), QLatin1Char('.'));
        const double d = number.toDouble(&ok);
        if (!ok)
            throw typeMismatch(line, piece, column);
        return d;
    }
    case DaoType::Date: {
        QDateTime dt = ToDateTime(t);
        if (!dt.isValid()) {
            const QDate d = QDate::fromString(t.left(10), QStringLiteral("dd.MM.yyyy"));
            const QTime time = t.size() > 10 ? QTime::fromString(t.mid(11), QStringLiteral("HH:mm:ss")) : QTime(0, 0);
            if (d.isValid() && time.isValid())
                dt = QDateTime(d, time);
        }
        if (!dt.isValid())
            throw typeMismatch(line, piece, column);
        return dt.toString(QStringLiteral("yyyy-MM-dd HH:mm:ss"));
    }
    default:
        return piece;
    }
}

QVector<ColumnInfo> targetColumns(const QString& table) {
    requireColumn(table);
    return tableColumns(table);
}

QStringList readLines(const QString& path) {
    QStringList lines;
    if (!readTextLines(path, lines))
        throw VeridonError(ErrorNumber::FileNotFound, Msg::ErrFileRead, {path});
    return lines;
}

// An INSERT of values into the first count columns, prepared once per count.
class Inserter {
public:
    Inserter(QString table, const QVector<ColumnInfo>& columns) : table_(std::move(table)), columns_(columns) {}

    void insert(const QVector<int>& columnIndexes, const QVariantList& values) {
        QString key;
        for (const int i : columnIndexes)
            key += QString::number(i) + QLatin1Char(',');
        auto it = statements_.find(key);
        if (it == statements_.end()) {
            QStringList names;
            QStringList marks;
            for (const int i : columnIndexes) {
                names << QLatin1Char('[') + columns_[i].name + QLatin1Char(']');
                marks << QStringLiteral("?");
            }
            it = statements_.insert(
                key, prepareSql(QStringLiteral("INSERT INTO [%1] (%2) VALUES (%3)")
                                    .arg(table_, names.join(QLatin1Char(',')), marks.join(QLatin1Char(',')))));
        }
        QSqlQuery& q = it.value();
        for (int i = 0; i < values.size(); ++i)
            q.bindValue(i, values[i]);
        execPrepared(q);
    }

private:
    QString table_;
    const QVector<ColumnInfo>& columns_;
    QHash<QString, QSqlQuery> statements_;
};

} // namespace

int auto_standard(const QString& path, const QString& table, const QString& separator, const QString& textDelimiter,
                  bool header) {
    int rows = 0;
    Progress& progress = appProgress();
    RunReported(QStringLiteral("auto_standard"), [&] {
        runCommittingBatch([&] {
            const QVector<ColumnInfo> columns = targetColumns(table);
            QStringList lines = readLines(path);
            int lineNo = 0;
            if (header && !lines.isEmpty()) {
                lines.removeFirst();
                ++lineNo;
            }
            Inserter inserter(table, columns);
            QVector<int> indexes;
            QVariantList values;
            for (const QString& line : std::as_const(lines)) {
                ++lineNo;
                if (line.isEmpty())
                    continue;
                progress.status(QStringLiteral("Importiere Datensatz: ") + QString::number(rows + 1));
                const QStringList pieces = separator.isEmpty() ? QStringList{line} : line.split(separator);
                if (pieces.size() > columns.size())
                    throw VeridonError(ErrorNumber::ColumnMissing, Msg::ErrTooManyFields,
                                       {lineNo, pieces.size(), table, columns.size()});
                indexes.clear();
                values.clear();
                for (int i = 0; i < pieces.size(); ++i) {
                    QString piece = pieces[i];
                    if (!piece.isEmpty() && piece.left(1) == textDelimiter)
                        piece.remove(0, 1);
                    if (!piece.isEmpty() && piece.right(1) == textDelimiter)
                        piece.chop(1);
                    indexes << i;
                    values << columnValue(columns[i], piece, lineNo);
                }
                inserter.insert(indexes, values);
                ++rows;
            }
        });
    });
    progress.status(QString());
    return rows;
}

int auto_FesteBreite(const QString& path, const QString& table, qint32 layoutId, bool /*header*/) {
    int rows = 0;
    Progress& progress = appProgress();
    RunReported(QStringLiteral("auto_FesteBreite"), [&] {
        runCommittingBatch([&] {
            const QVector<ColumnInfo> columns = targetColumns(table);
            struct Slice {
                int width;
                int column;
            };
            QVector<Slice> layout;
            QVector<int> indexes;
            {
                QSqlQuery q =
                    execSql(QStringLiteral("SELECT Breite, ZielFeld, FeldNr ") +
                            QStringLiteral("FROM zvbAutoImport_Spezifikation ") + QStringLiteral("WHERE ID = ") +
                            QString::number(layoutId) + QStringLiteral(" ") + QStringLiteral("ORDER BY FeldNr"));
                while (q.next()) {
                    const QString target = q.value(1).toString();
                    requireColumn(table, target);
                    layout.push_back({ToInteger(q.value(0)), indexOfColumn(columns, target)});
                    indexes << layout.back().column;
                }
            }
            if (layout.isEmpty())
                throw VeridonError(ErrorNumber::InvalidArgument, Msg::ErrNoLayoutFields, {layoutId});
            const QStringList lines = readLines(path);
            Inserter inserter(table, columns);
            QVariantList values;
            int lineNo = 0;
            for (const QString& line : lines) {
                ++lineNo;
                progress.status(QStringLiteral("Importiere Datensatz: ") + QString::number(lineNo));
                if (line.isEmpty())
                    return;
                values.clear();
                int position = 0;
                for (const Slice& slice : std::as_const(layout)) {
                    QString piece = line.mid(position, std::max(slice.width, 0));
                    // Only blanks are trimmed: a tab inside a fixed-width field is data.
                    while (piece.startsWith(QLatin1Char(' ')))
                        piece.remove(0, 1);
                    while (piece.endsWith(QLatin1Char(' ')))
                        piece.chop(1);
                    values << columnValue(columns[slice.column], piece, lineNo);
                    position += slice.width;
                }
                inserter.insert(indexes, values);
                ++rows;
            }
        });
    });
    progress.status(QString());
    return rows;
}
