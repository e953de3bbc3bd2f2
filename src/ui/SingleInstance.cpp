// SPDX-License-Identifier: Apache-2.0
#include "SingleInstance.h"

#include <QCryptographicHash>
#include <QDeadlineTimer>
#include <QLocalServer>
#include <QLocalSocket>
#include <QThread>
#include <QWidget>

namespace {
const QByteArray activateRequest("activate\n");
}

QString SingleInstance::serverName(const QString& home) {
    const QByteArray hash = QCryptographicHash::hash(home.toUtf8(), QCryptographicHash::Sha1).toHex().left(16);
    return QStringLiteral("veridon-") + QString::fromLatin1(hash);
}

SingleInstance::SingleInstance(const QString& home, QObject* parent) : QObject(parent), name_(serverName(home)) {}

SingleInstance::~SingleInstance() = default;

bool SingleInstance::activateRunning(int waitMs) {
    QDeadlineTimer deadline(waitMs);
    do {
        QLocalSocket socket;
        socket.connectToServer(name_);
        if (socket.waitForConnected(250)) {
            socket.write(activateRequest);
            socket.flush();
            socket.waitForBytesWritten(1000);
            socket.disconnectFromServer();
            return true;
        }
        // The copy holding the home may still be starting and not listen yet.
        QThread::msleep(100);
    } while (!deadline.hasExpired());
    return false;
}

bool SingleInstance::listen() {
    server_ = new QLocalServer(this);
    server_->setSocketOptions(QLocalServer::UserAccessOption);
    if (!server_->listen(name_)) {
        // The caller holds the home's lock, so no other copy can be listening: the socket is a
        // leftover of a copy that crashed.
        QLocalServer::removeServer(name_);
        if (!server_->listen(name_))
            return false;
    }
    connect(server_, &QLocalServer::newConnection, this, [this] {
        while (QLocalSocket* socket = server_->nextPendingConnection()) {
            connect(socket, &QLocalSocket::readyRead, this, [this, socket] {
                if (socket->readAll().contains(activateRequest.trimmed())) {
                    bringToFront();
                    emit activationRequested();
                }
            });
            connect(socket, &QLocalSocket::disconnected, socket, &QObject::deleteLater);
        }
    });
    return true;
}

void SingleInstance::setWindow(QWidget* window) {
    window_ = window;
}

void SingleInstance::bringToFront() {
    if (!window_)
        return;
    if (window_->isMinimized())
        window_->showNormal();
    window_->show();
    window_->raise();
    window_->activateWindow();
}
