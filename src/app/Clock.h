// SPDX-License-Identifier: Apache-2.0
// The program's notion of "today" and "now". Every date rule (daily housekeeping, date ranges of the
// checks, backup clean-up, scan counter, log time stamps) reads it here, so tests can fix the date.
#pragma once

#include <QDate>
#include <QDateTime>

class Clock {
public:
    virtual ~Clock() = default;
    virtual QDateTime now() const = 0;
    QDate today() const { return now().date(); }
};

// The operating system's local time.
class SystemClock : public Clock {
public:
    QDateTime now() const override { return QDateTime::currentDateTime(); }
};

// A clock that stands still at a set moment until it is set again; for tests and reproducible runs.
class FixedClock : public Clock {
public:
    explicit FixedClock(QDateTime moment) : moment_(std::move(moment)) {}
    QDateTime now() const override { return moment_; }
    void set(QDateTime moment) { moment_ = std::move(moment); }

private:
    QDateTime moment_;
};

// The clock in use. Never null: the system clock until another is installed.
const Clock& appClock();
// Installs a clock (not owned); nullptr restores the system clock.
void setAppClock(const Clock* clock);
