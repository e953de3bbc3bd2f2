// SPDX-License-Identifier: Apache-2.0
#include "OperatorStats.h"

#include "app/mdlBackup.h"

#include "app/Clock.h"
#include "app/TextFile.h"
#include "app/mdlDB.h"
#include "app/mdlMessages.h"
#include "model/FormModel.h"

#include <QDir>
#include <QHash>
#include <QLockFile>
#include <QRegularExpression>
#include <algorithm>

namespace {

constexpr qint64 longestRecordSeconds = 30 * 60;
const QString logSource = QStringLiteral("OperatorStats");

// The record in hand as it was taken; one per thread, like the values in hand.
struct TakenRecord {
    QHash<QString, QString> values; // form fields (satznummer > 0) only
    QDateTime takenAt;
    qint64 keystrokes = 0;
};

TakenRecord& taken() {
    thread_local TakenRecord record;
    return record;
}

// The form fields of the values in hand with their values.
QHash<QString, QString> formFieldValues() {
    QHash<QString, QString> values;
    QString name, value;
    for (bool more = WerteArray().GetFirst(name, value); more; more = WerteArray().GetNext(name, value)) {
        const FieldDefinition* field = FelderArray().find(name);
        if (field && field->satznummer > 0)
            values.insert(name, value);
    }
    return values;
}

QString fileName(qint16 workstation) {
    return QStringLiteral("arbeitsplatz_%1.txt").arg(workstation);
}

// The keys of the file, in the order they are written.
struct Entry {
    const char* key;
    qint64 OperatorDay::*member;
};
constexpr Entry entries[] = {
    {"Uebergeben", &OperatorDay::handedOver},
    {"Verworfen", &OperatorDay::discarded},
    {"FelderKorrigiert", &OperatorDay::fieldsCorrected},
    {"Tastenanschlaege", &OperatorDay::keystrokes},
    {"Arbeitssekunden", &OperatorDay::workSeconds},
};

// Reads the figures in path into day (unknown keys are ignored, unreadable or negative values
// count as 0 and are logged). A missing file leaves day at 0 and is no fault.
void readFile(const QString& path, OperatorDay& day) {
    QStringList lines;
    if (!readTextLines(path, lines))
        return;
    for (const QString& line : std::as_const(lines)) {
        const QString key = line.section(QLatin1Char('='), 0, 0).trimmed();
        for (const Entry& e : entries) {
            if (key != QLatin1String(e.key))
                continue;
            bool ok = false;
            const qint64 value = line.section(QLatin1Char('='), 1).trimmed().toLongLong(&ok);
            if (!ok || value < 0)
                WriteLog(logSource,
                         QStringLiteral("%1: '%2' ist kein Zählerstand, gezählt wird ab 0.").arg(path, line));
            day.*e.member = ok && value >= 0 ? value : 0;
        }
    }
}

QStringList linesOf(const OperatorDay& day) {
    QStringList lines{QStringLiteral("Arbeitsplatz=%1").arg(day.workstation),
                      QStringLiteral("Datum=") + day.day.toString(QStringLiteral("dd.MM.yyyy"))};
    for (const Entry& e : entries)
        lines << QLatin1String(e.key) + QLatin1Char('=') + QString::number(day.*e.member);
    return lines;
}

} // namespace

double OperatorDay::keystrokesPerRecord() const {
    const qint64 records = handedOver + discarded;
    return records > 0 ? double(keystrokes) / double(records) : 0.0;
}

double OperatorDay::recordsPerHour() const {
    return workSeconds > 0 ? double(handedOver) * 3600.0 / double(workSeconds) : 0.0;
}

void beginRecordWork() {
    TakenRecord& record = taken();
    record.values = formFieldValues();
    record.takenAt = appClock().now();
    record.keystrokes = 0;
}

void noteKeystroke() {
    ++taken().keystrokes;
}

RecordWork recordWork() {
    const TakenRecord& record = taken();
    RecordWork work;
    const QHash<QString, QString> now = formFieldValues();
    for (auto it = now.constBegin(); it != now.constEnd(); ++it)
        if (record.values.value(it.key()) != it.value())
            ++work.fieldsCorrected;
    work.keystrokes = record.keystrokes;
    if (record.takenAt.isValid())
        work.seconds = std::clamp<qint64>(record.takenAt.secsTo(appClock().now()), 0, longestRecordSeconds);
    return work;
}

bool keepRecordWork(const RecordWork& work, bool handedOver) {
    taken() = TakenRecord();
    if (!IsBackupEnabled())
        return false;
    const QString folder = GetBackupDir(BackupKind::Stats, true);
    if (folder.isEmpty()) {
        WriteLog(logSource, QStringLiteral("Der Ordner für die Statistik kann nicht angelegt werden."));
        return false;
    }
    OperatorDay day;
    day.day = appClock().today();
    day.workstation = GetKorrID();
    const QString path = folder + fileName(day.workstation);
    // Two programs of one workstation (the windows and the command line) must not lose each
    // other's counts: the file is read, changed and written under a lock.
    QLockFile lock(path + QStringLiteral(".lock"));
    if (!lock.tryLock(2000)) {
        WriteLog(logSource, QStringLiteral("%1 ist gesperrt; der Beleg wird nicht gezählt.").arg(path));
        return false;
    }
    readFile(path, day);
    if (handedOver) {
        ++day.handedOver;
        day.fieldsCorrected += work.fieldsCorrected;
    } else {
        ++day.discarded;
    }
    day.keystrokes += work.keystrokes;
    day.workSeconds += work.seconds;
    if (!writeTextLines(path, linesOf(day))) {
        WriteLog(logSource,
                 QStringLiteral("%1 kann nicht geschrieben werden; der Beleg wird nicht gezählt.").arg(path));
        return false;
    }
    return true;
}

QVector<OperatorDay> readOperatorDays(int days) {
    QVector<OperatorDay> found;
    const QDate today = appClock().today();
    static const QRegularExpression name(QStringLiteral("^arbeitsplatz_(\\d{1,5})\\.txt$"));
    for (int back = days - 1; back >= 0; --back) {
        const QDate date = today.addDays(-back);
        const QString folder = GetBackupDir(BackupKind::Stats, false, date);
        if (folder.isEmpty())
            continue;
        QVector<OperatorDay> ofDay;
        for (const QString& file : QDir(folder).entryList(QDir::Files)) {
            const QRegularExpressionMatch m = name.match(file);
            if (!m.hasMatch())
                continue;
            OperatorDay day;
            day.day = date;
            day.workstation = qint16(m.captured(1).toInt());
            readFile(folder + file, day);
            ofDay << day;
        }
        std::sort(ofDay.begin(), ofDay.end(),
                  [](const OperatorDay& a, const OperatorDay& b) { return a.workstation < b.workstation; });
        found << ofDay;
    }
    return found;
}
