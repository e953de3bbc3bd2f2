// SPDX-License-Identifier: Apache-2.0
// The hand-over of a group of records, written ahead so that a crash at any instant neither loses a
// record nor hands one over twice. For each record:
//   1. its XML is written under a hidden name in the export folder (".<name>.xml.<LfdNr>.part") and
//      synced; only then is its state raised (20 to 21, 40 to 41) and committed;
//   2. the backup copies (XML, image, the exp.txt line) are written and synced, and each copy is
//      checked to be there whole;
//   3. the hidden file is renamed to its real name - the moment of hand-over;
//   4. the report is printed when due, the image removed, the folder synced, the record deleted.
// A record found in 21 or 41 is finished from where it stood: while its hidden file exists it has
// not been handed over and goes on with step 2; without it, only the clean-up is left. Every step
// after the state change can be repeated: copies are replaced, the exp.txt line is appended only
// when the day's file does not hold it yet, a missing image counts as removed. The records of one
// group share each sync and each commit, which keeps the pass fast.
#pragma once

#include <QSqlRecord>
#include <QString>
#include <QVector>

// What a pass needs to know, read once at its start.
struct ExportSettings {
    QString exportFolder;      // ends in "/"
    QString templateText;      // default.xml as lines each ended by CR LF, checked (empty when not needed)
    QString imageFolder;       // ends in "/"
    bool backup = false;       // Backup_Enabled
    QString xmlBackupFolder;   // where the XML copies go when backup is on (the home without a backup folder)
    QString imageBackupFolder; // "" when images are not kept
    QString expLines;          // the day's exp.txt, "" when none is kept
};

// Reads the settings of a pass. With withTemplate, default.xml is read and checked as well. Throws
// VeridonError with a German reason when Export_Pfad is unset or the template is missing, empty or
// not well-formed XML, before any record or file has been touched.
ExportSettings ReadExportSettings(bool withTemplate);

class ExportBatch {
public:
    explicit ExportBatch(const ExportSettings& settings);

    // Adds a record read with all its columns in state 20, 40, 21 or 41.
    void add(const QSqlRecord& record);
    // Adds a record in 21 or 41 only when its XML was handed over already (its hidden file is gone).
    void addIfHandedOver(const QSqlRecord& record);
    int size() const { return int(items_.size()); }

    // Step 1 for every record added: writes the XML of the records in 20 or 40 under their hidden
    // names, syncs them and raises their state (inside the caller's transaction, when one is open:
    // it commits). A record whose state changed meanwhile is dropped. Returns false after a failure
    // reported as "ExportRecord_XML()": the hidden files written are removed, no state is raised.
    bool writeAhead();

    // Steps 2 to 4 once writeAhead succeeded and its transaction is committed. With printing, the
    // records handed over now get their report when one is due. Returns the number of records
    // finished and deleted, or -1 after a failure reported as "ExportCleanup()": the records stay in
    // 21 or 41 with their files, for the next pass. Either failure ends the pass.
    int handOver(bool printing);

private:
    struct Item {
        QSqlRecord record;
        qint32 number = 0;
        qint16 state = 0;
        QString bmpName;
        QString xmlPath;
        QString partPath;
        QByteArray xml;          // the XML to hand over (empty once handed over)
        bool fresh = false;      // read in 20 or 40
        bool handedOver = false; // the hidden file was renamed in an earlier run
    };

    void keepCopies();
    void finish(bool printing);
    QByteArray xmlOf(const Item& item) const;

    const ExportSettings& settings_;
    QVector<Item> items_;
};

// The record's values as one comma-separated line of exp.txt: every column in table order except
// LfdNr and Workflow_*, yes/no as "Wahr"/"Falsch", null as "", neither quoted nor escaped.
QString ExportLineOf(const QSqlRecord& record);
