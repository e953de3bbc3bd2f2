// SPDX-License-Identifier: Apache-2.0
// Lets GoogleTest print Qt texts readably in failure messages.
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <ostream>

inline void PrintTo(const QString& s, std::ostream* os) {
    *os << '"' << s.toStdString() << '"';
}
inline void PrintTo(const QStringList& list, std::ostream* os) {
    *os << '[' << list.join(QStringLiteral("|")).toStdString() << ']';
}
inline void PrintTo(const QByteArray& bytes, std::ostream* os) {
    *os << '"' << bytes.toPercentEncoding(" ;#:.,-_()[]<>=/'!?").toStdString() << '"';
}
