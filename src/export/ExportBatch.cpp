// SPDX-License-Identifier: Apache-2.0
#include "ExportBatch.h"

#include "ExportTemplate.h"
#include "app/CheckedFile.h"
#include "app/ColumnInfo.h"
#include "app/Database.h"
#include "app/Home.h"
#include "app/Settings.h"
#include "app/TextFile.h"
#include "app/mdlBackup.h"
#include "app/mdlDB.h"
#include "app/mdlMessages.h"
#include "model/ImageFiles.h"
#include "model/OcrAlternatives.h"
#include "print/mdlPrint.h"

#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QSet>
#include <QSqlField>

namespace {

const QString crlf = QStringLiteral("\r\n");

QString textOf(const QSqlRecord& record, const char* column) {
    const QVariant v = record.value(QLatin1String(column));
    return v.isNull() ? QString() : v.toString();
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

// Appends lines to the day's exp.txt. A last line that a crash left unfinished is cut off first (its
// record is still waiting and brings the line again). A line at a position in recovered belongs to a
// record whose earlier run was interrupted: it is written only when the file does not hold it yet.
// Returns the bytes appended.
QByteArray appendExpLines(const QString& path, const QStringList& lines, const QSet<int>& recovered, SyncBatch& sync) {
    QFile file(path);
    QByteArray existing;
    if (file.open(QIODevice::ReadWrite)) {
        const qint64 size = file.size();
        bool whole = !recovered.isEmpty();
        if (!whole && size >= 2 && file.seek(size - 2))
            whole = file.read(2) != "\r\n";
        if (whole && file.seek(0))
            existing = file.readAll();
        if (!existing.isEmpty() && !existing.endsWith("\r\n")) {
            const qsizetype cut = existing.lastIndexOf("\r\n");
            existing.truncate(cut < 0 ? 0 : cut + 2);
            if (!file.resize(existing.size()))
                throw VeridonError(ErrorNumber::DeviceIO, Msg::ErrFileTruncate, {path});
        }
        file.close();
    }
    QSet<QByteArray> known;
    if (!recovered.isEmpty())
        for (const QByteArray& line : existing.split('\n'))
            known.insert(line.endsWith('\r') ? line.chopped(1) : line);
    QByteArray bytes;
    for (int i = 0; i < lines.size(); ++i) {
        const QByteArray line = encodeText(lines[i]);
        if (recovered.contains(i) && (line.contains('\n') ? existing.contains(line + "\r\n") : known.contains(line)))
            continue;
        bytes += line + "\r\n";
    }
    if (!bytes.isEmpty())
        appendFileChecked(path, bytes, Durability::Deferred, &sync);
    return bytes;
}

// Reads a copy back right after its write and compares it with what it keeps: a device or share
// that stores other bytes than it was given reports no error. Done at once, while the bytes are at
// hand, it costs a few per cent of a pass; a second read after the sync cost three times as much.
void readBack(const QString& copy, const QByteArray& bytes) {
    if (!fileHolds(copy, bytes))
        throw VeridonError(ErrorNumber::DeviceIO, Msg::ErrCopyDiffersOriginal, {copy});
}

} // namespace

QString ExportLineOf(const QSqlRecord& record) {
    QStringList values;
    for (int i = 0; i < record.count(); ++i) {
        const QString name = record.fieldName(i);
        if (name == QLatin1String("LfdNr") || name.startsWith(QLatin1String("Workflow_")))
            continue;
        values << lineValue(record, i);
    }
    return values.join(QLatin1Char(','));
}

ExportSettings ReadExportSettings(bool withTemplate) {
    ExportSettings s;
    const QString folder = setting<Setting::Export_Pfad>().trimmed();
    if (folder.isEmpty())
        throw VeridonError(ErrorNumber::PathNotFound, Msg::ErrNoExportFolder);
    s.exportFolder = withTrailingSlash(folder);
    if (withTemplate) {
        const QString path = homePath(QStringLiteral("default.xml"));
        QStringList lines;
        if (!readTextLines(path, lines))
            throw VeridonError(ErrorNumber::FileNotFound, Msg::ErrTemplateRead, {path});
        for (const QString& line : std::as_const(lines))
            s.templateText += line + crlf;
        const QString problem = TemplateProblem(s.templateText);
        if (!problem.isEmpty())
            throw VeridonError(ErrorNumber::InvalidArgument, Msg::ErrTemplateUnusable, {path, problem});
    }
    // The program folder stands in for an unset image folder, as it was the working directory in
    // which a bare image name was found.
    const QString images = GetBildpfad();
    s.imageFolder = images.isEmpty() ? homeDir() : images;
    s.backup = IsBackupEnabled();
    if (s.backup) {
        // Without a usable backup folder the XML copy lands in the program folder, where the
        // classic workstation's working directory put it; images and exp.txt are then not kept.
        const QString data = GetBackupDir(BackupKind::ExportData, true);
        s.xmlBackupFolder = data.isEmpty() ? homeDir() : data;
        if (!data.isEmpty())
            s.expLines = data + QStringLiteral("exp.txt");
        if (IsBackupImages())
            s.imageBackupFolder = GetBackupDir(BackupKind::Images, true);
    }
    return s;
}

ExportBatch::ExportBatch(const ExportSettings& settings) : settings_(settings) {}

void ExportBatch::add(const QSqlRecord& record) {
    Item item;
    item.record = record;
    item.number = ToLong(record.value(QStringLiteral("LfdNr")));
    item.state = ToInteger(record.value(QStringLiteral("Workflow_Status")));
    item.bmpName = textOf(record, "BMPName");
    item.xmlPath = ExportFileName(settings_.exportFolder, item.bmpName);
    item.partPath = settings_.exportFolder + QLatin1Char('.') + FileNameOf(item.xmlPath) + QLatin1Char('.') +
                    QString::number(item.number) + QStringLiteral(".part");
    item.fresh = item.state == 20 || item.state == 40;
    item.handedOver = !item.fresh && !QFileInfo::exists(item.partPath);
    items_.push_back(item);
}

void ExportBatch::addIfHandedOver(const QSqlRecord& record) {
    add(record);
    if (!items_.last().handedOver)
        items_.removeLast();
}

QByteArray ExportBatch::xmlOf(const Item& item, const ExportValues& values) const {
    QString dropped;
    const QString text = ExportXmlText(settings_.templateText, values, &dropped);
    if (!dropped.isEmpty())
        WriteLog(QStringLiteral("ExportRecord_XML"),
                 QStringLiteral("Beleg #%1 (%2): in XML unzulässige Zeichen entfernt: %3")
                     .arg(item.number)
                     .arg(FileNameOf(item.xmlPath), dropped));
    QString problem;
    if (!IsWellFormedXml(text, &problem))
        throw VeridonError(ErrorNumber::InvalidArgument, Msg::ErrInvalidXml, {item.xmlPath, problem});
    return encodeText(text);
}

bool ExportBatch::writeAhead() {
    SyncBatch sync;
    QStringList written;
    try {
        // A record in 20 or 40 gets its XML under the hidden name. One already raised before an
        // interruption has it there complete (it was synced before the state change) and keeps it.
        bool raise = false;
        for (Item& item : items_) {
            if (item.handedOver)
                continue;
            if (!item.fresh) {
                QFile part(item.partPath);
                if (!part.open(QIODevice::ReadOnly))
                    throw VeridonError(ErrorNumber::FileNotFound, Msg::ErrFileRead, {item.partPath});
                item.xml = part.readAll();
                continue;
            }
            const ExportValues values = valuesOf(item.record);
            const QString column = UnreadableExportDate(values);
            if (!column.isEmpty()) {
                // Turned around by position, such a date would leave as a wrong one; the record
                // waits in its state until the date is put right.
                const QString date = textOf(item.record, column.toLatin1().constData());
                refusals_ << QStringLiteral("Nr. %1 (%2): %3 '%4'").arg(item.number).arg(item.bmpName, column, date);
                WriteLog(QStringLiteral("ExportRecord_XML"),
                         QStringLiteral("Beleg #%1 (%2) nicht exportiert: Datum %3 '%4' nicht lesbar")
                             .arg(item.number)
                             .arg(item.bmpName, column, date));
                item.refused = true;
                continue;
            }
            item.xml = xmlOf(item, values);
            try {
                writeNewFileChecked(item.partPath, item.xml, Durability::Deferred, &sync);
            } catch (const VeridonError& e) {
                throw e.replaced(item.partPath, item.xmlPath);
            }
            written << item.partPath;
            raise = true;
        }
        items_.removeIf([](const Item& item) { return item.refused; });
        sync.sync();
        if (!raise)
            return true;
        Transaction transaction;
        // The claim names this workstation, so no other one of a shared pool finishes it too.
        const qint16 korrId = GetKorrID();
        QSqlQuery update =
            prepareSql(QStringLiteral("UPDATE ") + GetValuesTable() +
                       QStringLiteral(" SET Workflow_Status=?, Workflow_KorrID=? WHERE LfdNr=? AND Workflow_Status=?"));
        QVector<Item> kept;
        for (Item& item : items_) {
            if (item.fresh) {
                update.bindValue(0, item.state + 1);
                update.bindValue(1, korrId);
                update.bindValue(2, item.number);
                update.bindValue(3, item.state);
                execPrepared(update);
                if (update.numRowsAffected() != 1) {
                    // Taken or changed by someone else meanwhile: not ours to hand over.
                    QFile::remove(item.partPath);
                    continue;
                }
            }
            kept.push_back(item);
        }
        transaction.commit();
        items_ = kept;
        return true;
    } catch (const std::exception& e) {
        for (const QString& path : std::as_const(written))
            QFile::remove(path);
        ReportRuntimeError(QStringLiteral("ExportRecord_XML"), e);
        return false;
    }
}

void ExportBatch::keepCopies() {
    if (!settings_.backup)
        return;
    SyncBatch sync;
    QStringList lines;
    QSet<int> recovered;
    QHash<QString, qint64> copies; // checked once on disk (a later copy of a name replaces one)
    for (const Item& item : std::as_const(items_)) {
        if (!item.handedOver) {
            const QString copy = settings_.xmlBackupFolder + FileNameOf(item.xmlPath);
            writeFileChecked(copy, item.xml, Durability::Deferred, &sync);
            readBack(copy, item.xml);
            copies.insert(copy, item.xml.size());
        }
        // The copy is made while the image is there; an image already gone was removed after its
        // copy by an earlier, interrupted run (or never came), and counts as removed.
        const QString image = settings_.imageFolder + item.bmpName;
        if (!settings_.imageBackupFolder.isEmpty() && !item.bmpName.isEmpty() && !IsPathLikeImageName(item.bmpName)) {
            QFile source(image);
            if (source.open(QIODevice::ReadOnly)) {
                const QByteArray bytes = source.readAll();
                if (source.error() != QFileDevice::NoError)
                    throw VeridonError(ErrorNumber::DeviceIO, Msg::ErrFileRead, {image});
                const QString copy = settings_.imageBackupFolder + item.bmpName;
                writeFileChecked(copy, bytes, Durability::Deferred, &sync);
                readBack(copy, bytes);
                copies.insert(copy, bytes.size());
            }
        }
        if (!item.fresh)
            recovered.insert(int(lines.size()));
        lines << ExportLineOf(item.record);
    }
    QByteArray appended;
    if (!settings_.expLines.isEmpty())
        appended = appendExpLines(settings_.expLines, lines, recovered, sync);
    sync.sync();
    // Each copy was read back as soon as it was written, while its bytes were at hand; after the
    // sync each must still be there whole before anything it keeps is removed.
    for (auto it = copies.cbegin(); it != copies.cend(); ++it)
        if (QFileInfo(it.key()).size() != it.value())
            throw VeridonError(ErrorNumber::DeviceIO, Msg::ErrCopyIncomplete, {it.key()});
    if (!appended.isEmpty() && !fileEndsWith(settings_.expLines, appended))
        throw VeridonError(ErrorNumber::DeviceIO, Msg::ErrLinesMissing, {settings_.expLines});
}

void ExportBatch::finish(bool printing) {
    SyncBatch sync;
    for (const Item& item : std::as_const(items_))
        if (!item.handedOver)
            renameChecked(item.partPath, item.xmlPath, Durability::Deferred, &sync);
    if (printing) {
        for (const Item& item : std::as_const(items_))
            if (!item.handedOver && GetReport(textOf(item.record, "STATE"), true) != ReportType::None)
                PrintRecord(item.record);
    }
    for (const Item& item : std::as_const(items_)) {
        // Only a bare name is looked up in the image folder: a path-like one could name any file.
        if (item.bmpName.isEmpty() || IsPathLikeImageName(item.bmpName))
            continue;
        const QString image = settings_.imageFolder + item.bmpName;
        if (QFile::remove(image))
            sync.note(image);
    }
    // The hand-over is made durable before the records go: a record is never deleted while its
    // file could still vanish with a power cut.
    sync.sync();
    Transaction transaction;
    QSqlQuery remove = prepareSql(QStringLiteral("DELETE FROM ") + GetValuesTable() + QStringLiteral(" WHERE LfdNr=?"));
    for (const Item& item : std::as_const(items_)) {
        remove.bindValue(0, item.number);
        execPrepared(remove);
        DeleteAlternatives(item.number);
    }
    transaction.commit();
}

int ExportBatch::handOver(bool printing) {
    if (items_.isEmpty())
        return 0;
    try {
        keepCopies();
        finish(printing);
    } catch (const std::exception& e) {
        ReportRuntimeError(QStringLiteral("ExportCleanup"), e);
        return -1;
    }
    return int(items_.size());
}
