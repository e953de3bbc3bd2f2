// SPDX-License-Identifier: Apache-2.0
// One running copy per home. The first copy listens on a local socket named after its home; a
// second start for the same home finds it, asks it to come to the front and ends without showing a
// window of its own. Copies on different homes run side by side.
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

    // Looks for a running copy on the same home and asks it to come to the front. True when one
    // answered: this copy should end now.
    bool activateRunning();

    // Starts listening for later starts. A socket left behind by a crashed copy is removed first.
    // False when the socket cannot be made (the program still runs, without the guard).
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
