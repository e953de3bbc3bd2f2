// SPDX-License-Identifier: Apache-2.0
#include "mdlImportNachbearbeitung.h"

#include "FieldLengths.h"
#include "ImportText.h"
#include "OcrCorrection.h"
#include "app/Database.h"
#include "app/Progress.h"
#include "app/mdlDB.h"
#include "app/mdlMessages.h"

#include <QVector>
#include <array>
#include <optional>

namespace {

// The columns the mapping reads, in the order of CardLineMapping::Raw.
enum Source { Typ, T4_L1, T4_L2, T4_L3, T4_L4, T4_L5, T4_L6, T5_L1, T5_L2, T5_L3, T5_L4, T5_L5, T5_L6, T5_L7 };
constexpr int sourceCount = T5_L7 + 1;
static_assert(sourceCount == std::tuple_size_v<CardLineMapping::Raw>);

// The columns it writes, in the order of its UPDATE.
enum Target { TYP, FORM_ID, STATE, NACHNAME, VORNAME, GEBDAT, PERSONAL_ID, INSTITUT_ID, CARD_ID, CARD_EXPIRY };
constexpr int targetCount = CARD_EXPIRY + 1;
static_assert(targetCount == std::tuple_size_v<CardLineMapping::Fields>);

using RawRow = CardLineMapping::Raw;
using Fields = CardLineMapping::Fields;

// Everything read once per run.
struct Context {
    const StateCodes& states;
    const QVector<int>& lengths; // by Target
};

QString cut(const Context& c, Target target, const QString& value) {
    return cutToLength(value, c.lengths[target]);
}

QString stateFrom(const Context& c, const QString& line) {
    return cut(c, STATE, ErmittleStaat(EntferneRandzeichen(line, 2), c.states));
}

QString nameFrom(const Context& c, Target target, const QString& line) {
    return cut(c, target, SmartCase(EntferneRandzeichen(line, 1)));
}

QString dateFrom(const Context& c, Target target, const QString& text) {
    return cut(c, target, repairCardDate(text));
}

// The other layout: one field per line, except date of birth with personal number and card number
// with expiry, which share a line and are told apart by the gap between them.
void mapLayout5(const Context& c, const RawRow& raw, Fields& f) {
    f[STATE] = stateFrom(c, raw[T5_L2]);
    f[NACHNAME] = nameFrom(c, NACHNAME, raw[T5_L3]);
    f[VORNAME] = nameFrom(c, VORNAME, raw[T5_L4]);
    QString first, second;
    TrenneAmGroesstenAbstand(EntferneRandzeichen(raw[T5_L5], 2), first, second);
    f[GEBDAT] = dateFrom(c, GEBDAT, first);
    f[PERSONAL_ID] = cut(c, PERSONAL_ID, removeBlanks(second));
    f[INSTITUT_ID] = cut(c, INSTITUT_ID, EntferneRandzeichen(raw[T5_L6], 2));
    TrenneAmGroesstenAbstand(EntferneRandzeichen(raw[T5_L7], 2), first, second);
    f[CARD_ID] = cut(c, CARD_ID, removeBlanks(first));
    f[CARD_EXPIRY] = dateFrom(c, CARD_EXPIRY, second);
}

// Layout 4 prints two fields on each of its last three lines. The first name shares its line with
// the date of birth, so a frame character before it is only found once the line is split.
void mapLayout4(const Context& c, const RawRow& raw, Fields& f) {
    f[STATE] = stateFrom(c, raw[T4_L2]);
    f[NACHNAME] = nameFrom(c, NACHNAME, raw[T4_L3]);
    QString first, second;
    TrenneAmGroesstenAbstand(EntferneRandzeichen(raw[T4_L4], 2), first, second);
    f[VORNAME] = nameFrom(c, VORNAME, first);
    f[GEBDAT] = dateFrom(c, GEBDAT, second);
    TrenneAmGroesstenAbstand(EntferneRandzeichen(raw[T4_L5], 2), first, second);
    f[PERSONAL_ID] = cut(c, PERSONAL_ID, removeBlanks(first));
    f[INSTITUT_ID] = cut(c, INSTITUT_ID, second);
    TrenneAmGroesstenAbstand(EntferneRandzeichen(raw[T4_L6], 2), first, second);
    f[CARD_ID] = cut(c, CARD_ID, removeBlanks(first));
    f[CARD_EXPIRY] = dateFrom(c, CARD_EXPIRY, second);
}

Fields mapRow(const Context& c, const RawRow& raw) {
    Fields f;
    const bool layout4 = raw[Typ] == QLatin1String("4");
    f[TYP] = layout4 ? QStringLiteral("4") : QStringLiteral("5");
    f[FORM_ID] = QStringLiteral("E-111N");
    if (layout4)
        mapLayout4(c, raw, f);
    else
        mapLayout5(c, raw, f);
    // A state that no known code fits is read again from T5_L1, the heading line in which the
    // reader finds the state code a second time. A card of layout 4 leaves that line empty, so its
    // unreadable state becomes empty and the checks ask the operator for it.
    if (!c.states.anyMatching(f[STATE]))
        f[STATE] = stateFrom(c, raw[T5_L1]);
    return f;
}

} // namespace

const QStringList& CardLineMapping::sourceColumns() {
    static const QStringList names{QStringLiteral("TYP"),   QStringLiteral("T4_L1"), QStringLiteral("T4_L2"),
                                   QStringLiteral("T4_L3"), QStringLiteral("T4_L4"), QStringLiteral("T4_L5"),
                                   QStringLiteral("T4_L6"), QStringLiteral("T5_L1"), QStringLiteral("T5_L2"),
                                   QStringLiteral("T5_L3"), QStringLiteral("T5_L4"), QStringLiteral("T5_L5"),
                                   QStringLiteral("T5_L6"), QStringLiteral("T5_L7")};
    return names;
}

const QStringList& CardLineMapping::targetColumns() {
    static const QStringList names{QStringLiteral("TYP"),         QStringLiteral("FORM_ID"),
                                   QStringLiteral("STATE"),       QStringLiteral("NACHNAME"),
                                   QStringLiteral("VORNAME"),     QStringLiteral("GEBDAT"),
                                   QStringLiteral("PERSONAL_ID"), QStringLiteral("INSTITUT_ID"),
                                   QStringLiteral("CARD_ID"),     QStringLiteral("CARD_EXPIRY")};
    return names;
}

CardLineMapping CardLineMapping::load() {
    CardLineMapping m;
    m.states_ = StateCodes::load();
    m.lengths_ = readFieldLengths(targetColumns());
    return m;
}

CardLineMapping::Fields CardLineMapping::map(const Raw& raw) const {
    return mapRow(Context{states_, lengths_}, raw);
}

int ImportNachbearbeitung() {
    int result = 0;
    std::optional<Transaction> transaction;
    RunReported(QStringLiteral("ImportNachbearbeitung"), [&] {
        transaction.emplace();
        const QString table = GetValuesTable();
        const CardLineMapping mapping = CardLineMapping::load();

        // The rows are read first and written afterwards, so the writing never changes what the
        // reading still has to visit.
        QVector<RawRow> rows;
        QVector<qint64> numbers;
        {
            QSqlQuery q = execSql(QStringLiteral("SELECT LfdNr, %1 FROM %2 WHERE [NeuImport]=true ORDER BY rowid")
                                      .arg(CardLineMapping::sourceColumns().join(QStringLiteral(", ")), table));
            while (q.next()) {
                numbers.push_back(q.value(0).toLongLong());
                RawRow raw;
                for (int i = 0; i < sourceCount; ++i)
                    raw[i] = q.value(i + 1).toString(); // null reads as ""
                rows.push_back(raw);
            }
        }

        QStringList sets;
        for (const QString& name : CardLineMapping::targetColumns())
            sets << QStringLiteral("[%1]=?").arg(name);
        QSqlQuery update =
            prepareSql(QStringLiteral("UPDATE %1 SET %2 WHERE LfdNr=?").arg(table, sets.join(QLatin1Char(','))));
        Progress& progress = appProgress();
        for (qsizetype n = 0; n < rows.size(); ++n) {
            progress.status(QStringLiteral("Bearbeite Datensatz: ") + QString::number(n + 1));
            progress.progress(n + 1, rows.size());
            const Fields fields = mapping.map(rows[n]);
            for (int t = 0; t < targetCount; ++t)
                update.bindValue(t, fields[t]);
            update.bindValue(targetCount, numbers[n]);
            execPrepared(update);
        }
        if (!rows.isEmpty())
            execSql(QStringLiteral("UPDATE %1 SET Workflow_Status=10 WHERE [Neuimport]=true").arg(table));
        result = 1;
    });
    // What was done before a failure stays, as after every reported failure; the import decides
    // what becomes of the new rows.
    if (transaction && !RunReported(QStringLiteral("ImportNachbearbeitung"), [&] { transaction->commit(); }))
        result = 0;
    appProgress().finished();
    return result;
}
