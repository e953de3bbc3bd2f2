// SPDX-License-Identifier: Apache-2.0
#include "ZVBFelderArray.h"

#include "app/Database.h"
#include "app/mdlDB.h"
#include "app/mdlMessages.h"

#include <QSqlRecord>

namespace {

// A column that must hold a value; its null is an error of the master data.
qint16 required(const QSqlQuery& q, int column, const QString& fieldName) {
    const QVariant v = q.value(column);
    if (v.isNull())
        throw VeridonError(94, Msg::ErrNullField, {fieldName, q.record().fieldName(column)});
    return ToInteger(v);
}

} // namespace

void ZVBFelderArray::Fill() {
    fields_.clear();
    index_.clear();
    complete_ = RunReported(QStringLiteral("zvbFelderArray.Fill"), [this] {
        QSqlQuery q = execSql(QStringLiteral(
            "SELECT VarName, T4_x, T4_y, T4_dx, T4_dy, T5_x, T5_y, T5_dx, T5_dy, VarLng, satznummer, gelbefelderjn,"
            " pruefe, pruefungen, formatierung, Fehlertextname, OkFarbe FROM ZVBFelder ORDER BY rowid"));
        while (q.next()) {
            FieldDefinition f;
            if (q.value(0).isNull())
                throw VeridonError(94, Msg::ErrNullVarName);
            f.name = q.value(0).toString();
            f.t4x = required(q, 1, f.name);
            f.t4y = required(q, 2, f.name);
            f.t4dx = required(q, 3, f.name);
            f.t4dy = required(q, 4, f.name);
            f.t5x = required(q, 5, f.name);
            f.t5y = required(q, 6, f.name);
            f.t5dx = required(q, 7, f.name);
            f.t5dy = required(q, 8, f.name);
            f.laenge = required(q, 9, f.name);
            f.satznummer = ToInteger(q.value(10));
            f.gelbeFelder = ToFlag(q.value(11), false) ? -1 : 0;
            f.pruefe = ToInteger(q.value(12));
            f.pruefungen = q.value(13).toString();
            f.formatierung = q.value(14).toString();
            f.fehlertextname = q.value(15).toString();
            f.okFarbe = q.value(16).isNull() ? qint16(1) : ToInteger(q.value(16));
            fields_.push_back(f);
        }
    });
    complete_ = complete_ && !fields_.isEmpty();
    // A name held twice answers with its first row.
    for (int i = 0; i < fields_.size(); ++i) {
        const QString key = fields_[i].name.toLower();
        if (!index_.contains(key))
            index_.insert(key, i);
    }
}

void ZVBFelderArray::EmptyArray() {
    complete_ = false;
    fields_.clear();
    index_.clear();
}

const FieldDefinition* ZVBFelderArray::find(const QString& name) const {
    const auto it = index_.constFind(name.toLower());
    return it == index_.constEnd() ? nullptr : &fields_[it.value()];
}

bool ZVBFelderArray::Exists(const QString& name) const {
    return find(name) != nullptr;
}

const FieldDefinition* ZVBFelderArray::lookup(const QString& name) const {
    if (fields_.isEmpty()) {
        ShowMessage(Msg::FelderArrayEmpty, MsgBox::OKOnly);
        return nullptr;
    }
    const FieldDefinition* f = find(name);
    if (!f)
        ShowMessage(Msg::FelderArrayNoEntry, MsgBox::OKOnly, {name});
    return f;
}

#define FIELD_GETTER(Getter, Type, expr)                                                                               \
    Type ZVBFelderArray::Getter(const QString& name) const {                                                           \
        const FieldDefinition* f = lookup(name);                                                                       \
        return f ? Type(expr) : Type();                                                                                \
    }
#define REGION_GETTER(Getter, t4, t5)                                                                                  \
    qint16 ZVBFelderArray::Getter(const QString& name, qint16 layout) const {                                          \
        const FieldDefinition* f = lookup(name);                                                                       \
        return f ? (layout == 4 ? f->t4 : f->t5) : qint16(0);                                                          \
    }

REGION_GETTER(GetX, t4x, t5x)
REGION_GETTER(GetY, t4y, t5y)
REGION_GETTER(GetDX, t4dx, t5dx)
REGION_GETTER(GetDY, t4dy, t5dy)
FIELD_GETTER(GetLaenge, qint16, f->laenge)
FIELD_GETTER(GetSatznummer, qint16, f->satznummer)
FIELD_GETTER(GetGelbeFelder, qint16, f->gelbeFelder)
FIELD_GETTER(GetPruefe, qint16, f->pruefe)
FIELD_GETTER(GetPruefungen, QString, f->pruefungen)
FIELD_GETTER(GetFormatierung, QString, f->formatierung)
FIELD_GETTER(GetFehlertextname, QString, f->fehlertextname)
FIELD_GETTER(GetokFarbe, qint16, f->okFarbe)

#undef FIELD_GETTER
#undef REGION_GETTER
