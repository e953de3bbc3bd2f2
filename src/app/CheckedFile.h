// SPDX-License-Identifier: Apache-2.0
// The one way this program writes a file. Every step that can lose data is checked: the open, each
// write (short writes are continued, a failed one is an error), the sync and the close; a file that
// replaces another is written under a temporary name in the same folder and renamed only once it
// is complete. A failure throws a VeridonError whose German text names the file and the cause
// ("Auf dem Datenträger ist kein Platz mehr"), so the caller can stop its work before it removes
// anything that the file was meant to keep. Syncing each small file on its own is slow, so callers
// that write many files may defer the syncs and make them durable in one go with a SyncBatch.
#pragma once

#include <QByteArray>
#include <QHash>
#include <QString>

// Whether a write is made durable before the call returns.
enum class Durability {
    Synced,   // the data and the folder entry are on disk when the call returns
    Deferred, // the caller syncs later through a SyncBatch (or accepts the risk, as for a log line)
};

class SyncBatch;

// Writes bytes as the whole content of path. The bytes go to ".<name>.part" beside it first and are
// renamed over path only when written and closed without error, so path always holds either its
// old content or the new one. With Durability::Synced the file and the folder are synced; with
// Deferred the folder is noted in batch (when given). Throws VeridonError on any failure; the
// temporary file is removed then and path keeps its old content.
void writeFileChecked(const QString& path, const QByteArray& bytes, Durability durability = Durability::Synced,
                      SyncBatch* batch = nullptr);

// Writes bytes as the whole content of path directly, without a temporary name (for callers that
// manage their own temporary names and renames). A failure throws VeridonError and removes the
// partly written file.
void writeNewFileChecked(const QString& path, const QByteArray& bytes, Durability durability = Durability::Synced,
                         SyncBatch* batch = nullptr);

// Appends bytes at the end of path, creating it when missing. All bytes are written or the call
// throws VeridonError; after a failed append the file is cut back to its former length, so it never
// ends in half a line.
void appendFileChecked(const QString& path, const QByteArray& bytes, Durability durability = Durability::Synced,
                       SyncBatch* batch = nullptr);

// Copies source to target through writeFileChecked, then reads target back and compares it with
// what was read from source. Throws VeridonError when source cannot be read ("... wurde nicht
// gefunden" for a missing one), the write fails or the copy differs.
void copyFileChecked(const QString& source, const QString& target, Durability durability = Durability::Synced,
                     SyncBatch* batch = nullptr);

// Renames from to to (replacing to) in one step. Throws VeridonError on failure.
void renameChecked(const QString& from, const QString& to, Durability durability = Durability::Synced,
                   SyncBatch* batch = nullptr);

// True when path holds exactly bytes (a missing or unreadable file is not).
bool fileHolds(const QString& path, const QByteArray& bytes);

// Folders whose files were written with Durability::Deferred. sync() makes all of them durable with
// one sync per file system and reports write-back errors that appeared since the writes (an I/O
// error the kernel only found while writing the cached pages out).
class SyncBatch {
public:
    SyncBatch() = default;
    ~SyncBatch();
    SyncBatch(const SyncBatch&) = delete;
    SyncBatch& operator=(const SyncBatch&) = delete;

    // Remembers path's folder for the next sync(). The folder is opened at once, so a write-back
    // error that happens from now on is reported by sync().
    void note(const QString& path);
    // Syncs every noted folder's file system and forgets them. Throws VeridonError when a sync fails.
    void sync();
    bool isEmpty() const { return folders_.isEmpty(); }

private:
    QHash<QString, int> folders_; // folder -> open descriptor
};

// Fault injection for tests: after budget more bytes have been written through the functions above,
// every write fails as on a full disk (ENOSPC); a negative budget (the default) switches it off.
// Also read once from the environment variable VERIDON_WRITE_BUDGET, so the command-line program
// can be made to fail in tests that run it as a process.
void setWriteBudgetForTesting(qint64 budget);
