// SPDX-License-Identifier: Apache-2.0
#include "mdlImport.h"

#include "AlternativesImport.h"
#include "FieldLengths.h"
#include "ImportFile.h"
#include "ImportText.h"
#include "OcrCorrection.h"
#include "ResultLine.h"
#include "app/Clock.h"
#include "app/ColumnInfo.h"
#include "app/Database.h"
#include "app/Progress.h"
#include "app/Settings.h"
#include "app/TextFile.h"
#include "app/mdlBackup.h"
#include "app/mdlDB.h"
#include "app/mdlMessages.h"
#include "mdlImportNachbearbeitung.h"

#include <QDate>
#include <QFile>
#include <QFileInfo>
#include <array>
#include <cstring>
#include <optional>

namespace {

QString procedureName() {
    return QStringLiteral("ImportZVBWerte()");
}

// How one column of the values table is filled from its part of a line; worked out once per
// import.
struct ColumnPlan {
    QString name;
    DaoType type = DaoType::Text;
    int size = 0;               // defined size of a text column, 0 for none
    int length = NoFieldLength; // GetLaenge of the column
    bool escapes = true;        // escape codes are resolved (not in BMPName, which is a path)
    int bindPosition = -1;      // place in the INSERT; -1: read from the file but never written
    QVector<OcrRule> rules;
};

struct ImportPlan {
    QVector<ColumnPlan> columns; // every column the file fills, in table order
    int bmpName = -1;            // index of BMPName in columns
    int workflowStatus = -1;     // index of Workflow_Status in columns
    int bound = 0;               // number of bound values of the INSERT
    std::optional<RowInserter> insert;
    CardLineMapping mapping;
    std::array<int, std::tuple_size_v<CardLineMapping::Raw>> sources{};    // index in columns, -1: none
    std::array<int, std::tuple_size_v<CardLineMapping::Fields>> targets{}; // index in columns, -1: none
    // One line's values being built, kept to reuse their memory.
    QVector<QString> texts;
    QVector<bool> present;
    QVector<ResultPart> parts;
};

int columnIndex(const QVector<ColumnPlan>& columns, const QString& name) {
    for (int i = 0; i < columns.size(); ++i)
        if (columns[i].name.compare(name, Qt::CaseInsensitive) == 0)
            return i;
    return -1;
}

// How the file's lines become rows of table, with the card-line mapping read beforehand. Throws
// VeridonError when the table or the master data cannot be read.
ImportPlan planImport(const QString& table, CardLineMapping mapping) {
    const QVector<ColumnInfo> info = tableColumns(table);
    requireColumn(table, QStringLiteral("Neuimport"));
    const OcrRules rules = OcrRules::load();
    // The table's last column is never filled from the file.
    QStringList names;
    for (int i = 0; i + 1 < info.size(); ++i)
        names << info[i].name;
    const QVector<int> lengths = readFieldLengths(names);

    ImportPlan plan;
    plan.mapping = std::move(mapping);
    QStringList insertColumns;
    for (int i = 0; i < names.size(); ++i) {
        ColumnPlan c;
        c.name = names[i];
        c.type = info[i].type;
        c.size = info[i].type == DaoType::Text ? info[i].size : 0;
        c.length = lengths[i];
        c.rules = rules.forColumn(c.name);
        if (c.name.compare(QLatin1String("BMPName"), Qt::CaseInsensitive) == 0) {
            c.escapes = false;
            plan.bmpName = i;
        }
        // The running number is the database's to give, and Neuimport is set for every new row.
        if (!info[i].primaryKey && c.name.compare(QLatin1String("Neuimport"), Qt::CaseInsensitive) != 0) {
            c.bindPosition = int(insertColumns.size());
            insertColumns << QLatin1Char('[') + c.name + QLatin1Char(']');
        }
        plan.columns.push_back(c);
    }
    plan.workflowStatus = columnIndex(plan.columns, QStringLiteral("Workflow_Status"));
    for (int k = 0; k < int(plan.sources.size()); ++k)
        plan.sources[size_t(k)] = columnIndex(plan.columns, CardLineMapping::sourceColumns()[k]);
    for (int k = 0; k < int(plan.targets.size()); ++k)
        plan.targets[size_t(k)] = columnIndex(plan.columns, CardLineMapping::targetColumns()[k]);
    plan.texts.resize(plan.columns.size());
    plan.present.resize(plan.columns.size());
    plan.bound = int(insertColumns.size());
    QStringList marks(plan.bound, QStringLiteral("?"));
    // The row is written once, finished: the file's whole import is one transaction, so a row needs
    // no mark of its own until the commit. Only a failure part-way marks the rows written so far.
    insertColumns << QStringLiteral("[Neuimport]");
    marks << QStringLiteral("FALSE");
    plan.insert.emplace(QStringLiteral("INSERT INTO %1 (%2) VALUES (%3)")
                            .arg(table, insertColumns.join(QLatin1Char(',')), marks.join(QLatin1Char(','))));
    return plan;
}

[[noreturn]] void typeMismatch(const ColumnPlan& c, const QString& text, qint64 lineNumber) {
    throw VeridonError(ErrorNumber::TypeMismatch, Msg::ErrImportValue, {lineNumber, text, c.name});
}

bool parseNumber(const QString& text, double& number) {
    bool ok = false;
    number = QString(text).replace(QLatin1Char(','), QLatin1Char('.')).toDouble(&ok);
    return ok;
}

// The text of a part as the column's type stores it. Text is stored as it is; in every other
// column an empty part is null. A text the type cannot hold ends the import with a run-time error
// naming the line and the column.
QVariant storedValue(const ColumnPlan& c, const QString& text, qint64 lineNumber) {
    if (c.type == DaoType::Text || c.type == DaoType::Memo)
        return text.isNull() ? QStringLiteral("") : text; // a null text would be bound as NULL
    const QString t = trimBlanks(text);
    if (t.isEmpty())
        return QVariant();
    double number = 0;
    switch (c.type) {
    case DaoType::Integer:
    case DaoType::Long: {
        // A plain whole number in range, nearly every value, needs no decimal conversion.
        bool ok = false;
        const qint64 whole = t.toLongLong(&ok);
        const qint64 limit = c.type == DaoType::Integer ? 32767 : 2147483647;
        if (ok && whole >= -limit - 1 && whole <= limit)
            return int(whole);
        try {
            return c.type == DaoType::Integer ? QVariant(int(ToInteger(t))) : QVariant(ToLong(t));
        } catch (const VeridonError&) {
            typeMismatch(c, text, lineNumber);
        }
    }
    case DaoType::Boolean: {
        const QString word = t.toLower();
        if (word == QLatin1String("false") || word == QLatin1String("falsch") || word == QLatin1String("no") ||
            word == QLatin1String("nein"))
            return 0;
        if (word == QLatin1String("true") || word == QLatin1String("wahr") || word == QLatin1String("yes") ||
            word == QLatin1String("ja"))
            return 1;
        if (!parseNumber(t, number))
            typeMismatch(c, text, lineNumber);
        return number != 0.0 ? 1 : 0;
    }
    case DaoType::Currency:
    case DaoType::Single:
    case DaoType::Double:
        if (!parseNumber(t, number))
            typeMismatch(c, text, lineNumber);
        return number;
    case DaoType::Date: {
        QDateTime at = ToDateTime(t);
        if (!at.isValid())
            at = QDateTime(QDate::fromString(t, QStringLiteral("dd.MM.yyyy")), QTime(0, 0));
        if (!at.isValid())
            typeMismatch(c, text, lineNumber);
        return at.toString(QStringLiteral("yyyy-MM-dd HH:mm:ss"));
    }
    default:
        return t.toLatin1();
    }
}

// Takes one line into a new row: its parts as the import stores them, then the card lines mapped
// into the form's fields, the row waiting for correction (state 10) - written once.
void importLine(ImportPlan& plan, const QString& line, const QString& separator, qint64 lineNumber) {
    QVector<ResultPart>& parts = plan.parts;
    splitResultLine(line, separator, int(plan.columns.size()), parts);
    bool invalid = false;
    for (int i = 0; i < plan.columns.size(); ++i) {
        const ColumnPlan& c = plan.columns[i];
        plan.present[i] = i < parts.size(); // a short line leaves the rest of the row empty
        if (!plan.present[i]) {
            plan.texts[i].clear();
            continue;
        }
        const ResultPart& part = parts[i];
        // value: the escape codes resolved, neither cut nor corrected; the field length is
        // measured on it.
        const QString value = c.escapes && !part.null ? resolveEscapeCodes(part.text, invalid) : part.text;
        QString stored;
        if (c.size > 0 && value.size() > c.size) {
            stored = value.left(c.size); // cut as read: a ";" in it stays
        } else {
            stored = value;
            stored.replace(QLatin1Char(';'), QLatin1Char('.'));
        }
        stored = applyOcrRules(c.rules, std::move(stored));
        // The field definition's length wins over both steps before.
        if (c.length != NoFieldLength && value.size() > c.length)
            stored = value.left(c.length);
        // A replacement rule must not make a value longer than its column holds.
        if (c.size > 0 && stored.size() > c.size)
            stored.truncate(c.size);
        plan.texts[i] = std::move(stored);
    }

    CardLineMapping::Raw raw;
    for (size_t k = 0; k < raw.size(); ++k) {
        const int i = plan.sources[k];
        if (i >= 0 && plan.present[i])
            raw[k] = plan.texts[i];
    }
    const CardLineMapping::Fields fields = plan.mapping.map(raw);
    for (size_t k = 0; k < fields.size(); ++k) {
        const int i = plan.targets[k];
        if (i >= 0) {
            plan.texts[i] = fields[k];
            plan.present[i] = true;
        }
    }
    if (plan.workflowStatus >= 0) {
        plan.texts[plan.workflowStatus] = QStringLiteral("10");
        plan.present[plan.workflowStatus] = true;
    }

    for (int i = 0; i < plan.columns.size(); ++i) {
        const ColumnPlan& c = plan.columns[i];
        if (c.bindPosition < 0)
            continue;
        if (!plan.present[i])
            plan.insert->bind(c.bindPosition, QVariant());
        else if (c.type == DaoType::Text || c.type == DaoType::Memo)
            plan.insert->bindText(c.bindPosition, plan.texts[i]);
        else
            plan.insert->bind(c.bindPosition, storedValue(c, plan.texts[i], lineNumber));
    }
    plan.insert->exec();
    if (invalid)
        WriteLog(procedureName(), QStringLiteral("\\i im Datensatz! Beleg: '") +
                                      (plan.bmpName >= 0 ? plan.texts[plan.bmpName] : QString()) + QLatin1Char('\''));
}

// A temporary file left by an earlier run that ended before it was finished: it is logged as it
// always was, and kept aside under a dated name instead of being deleted, so that its lines can
// still be looked at and imported by hand.
void setStaleTempAside(const QString& temp, const QString& path) {
    WriteLog(GetText(Msg::ImportStopTmp, {temp, path}), QStringLiteral("16"));
    const QString aside = staleTempAsideName(temp, appClock().now());
    if (moveFileNoReplace(temp, aside))
        WriteLog(procedureName(), QStringLiteral("Vorhandene temp. Datei aufbewahrt als '%1'").arg(aside));
    else
        WriteLog(procedureName(), QStringLiteral("Vorhandene temp. Datei '%1' konnte nicht umbenannt werden: %2")
                                      .arg(temp, QString::fromLocal8Bit(std::strerror(errno))));
}

// An alternatives file left under its temporary name belongs to a result file that is gone or set
// aside; it is kept aside too, so the next one can take its name.
void setAlternativesAside(const QString& altTemp) {
    if (!QFileInfo::exists(altTemp))
        return;
    const QString aside = staleTempAsideName(altTemp, appClock().now());
    if (moveFileNoReplace(altTemp, aside))
        WriteLog(procedureName(), QStringLiteral("Vorhandene Alternativendatei aufbewahrt als '%1'").arg(aside));
}

// Takes the alternatives file over with its result file; without one, or when it cannot be moved,
// the import goes on without candidates. True when it was taken.
bool takeAlternativesFile(const QString& path, const QString& altTemp) {
    const QString alt = alternativesFileName(path);
    if (alt == path || !QFileInfo::exists(alt))
        return false;
    if (moveFileNoReplace(alt, altTemp))
        return true;
    WriteLog(procedureName(), QStringLiteral("Alternativendatei '%1' nicht verschiebbar: %2")
                                  .arg(alt, QString::fromLocal8Bit(std::strerror(errno))));
    return false;
}

// Copies source into the backup folder for import data as name plus the backup time stamp, under a
// name no other copy has. True when the copy is whole or none is wanted (backups off, or no backup
// folder set); false when one was wanted and failed, the reason logged: the file must then stay.
bool copyIntoImportBackup(const QString& source, const QString& name) {
    try {
        if (!IsBackupEnabled())
            return true;
        const QString folder = GetBackupDir(BackupKind::ImportData, true);
        // Without a backup folder set there is nothing to copy to; a folder that is set but cannot
        // be made is a failure.
        if (folder.isEmpty())
            return setting<Setting::Backup_Pfad>().trimmed().isEmpty();
        const QString target = unusedFileName(folder, name + QLatin1Char('_') + GetBackupTimestamp());
        QString problem;
        if (copyFileChecked(source, target, problem))
            return true;
        WriteLog(procedureName(), QStringLiteral("Sicherungskopie '%1' nicht geschrieben: %2").arg(target, problem));
    } catch (const std::exception&) {
    }
    return false;
}

// Copies the import file into the backup folder; the operator hears of a copy that failed.
bool backupImportFile(const QString& path, const QString& temp) {
    if (copyIntoImportBackup(temp, QFileInfo(path).fileName()))
        return true;
    ShowMessage(Msg::ImportBackup, MsgBox::Exclamation);
    return false;
}

// The table of imported files: one row per file whose lines were committed, written in the same
// commit as the lines. A file whose size and content are found there was imported already.
const QString importedFilesTable = QStringLiteral("sysImportedFiles");

void ensureImportedFilesTable() {
    execSql(QStringLiteral("CREATE TABLE IF NOT EXISTS ") + importedFilesTable +
            QStringLiteral(" (Name TEXT, Size INTEGER, Sha256 TEXT, Importiert TEXT)"));
}

// When the file of that identity was imported, or a null text.
QString importedAt(qint64 size, const QString& sha256) {
    QSqlQuery q = execSql(QStringLiteral("SELECT Importiert FROM ") + importedFilesTable +
                              QStringLiteral(" WHERE Size=? AND Sha256=?"),
                          {size, sha256});
    return q.next() ? q.value(0).toString() : QString();
}

void recordImportedFile(const QString& path, qint64 size, const QString& sha256) {
    execSql(
        QStringLiteral("INSERT INTO ") + importedFilesTable +
            QStringLiteral(" (Name, Size, Sha256, Importiert) VALUES (?, ?, ?, ?)"),
        {QFileInfo(path).fileName(), size, sha256, appClock().now().toString(QStringLiteral("yyyy-MM-dd HH:mm:ss"))});
}

// An import file that was imported already (a leftover of a run that ended after its commit, or a
// copy put back by hand) is set aside under a dated name and never read again.
void setImportedFileAside(const QString& temp, const QString& path, const QString& when) {
    const QString aside = staleTempAsideName(temp, appClock().now());
    const bool moved = moveFileNoReplace(temp, aside);
    const QString text =
        QStringLiteral("Die Importdatei '%1' wurde bereits am %2 importiert und wird nicht noch einmal "
                       "importiert; sie %3.")
            .arg(path, when,
                 moved ? QStringLiteral("liegt jetzt unter '%1'").arg(aside)
                       : QStringLiteral("liegt unverändert unter '%1'").arg(temp));
    zvMsgBox(text, MsgBox::Critical, QString());
}

} // namespace

QString importSeparator() {
    const QString separator = GetIniValue(QStringLiteral("Beleg"), QStringLiteral("Trenner"));
    if (!separator.isEmpty())
        return separator;
    WriteLog(procedureName(), QStringLiteral("TARNVEL.INI ohne Eintrag [Beleg] [Trenner], Default-Wert genutzt!"));
    return QStringLiteral(",");
}

int ImportZVBWerte(const QString& path) {
    const QString separator = importSeparator();
    const QString temp = importTempName(path);
    const QString altTemp = alternativesTempName(temp);
    if (QFileInfo::exists(temp) || QFileInfo(temp).isSymLink())
        setStaleTempAside(temp, path);
    setAlternativesAside(altTemp);
    if (!moveFileNoReplace(path, temp)) {
        WriteLog(procedureName(), QStringLiteral("Importdatei '%1' nicht verschiebbar: %2")
                                      .arg(path, QString::fromLocal8Bit(std::strerror(errno))));
        ShowMessage(Msg::ImportStopLocked, MsgBox::Critical, {path});
        return -1;
    }
    const bool alternatives = takeAlternativesFile(path, altTemp);
    bool altCopied = true;
    bool copied = true;
    // The alternatives file is copied beside its result file's copy and stays with it on failure.
    const auto backUp = [&] {
        copied = backupImportFile(path, temp);
        altCopied = !alternatives || copyIntoImportBackup(altTemp, QFileInfo(alternativesFileName(path)).fileName());
    };

    const QString table = GetValuesTable();
    qint64 lineCount = 0;
    bool cleaned = false;
    QString alreadyImported;
    std::optional<Transaction> transaction;
    // Rows of this import have numbers above this one: the table's numbers only ever grow, and the
    // write lock is held from the first statement on.
    qint64 numberBefore = -1;
    const bool read = RunReported(procedureName(), [&] {
        transaction.emplace();
        qint64 size = 0;
        QString sha256;
        if (!fileIdentity(temp, size, sha256))
            throw VeridonError(ErrorNumber::FileNotFound, Msg::ErrFileRead, {temp});
        // An empty file adds nothing, so it may come any number of times.
        if (size > 0) {
            ensureImportedFilesTable();
            alreadyImported = importedAt(size, sha256);
            if (!alreadyImported.isNull())
                return;
            recordImportedFile(path, size, sha256);
        }
        // The mapping's master data is read before any line: when it cannot be read, no row is
        // written, and the rows an earlier failed import left waiting go, as the clean-up's failure
        // has always meant.
        std::optional<CardLineMapping> mapping;
        if (!RunReported(QStringLiteral("ImportNachbearbeitung"), [&] { mapping = CardLineMapping::load(); })) {
            backUp();
            execSql(QStringLiteral("DELETE * FROM ") + table + QStringLiteral(" WHERE [Neuimport] = true"));
            return;
        }
        ImportPlan plan = planImport(table, std::move(*mapping));
        {
            QSqlQuery last = execSql(QStringLiteral("SELECT max(LfdNr) FROM ") + table);
            numberBefore = last.next() ? last.value(0).toLongLong() : 0;
        }
        TextLineReader lines;
        if (!lines.open(temp))
            throw VeridonError(ErrorNumber::FileNotFound, Msg::ErrFileRead, {temp});
        Progress& progress = appProgress();
        qint64 n = 0;
        QString line;
        const auto show = [&] {
            progress.status(QStringLiteral("Importiere Datensatz: ") + QString::number(n));
            progress.progress(lines.position(), size); // the lines are not counted beforehand
        };
        while (lines.next(line)) {
            ++n;
            // Every line's number would cost more than the line; the eye sees no difference.
            if (n == 1 || n % 256 == 0)
                show();
            importLine(plan, line, separator, n);
        }
        show();
        if (lines.failed())
            throw VeridonError(ErrorNumber::DeviceIO, Msg::ErrFileRead, {temp});
        progress.finished();
        lineCount = n;
        plan.insert.reset();

        backUp();
        // Rows an earlier import left waiting after a failure are cleaned and committed with these.
        if (ImportNachbearbeitung() < 1) {
            execSql(QStringLiteral("DELETE * FROM ") + table + QStringLiteral(" WHERE [Neuimport] = true OR LfdNr>?"),
                    {numberBefore});
        } else {
            execSql(QStringLiteral("UPDATE ") + table +
                    QStringLiteral(" SET [Neuimport]=false WHERE [Neuimport]=true"));
            cleaned = true;
            // In the same commit as the rows: the candidates of a row never outlive it.
            if (alternatives)
                ImportAlternatives(altTemp, temp, separator, table, numberBefore);
        }
    });
    // After a run-time error the rows read so far wait, as the file's rows always did until its
    // commit: marked new and not yet released for correction; a later import cleans and commits
    // them. When even that cannot be written, nothing of this run is kept.
    if (!read && numberBefore >= 0 && !RunReported(procedureName(), [&] {
            execSql(QStringLiteral("UPDATE ") + table +
                        QStringLiteral(" SET [Neuimport]=true, Workflow_Status=NULL WHERE LfdNr>?"),
                    {numberBefore});
        }))
        transaction.reset();
    if (!alreadyImported.isNull()) {
        transaction.reset();
        appProgress().finished();
        setImportedFileAside(temp, path, alreadyImported);
        setAlternativesAside(altTemp);
        return -1;
    }
    // Whatever happened, what was written stays: after a run-time error the rows read so far keep
    // Neuimport, and a later import commits them, and the file counts as imported.
    if (transaction && !RunReported(procedureName(), [&] { transaction->commit(); }))
        cleaned = false;
    appProgress().finished();
    if (!cleaned)
        return -1;
    // The file is deleted only once its rows are safely committed and its backup copy is whole, so
    // neither a failed commit nor a failed copy can lose a line. A file kept for want of its copy
    // is set aside by the next import and recognised as imported.
    if (!copied) {
        WriteLog(procedureName(), QStringLiteral("Importdatei '%1' ohne Sicherungskopie aufbewahrt.").arg(temp));
        return int(lineCount);
    }
    if (!QFile::remove(temp))
        ShowMessage(Msg::ImportDelete, MsgBox::Exclamation);
    if (alternatives && (!altCopied || !QFile::remove(altTemp)))
        WriteLog(procedureName(), QStringLiteral("Alternativendatei '%1' aufbewahrt.").arg(altTemp));
    return int(lineCount);
}
