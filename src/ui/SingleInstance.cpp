// SPDX-License-Identifier: Apache-2.0
#include "SingleInstance.h"

#include <QCryptographicHash>
#include <QLocalServer>
#include <QLocalSocket>
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

bool SingleInstance::activateRunning() {
    QLocalSocket socket;
    socket.connectToServer(name_);
    if (!socket.waitForConnected(1000))
        return false;
    socket.write(activateRequest);
    socket.flush();
    socket.waitForBytesWritten(1000);
    socket.disconnectFromServer();
    return true;
}

bool SingleInstance::listen() {
    server_ = new QLocalServer(this);
    server_->setSocketOptions(QLocalServer::UserAccessOption);
    if (!server_->listen(name_)) {
        // Nobody answered on the name (activateRunning came first), so the socket is a leftover.
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
