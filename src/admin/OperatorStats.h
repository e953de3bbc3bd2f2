// SPDX-License-Identifier: Apache-2.0
// Operator statistics: for each workstation and day, the records handed over and discarded, the
// fields the operator corrected, the keys typed and the time spent with records on screen. They are
// kept in the day's backup folder "stats/" (which the backup clean-up never empties), one small
// text file per workstation, "arbeitsplatz_<n>.txt", of "Name=Wert" lines a person can read.
//
// Nothing here may stop the operator's work: when backup is off the figures are not kept, and a
// file that cannot be locked, read or written costs that record's figures and a line in the log,
// never a message. The file is replaced atomically, so a crash leaves the previous figures.
#pragma once

#include <QDate>
#include <QString>
#include <QVector>

// One workstation's figures of one day.
struct OperatorDay {
    QDate day;
    qint16 workstation = 0;
    qint64 handedOver = 0;
    qint64 discarded = 0;
    qint64 fieldsCorrected = 0; // of the records handed over
    qint64 keystrokes = 0;      // typed into the fields of records handed over or discarded
    qint64 workSeconds = 0;     // records on screen, at most 30 minutes per record

    // Keystrokes per record handed over or discarded; 0 without records.
    double keystrokesPerRecord() const;
    // Records handed over per hour on screen; 0 without time.
    double recordsPerHour() const;
};

// What the work on the record in hand has cost so far.
struct RecordWork {
    qint64 fieldsCorrected = 0;
    qint64 keystrokes = 0;
    qint64 seconds = 0;
};

// A record was taken into the values in hand: remembers its form fields' values, the moment and
// starts counting keys from 0.
void beginRecordWork();

// One key typed into a field of the record on screen.
void noteKeystroke();

// The work on the record in hand until now: the form fields whose value differs from when it was
// taken, the keys typed and the seconds since it was taken (at most 30 minutes, so a record left
// on screen over a break does not count the break).
RecordWork recordWork();

// Adds work to today's figures of this workstation (GetKorrID()) as a record handed over or, with
// handedOver false, discarded (whose corrections are not counted). Returns true when the figures
// were written; false, logged as "OperatorStats", when backup is off, the folder cannot be made,
// the file is locked by another process for two seconds or cannot be written.
bool keepRecordWork(const RecordWork& work, bool handedOver);

// The figures of the days from today - (days - 1) to today, of every workstation that has a file,
// ordered by day and workstation. A value that cannot be read counts as 0 and is logged.
QVector<OperatorDay> readOperatorDays(int days);
