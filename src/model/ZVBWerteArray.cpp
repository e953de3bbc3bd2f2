// SPDX-License-Identifier: Apache-2.0
#include "ZVBWerteArray.h"

#include "app/ColumnInfo.h"
#include "app/Database.h"
#include "app/mdlDB.h"
#include "app/mdlMessages.h"

#include <QDate>
#include <QSqlRecord>

namespace {

// The columns of the values table and one prepared UPDATE for them, kept while the connection
// lives: bulk re-checks write many rows with the same statement.
struct WriteStatement {
    quint64 generation = 0;
    QVector<ColumnInfo> columns;
    QVector<int> written; // indexes into columns, in the order of the statement's values
    QSqlQuery update;
};

WriteStatement& writeStatement() {
    thread_local WriteStatement statement;
    if (statement.generation != connectionGeneration() || statement.columns.isEmpty()) {
        statement = WriteStatement();
        statement.columns = tableColumns(GetValuesTable());
        QStringList sets;
        for (int i = 0; i < statement.columns.size(); ++i) {
            if (statement.columns[i].name.compare(QLatin1String("LfdNr"), Qt::CaseInsensitive) == 0)
                continue;
            statement.written << i;
            sets << QStringLiteral("[%1]=?").arg(statement.columns[i].name);
        }
        statement.update = prepareSql(
            QStringLiteral("UPDATE %1 SET %2 WHERE LfdNr=?").arg(GetValuesTable(), sets.join(QLatin1Char(','))));
        statement.generation = connectionGeneration();
    }
    return statement;
}

bool isNumeric(const QString& text) {
    bool ok = false;
    QString t = text.trimmed();
    t.replace(QLatin1Char(','), QLatin1Char('.'));
    t.toDouble(&ok);
    return ok;
}

// A held date text as stored: "DD.MM.YYYY" or "YYYY-MM-DD", with or without a time.
QVariant dateValue(const QString& text) {
    if (text.trimmed().isEmpty())
        return QVariant();
    const QString t = text.trimmed();
    QDateTime dt = ToDateTime(t);
    if (!dt.isValid()) {
        const QDate d = QDate::fromString(t.left(10), QStringLiteral("dd.MM.yyyy"));
        if (d.isValid())
            dt = QDateTime(d, t.size() > 10 ? QTime::fromString(t.mid(11), QStringLiteral("HH:mm:ss")) : QTime(0, 0));
    }
    if (!dt.isValid())
        throw VeridonError(ErrorNumber::TypeMismatch, Msg::ErrTypeMismatchValue, {text});
    return dt.toString(QStringLiteral("yyyy-MM-dd HH:mm:ss"));
}

} // namespace

bool ZVBWerteArray::Fill(const QSqlQuery& record) {
    const QSqlRecord r = record.record();
    // Records of one table come one after another: keep the names when they are the same.
    bool sameColumns = r.count() == names_.size();
    for (int i = 0; sameColumns && i < r.count(); ++i)
        sameColumns = r.fieldName(i) == names_[i];
    if (!sameColumns) {
        names_.clear();
        lowerNames_.clear();
        for (int i = 0; i < r.count(); ++i) {
            names_ << r.fieldName(i);
            lowerNames_ << r.fieldName(i).toLower();
        }
    }
    values_.clear();
    values_.reserve(r.count());
    cursor_ = 0;
    for (int i = 0; i < r.count(); ++i) {
        const QVariant v = record.value(i);
        values_ << (v.isNull() ? QString() : v.toString());
    }
    return true;
}

void ZVBWerteArray::Clear() {
    names_.clear();
    lowerNames_.clear();
    values_.clear();
    cursor_ = 0;
}

int ZVBWerteArray::indexOf(const QString& name) const {
    return int(lowerNames_.indexOf(name.toLower()));
}

QString ZVBWerteArray::GetValue(const QString& name) const {
    QString result;
    RunReported(QStringLiteral("zvbWerteArray.GetValue"), [&] {
        if (names_.isEmpty()) {
            ShowMessage(Msg::WerteArrayEmpty, MsgBox::OKOnly);
            return;
        }
        const int i = indexOf(name);
        if (i < 0) {
            ShowMessage(Msg::WerteArrayNoEntry, MsgBox::OKOnly, {name});
            return;
        }
        result = values_[i];
    });
    return result;
}

void ZVBWerteArray::SetValue(const QString& name, const QString& value) {
    if (names_.isEmpty()) {
        ShowMessage(Msg::WerteArrayEmpty2, MsgBox::OKOnly);
        return;
    }
    const int i = indexOf(name);
    if (i < 0) {
        ShowMessage(Msg::WerteArrayNoEntry2, MsgBox::OKOnly, {name});
        return;
    }
    values_[i] = value;
}

bool ZVBWerteArray::GetFirst(QString& name, QString& value) {
    if (names_.isEmpty())
        return false;
    cursor_ = 1;
    name = names_[0];
    value = values_[0];
    return true;
}

bool ZVBWerteArray::GetNext(QString& name, QString& value) {
    if (cursor_ >= names_.size())
        return false;
    ++cursor_;
    name = names_[cursor_ - 1];
    value = values_[cursor_ - 1];
    return true;
}

void ZVBWerteArray::Save(qint32 number) {
    RunReported(QStringLiteral("zvbWerteArray.Save"), [&] { writeBack(number, false); });
}

void ZVBWerteArray::EmptyArray(qint32 number) {
    RunReported(QStringLiteral("zvbWerteArray.EmptyArray"), [&] { writeBack(number, true); });
}

void ZVBWerteArray::WriteBackOrThrow(qint32 number) {
    writeBack(number, true);
}

void ZVBWerteArray::writeBack(qint32 number, bool emptying) {
    WriteStatement& statement = writeStatement();
    QSqlQuery& update = statement.update;
    // A column that is not in hand, or whose type cannot be written, keeps its stored value: the
    // current value is bound back.
    QVector<int> keep;
    QStringList unsupported;
    int position = 0;
    for (const int c : std::as_const(statement.written)) {
        const ColumnInfo& column = statement.columns[c];
        // Values filled from the whole row sit at the column's own index.
        const int held =
            c < names_.size() && names_[c].compare(column.name, Qt::CaseInsensitive) == 0 ? c : indexOf(column.name);
        if (held < 0) {
            keep << position;
            update.bindValue(position++, QVariant());
            continue;
        }
        const QString& text = values_[held];
        QVariant value;
        switch (column.type) {
        case DaoType::Text:
        case DaoType::Memo:
            value = text;
            break;
        case DaoType::Date:
            value = dateValue(text);
            break;
        case DaoType::Long:
            value = isNumeric(text) ? ToLong(text) : 0;
            break;
        case DaoType::Integer:
            value = isNumeric(text) ? int(ToInteger(text)) : 0;
            break;
        case DaoType::Boolean:
            value = ToFlag(text, false) ? 1 : 0;
            break;
        default:
            unsupported << column.name;
            keep << position;
            break;
        }
        update.bindValue(position++, value);
    }
    update.bindValue(position, number);
    const auto reportMissing = [&] {
        ShowMessage(emptying ? Msg::WerteArrayNoRecord : Msg::WerteArrayNoRecord2, MsgBox::OKOnly, {number});
    };
    if (!keep.isEmpty()) {
        QSqlQuery current = execSql(QStringLiteral("SELECT * FROM %1 WHERE LfdNr=?").arg(GetValuesTable()), {number});
        if (!current.next())
            return reportMissing();
        for (const int p : std::as_const(keep))
            update.bindValue(p, current.value(statement.written[p]));
        for (const QString& name : std::as_const(unsupported))
            ShowMessage(emptying ? Msg::WerteArrayDatatype : Msg::WerteArrayDatatype2, MsgBox::OKOnly, {name});
    }
    execPrepared(update);
    if (update.numRowsAffected() == 0)
        reportMissing();
}
