// SPDX-License-Identifier: Apache-2.0
// One running copy per home. Which copy runs is decided by the home's lock file (HomeLock), taken
// before anything else, so two copies started at the same instant never both run. The copy holding
// it listens on a local socket named after its home; a later start, refused by the lock, asks it
// through the socket to come to the front and ends without showing a window of its own. Copies on
// different homes run side by side.
#pragma once

#include <QObject>
#include <QPointer>
#include <QString>

class QLocalServer;
class QWidget;

class SingleInstance : public QObject {
    Q_OBJECT

public:
    // The socket name for home (a folder path): a short hash, so long paths stay within the
    // platform's limit for socket names.
    static QString serverName(const QString& home);

    explicit SingleInstance(const QString& home, QObject* parent = nullptr);
    ~SingleInstance() override;

    // Asks the running copy on the same home to come to the front, trying for up to waitMs while it
    // may still be starting. True when one answered: this copy should end now.
    bool activateRunning(int waitMs = 0);

    // Starts listening for later starts; call it only while holding the home's lock. A socket left
    // behind by a crashed copy is removed first. False when the socket cannot be made (the program
    // still runs; later starts are still refused by the lock).
    bool listen();

    // The window that comes to the front when a later start asks.
    void setWindow(QWidget* window);

signals:
    // A later start asked this copy to come to the front.
    void activationRequested();

private:
    void bringToFront();

    QString name_;
    QLocalServer* server_ = nullptr;
    QPointer<QWidget> window_;
};
