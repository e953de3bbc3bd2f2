// SPDX-License-Identifier: Apache-2.0
// One workstation program per home. The windows program holds the home's lock file exclusively for
// as long as it runs; the workflow commands of veridon-cli (next, accept, discard, export, scan) hold
// it shared while they run. Several commands may thus run side by side, but never beside the
// windows, and the windows never start while a command works on the records. The lock is the
// operating system's (flock): it goes with its process, also when the process is killed, so a crash
// never leaves a stale lock behind.
#pragma once

#include <QString>

class HomeLock {
public:
    enum class Result {
        Taken,      // this process holds the lock now
        Held,       // another process holds it in a way that excludes this one
        Unavailable // the lock file cannot be made (a read-only home); nothing was locked
    };

    // The lock file's name inside the home.
    static QString fileName() { return QStringLiteral("veridon.lock"); }

    // A lock on home's lock file; nothing is locked yet.
    explicit HomeLock(const QString& home);
    // Releases the lock when it was taken.
    ~HomeLock();
    HomeLock(const HomeLock&) = delete;
    HomeLock& operator=(const HomeLock&) = delete;

    // Takes the lock for the windows program without waiting and writes this process's id into the
    // file, for the message another program shows.
    Result tryExclusive();
    // Takes the lock for a command without waiting; other commands may hold it too.
    Result tryShared();

    // The process id the exclusive holder wrote, 0 when the file names none.
    qint64 holderPid() const;
    // The lock file's full path.
    const QString& path() const { return path_; }

private:
    Result take(bool exclusive);

    QString path_;
    int fd_ = -1;
};
