// SPDX-License-Identifier: Apache-2.0
// The failure carried from where something went wrong to the procedure that reports it. Like the
// run-time error report it holds a number and a description; the reporting procedure adds its name.
#pragma once

#include "MessageIds.h"

#include <QString>
#include <QVariantList>
#include <stdexcept>

class VeridonError : public std::runtime_error {
public:
    // Who described the failure: the program (in German, with one of the numbers below) or the
    // database engine (its own code and text).
    enum class Origin { Program, Database };

    VeridonError(int number, const QString& description, Origin origin = Origin::Program)
        : std::runtime_error(description.toStdString()), number_(number), description_(description), origin_(origin) {}

    // A failure described by a message of the program's vocabulary: the description (what the log
    // keeps and what() says) is the German default with values filled in; a report shows the
    // message in the current language.
    VeridonError(int number, const MessageText& message, const QVariantList& values = {})
        : VeridonError(number, germanText(message, values)) {
        message_ = &message;
        values_ = values;
    }

    int number() const { return number_; }
    // The message and its values when the failure was described by one, else nullptr.
    const MessageText* message() const { return message_; }
    const QVariantList& values() const { return values_; }

    // The same failure with every occurrence of from in its description and its text values
    // replaced by to.
    VeridonError replaced(const QString& from, const QString& to) const {
        VeridonError e = *this;
        e.description_.replace(from, to);
        for (QVariant& value : e.values_)
            if (value.typeId() == QMetaType::QString)
                value = value.toString().replace(from, to);
        return e;
    }
    const QString& description() const { return description_; }
    Origin origin() const { return origin_; }

private:
    static QString germanText(const MessageText& message, const QVariantList& values) {
        QString text = message.text().replace(QLatin1String("\\n"), QLatin1String("\n"));
        for (qsizetype i = 0; i < values.size(); ++i)
            text.replace(QLatin1Char('%') + QString::number(i + 1), values[i].toString());
        return text;
    }

    int number_;
    QString description_;
    Origin origin_;
    const MessageText* message_ = nullptr;
    QVariantList values_;
};

// Error numbers of failures the program raises itself (database errors carry SQLite's codes).
namespace ErrorNumber {
inline constexpr int FileNotFound = 53;
inline constexpr int PathNotFound = 76;
inline constexpr int DiskFull = 61;
inline constexpr int DeviceIO = 57;
inline constexpr int TypeMismatch = 13;
inline constexpr int Overflow = 6;
inline constexpr int InvalidArgument = 5;
inline constexpr int DatabaseMissing = 3024;
inline constexpr int TableMissing = 3078;
inline constexpr int ColumnMissing = 3265;
inline constexpr int SqlError = 3075;
} // namespace ErrorNumber
