// The export pass. Database work runs in transactions of a few hundred records (a record's XML file
// and its state change are cheap; a commit with a full sync is not). Before each commit the files
// written for those records are flushed to disk, so a committed removal never outlives its files.
// The open transaction is also committed before a record is printed, because printing may wait for
// the operator's report choice or for the printer and must not hold the database's write lock.
#include "mdlExport.h"

#include "ExportFiles.h"
#include "ExportTemplate.h"
#include "admin/mdlBackup.h"
#include "app/ColumnInfo.h"
#include "app/Database.h"
#include "app/Home.h"
#include "app/Progress.h"
#include "app/TextFile.h"
#include "app/mdlDB.h"
#include "app/mdlMessages.h"
#include "print/mdlPrint.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QSqlField>
#include <optional>

namespace {

const QString crlf = QStringLiteral("\r\n");

// The database side of one pass: an open transaction that is committed every so often.
class PassTransaction {
public:
    void begin() {
        if (transaction_)
            return;
        transaction_.emplace();
        records_ = 0;
        timer_.start();
    }
    void commit() {
        if (!transaction_)
            return;
        flushWrittenFiles();
        transaction_->commit();
        transaction_.reset();
    }
    // After a failure: keep what was done, as every reported failure does.
    void commitQuietly() {
        try {
            commit();
        } catch (const std::exception&) {
            transaction_.reset();
        }
    }
    void recordDone() {
        if (++records_ >= 500 || timer_.elapsed() > 1000)
            commit();
    }

private:
    std::optional<Transaction> transaction_;
    int records_ = 0;
    QElapsedTimer timer_;
};

thread_local PassTransaction* activePass = nullptr;

struct ActivePass {
    explicit ActivePass(PassTransaction* pass) { activePass = pass; }
    ~ActivePass() { activePass = nullptr; }
    ActivePass(const ActivePass&) = delete;
    ActivePass& operator=(const ActivePass&) = delete;
};

QString textOf(const QSqlRecord& record, const char* column) {
    const QVariant v = record.value(QLatin1String(column));
    return v.isNull() ? QString() : v.toString();
}

qint32 lfdNrOf(const QSqlRecord& record) {
    return ToLong(record.value(QStringLiteral("LfdNr")));
}

// The image folder with its trailing "/"; the home when none is set, as the program folder was the
// working directory in which a bare image name was found.
QString imageFolder() {
    const QString folder = GetSysText(QStringLiteral("APP_Bildpfad")).trimmed();
    return folder.isEmpty() ? homeDir() : withTrailingSlash(folder);
}

// Names of the yes/no columns of the values table, kept while the connection lives.
const QStringList& booleanColumns() {
    thread_local quint64 generation = 0;
    thread_local QStringList names;
    if (generation != connectionGeneration()) {
        names.clear();
        for (const ColumnInfo& c : tableColumns(GetValuesTable()))
            if (c.type == DaoType::Boolean)
                names << c.name;
        generation = connectionGeneration();
    }
    return names;
}

// A value as the text copy writes it: yes/no as the German workstation spells it, null as "".
QString lineValue(const QSqlRecord& record, int index) {
    const QVariant v = record.value(index);
    if (v.isNull())
        return QString();
    if (booleanColumns().contains(record.fieldName(index), Qt::CaseInsensitive))
        return ToFlag(v, false) ? QStringLiteral("Wahr") : QStringLiteral("Falsch");
    return v.toString();
}

ExportValues valuesOf(const QSqlRecord& record) {
    ExportValues v;
    v.scanDat = textOf(record, "SCANDAT");
    v.formId = textOf(record, "FORM_ID");
    v.state = textOf(record, "STATE");
    v.nachname = textOf(record, "NACHNAME");
    v.vorname = textOf(record, "VORNAME");
    v.gebDat = textOf(record, "GEBDAT");
    v.personalId = textOf(record, "PERSONAL_ID");
    v.institutId = textOf(record, "INSTITUT_ID");
    v.cardId = textOf(record, "CARD_ID");
    v.cardExpiry = textOf(record, "CARD_EXPIRY");
    const QVariant type = GetValue(QStringLiteral("State_XmlType"), QStringLiteral("sysStates"),
                                   QStringLiteral("State_ID=") + sqlQuote(v.state));
    v.caseIdentifier = type.isNull() ? QStringLiteral("5") : type.toString();
    return v;
}

} // namespace

bool ExportZVBWerte() {
    RunReported(QStringLiteral("ExportZVBWerte"), [] {
        const QString table = GetValuesTable();
        QVector<qint32> numbers;
        {
            QSqlQuery q = execSql(QStringLiteral("SELECT LfdNr FROM ") + table +
                                  QStringLiteral(" WHERE Workflow_Status=20 OR Workflow_Status=40 ORDER BY LfdNr"));
            while (q.next())
                numbers << q.value(0).toInt();
        }
        if (numbers.isEmpty())
            return;
        Progress& progress = appProgress();
        // The status text in the operator's language, read once for the pass.
        const QString label =
            GetText(QStringLiteral("Txt_ExportProgress"), QStringLiteral("Export von korrigierten Daten: %1"));
        progress.progress(0, numbers.size());
        progress.status(QString(label).replace(QLatin1String("%1"), QLatin1String("0")));

        PassTransaction pass;
        ActivePass active(&pass);
        try {
            // Each row is read again when its turn comes: a record that another pass took meanwhile
            // is no longer in state 20 or 40 and is left alone.
            QSqlQuery fetch =
                prepareSql(QStringLiteral("SELECT * FROM ") + table +
                           QStringLiteral(" WHERE LfdNr=? AND (Workflow_Status=20 OR Workflow_Status=40)"));
            qint64 done = 0;
            for (const qint32 number : std::as_const(numbers)) {
                if (QCoreApplication::instance())
                    QCoreApplication::processEvents();
                pass.begin();
                fetch.bindValue(0, number);
                execPrepared(fetch);
                if (fetch.next()) {
                    const QSqlRecord record = fetch.record();
                    fetch.finish();
                    ExportRecord(record);
                }
                fetch.finish();
                ++done;
                progress.progress(done, numbers.size());
                progress.status(QString(label).replace(QLatin1String("%1"), QString::number(done)));
            }
            pass.commit();
        } catch (const std::exception&) {
            pass.commitQuietly();
            progress.finished();
            throw;
        }
        progress.status(QString());
        progress.finished();
        if (QCoreApplication::instance())
            QCoreApplication::processEvents();
    });
    return true;
}

void ExportRecord(const QSqlRecord& record) {
    if (!ExportRecord_XML(record))
        return;
    if (GetReport(textOf(record, "STATE"), true) != ReportType::None) {
        if (activePass)
            activePass->commit();
        PrintRecord(record);
        if (activePass)
            activePass->begin();
    }
    ExportCleanup(record);
    if (activePass)
        activePass->recordDone();
    else
        flushWrittenFiles();
}

bool ExportRecord_XML(const QSqlRecord& record) {
    return RunReported(QStringLiteral("ExportRecord_XML"), [&] {
        const QString folder = GetSysText(QStringLiteral("Export_Pfad")).trimmed();
        if (folder.isEmpty())
            throw VeridonError(ErrorNumber::PathNotFound,
                               QStringLiteral("Es ist kein Exportverzeichnis eingestellt (Export_Pfad)."));
        const QString fileName = ExportFileName(folder, textOf(record, "BMPName"));
        QFile::remove(fileName);

        const QString templatePath = homePath(QStringLiteral("default.xml"));
        QStringList lines;
        if (!readTextLines(templatePath, lines))
            throw VeridonError(ErrorNumber::FileNotFound,
                               QStringLiteral("Die Vorlage '%1' kann nicht gelesen werden.").arg(templatePath));
        QString text;
        for (const QString& line : std::as_const(lines))
            text += line + crlf;
        text = RemoveEmptyLines(FillExportTemplate(text, valuesOf(record)));
        writeExportFile(fileName, encodeText(text + crlf));

        if (IsBackupEnabled()) {
            // Without a usable backup folder the copy lands in the program folder, where the
            // classic workstation's working directory put it.
            const QString backup = GetBackupDir(BackupKind::ExportData, true);
            copyExportFile(fileName, (backup.isEmpty() ? homeDir() : backup) + FileNameOf(fileName));
        }

        const qint16 state = ToInteger(record.value(QStringLiteral("Workflow_Status")));
        execSql(QStringLiteral("UPDATE ") + GetValuesTable() + QStringLiteral(" SET Workflow_Status=? WHERE LfdNr=?"),
                {state + 1, lfdNrOf(record)});
    });
}

void ExportCleanup(const QSqlRecord& record) {
    RunReported(QStringLiteral("ExportCleanup"), [&] {
        const QString bmpName = textOf(record, "BMPName");
        const QString image = imageFolder() + bmpName;
        const bool backup = IsBackupEnabled();
        if (backup && IsBackupImages()) {
            const QString folder = GetBackupDir(BackupKind::Images, true);
            if (!folder.isEmpty())
                copyExportFile(image, folder + FileNameOf(bmpName));
        }
        QFile::remove(image);
        if (backup) {
            const QString folder = GetBackupDir(BackupKind::ExportData, true);
            if (!folder.isEmpty())
                AppendExportLine(folder + QStringLiteral("exp.txt"), record);
        }
        execSql(QStringLiteral("DELETE FROM ") + GetValuesTable() + QStringLiteral(" WHERE LfdNr=?"),
                {lfdNrOf(record)});
    });
}

void AppendExportLine(const QString& fileName, const QSqlRecord& record) {
    QStringList values;
    for (int i = 0; i < record.count(); ++i) {
        const QString name = record.fieldName(i);
        if (name == QLatin1String("LfdNr") || name.startsWith(QLatin1String("Workflow_")))
            continue;
        values << lineValue(record, i);
    }
    if (!appendTextLine(fileName, values.join(QLatin1Char(','))))
        throw VeridonError(ErrorNumber::PathNotFound,
                           QStringLiteral("Die Datei '%1' kann nicht geschrieben werden.").arg(fileName));
    noteExportFileWritten(fileName);
}
