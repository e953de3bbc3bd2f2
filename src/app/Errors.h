// SPDX-License-Identifier: Apache-2.0
// The failure carried from where something went wrong to the procedure that reports it. Like the
// run-time error report it holds a number and a description; the reporting procedure adds its name.
#pragma once

#include <QString>
#include <stdexcept>

class VeridonError : public std::runtime_error {
public:
    VeridonError(int number, const QString& description)
        : std::runtime_error(description.toStdString()), number_(number), description_(description) {}

    int number() const { return number_; }
    const QString& description() const { return description_; }

private:
    int number_;
    QString description_;
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
