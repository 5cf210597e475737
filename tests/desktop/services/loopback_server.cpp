#include "desktop/services/loopback_server.h"

#include <QHostAddress>

#include <memory>
#include <utility>

LoopbackServer::LoopbackServer(Handler handler)
    : handler_(std::move(handler)) {
    listen(QHostAddress::LocalHost);
    connect(this, &QTcpServer::newConnection, this, [this] {
        QTcpSocket* socket = nextPendingConnection();
        const auto received = std::make_shared<QByteArray>();
        connect(socket, &QTcpSocket::readyRead, this,
                [this, socket, received] { read(socket, *received); });
        connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
    });
}

std::string LoopbackServer::url(const std::string& path) const {
    return "http://127.0.0.1:" + std::to_string(serverPort()) + path;
}

void LoopbackServer::read(QTcpSocket* socket, QByteArray& received) {
    received += socket->readAll();
    const qsizetype head_end = received.indexOf("\r\n\r\n");
    if (head_end < 0)
        return;
    const QByteArray head = received.first(head_end + 2);
    qsizetype length = 0;
    for (const QByteArray& line : head.split('\n'))
        if (line.toLower().startsWith("content-length:"))
            length = line.mid(15).trimmed().toInt();
    if (received.size() < head_end + 4 + length)
        return;
    const Request request{head.split(' ').value(1).toStdString(), head.toStdString(),
                          received.sliced(head_end + 4).toStdString()};
    received.clear();
    handler_(request, *socket);
}

void answer(QTcpSocket& socket, const char* status, const QByteArray& body,
            const QByteArray& headers) {
    socket.write(QByteArray("HTTP/1.1 ") + status +
                 "\r\nContent-Length: " + QByteArray::number(body.size()) +
                 "\r\nConnection: close\r\n" + headers + "\r\n" + body);
    socket.disconnectFromHost();
}
