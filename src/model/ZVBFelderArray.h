// SPDX-License-Identifier: Apache-2.0
// The field definitions of the form (table ZVBFelder), loaded once at start and asked by field name,
// so the checks, the main window and the image display never read the table themselves.
#pragma once

#include <QHash>
#include <QString>
#include <QVector>

struct FieldDefinition {
    QString name;
    qint16 t4x = 0, t4y = 0, t4dx = 0, t4dy = 0; // region on a form of layout 4
    qint16 t5x = 0, t5y = 0, t5dx = 0, t5dy = 0; // region on a form of any other layout
    qint16 laenge = 0;
    qint16 satznummer = 0;
    qint16 gelbeFelder = 0; // -1 true, 0 false
    qint16 pruefe = 0;
    QString pruefungen;
    QString formatierung;
    QString fehlertextname;
    qint16 okFarbe = 1;
};

class ZVBFelderArray {
public:
    // Loads table ZVBFelder in table order, replacing what was held. A null in a column without a
    // default stops the load there (reported); the definitions read so far stay.
    void Fill();
    // Drops all definitions.
    void EmptyArray();
    // True when the last Fill read the whole table and found at least one definition. Checks fail
    // closed on false: a record checked against half the definitions must never pass.
    bool IsComplete() const { return complete_; }

    // True when a definition of that name (any case) is held. Reports nothing.
    bool Exists(const QString& name) const;

    // The getters below report "Msg_FelderArrayEmpty" or "Msg_FelderArrayNoEntry" and answer 0 or
    // "" when the list is empty or the name unknown. Names compare without regard to case; a name
    // held twice answers with its first row. Only layout 4 selects the T4_ region.
    qint16 GetX(const QString& name, qint16 layout) const;
    qint16 GetY(const QString& name, qint16 layout) const;
    qint16 GetDX(const QString& name, qint16 layout) const;
    qint16 GetDY(const QString& name, qint16 layout) const;
    qint16 GetLaenge(const QString& name) const;
    qint16 GetSatznummer(const QString& name) const;
    qint16 GetGelbeFelder(const QString& name) const;
    qint16 GetPruefe(const QString& name) const;
    QString GetPruefungen(const QString& name) const;
    QString GetFormatierung(const QString& name) const;
    QString GetFehlertextname(const QString& name) const;
    qint16 GetokFarbe(const QString& name) const;

    qint16 count() const { return qint16(fields_.size()); }
    const QVector<FieldDefinition>& definitions() const { return fields_; }
    // The definition of name without any message; nullptr when not held.
    const FieldDefinition* find(const QString& name) const;

private:
    // The definition for a getter: reports and returns nullptr when there is none.
    const FieldDefinition* lookup(const QString& name) const;

    QVector<FieldDefinition> fields_;
    bool complete_ = false;
    QHash<QString, int> index_; // lower-cased name -> first row
};
