// SPDX-License-Identifier: Apache-2.0
// The values of the one record of zvbWerte in hand, as (column name, value text) pairs in table
// order. Filled from a query positioned on the row, read and changed by column name, and written
// back to the row with its running number LfdNr, each column converted back to its type.
#pragma once

#include <QSqlQuery>
#include <QString>
#include <QVector>

class ZVBWerteArray {
public:
    // Takes every column of the row the query is positioned on; a null becomes "". True when filled.
    bool Fill(const QSqlQuery& record);

    // Writes the held values into the row whose LfdNr is number (LfdNr itself is never written).
    // Texts as they are; dates null when empty; whole numbers 0 when not numeric; yes/no as a flag.
    // A column of another type is reported ("Msg_WerteArrayDatatype2") and keeps its value. A
    // missing row is reported ("Msg_WerteArrayNoRecord2") and nothing is written.
    void Save(qint32 number);
    // The same write-back with the messages of the "Speichern/Leeren" variant; used when records are
    // re-checked in bulk.
    void EmptyArray(qint32 number);
    // The write-back of EmptyArray for a caller that reports failures itself: throws VeridonError
    // (the pool's server gone, a database error) and keeps the values in hand.
    void WriteBackOrThrow(qint32 number);
    // Drops all entries.
    void Clear();

    // The held value of column name (any case); "" and a message when the list is empty or the
    // name unknown.
    QString GetValue(const QString& name) const;
    // Changes the held value of column name; a message when the list is empty or the name unknown.
    void SetValue(const QString& name, const QString& value);

    // Walk all entries in column order: GetFirst, then GetNext until it returns false.
    bool GetFirst(QString& name, QString& value);
    bool GetNext(QString& name, QString& value);
    qint16 GetCount() const { return qint16(names_.size()); }

    // The index of column name, or -1; no message.
    int indexOf(const QString& name) const;

private:
    void writeBack(qint32 number, bool emptying);

    QStringList names_;
    QStringList lowerNames_;
    QStringList values_;
    int cursor_ = 0; // 1-based index of the entry last returned by GetFirst/GetNext
};
