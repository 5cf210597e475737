#pragma once

#include <QHostAddress>
#include <QTcpServer>
#include <QTcpSocket>

#include <functional>
#include <string>
#include <utility>

/// A small HTTP server on the loopback interface for tests. It reads each request whole and leaves
/// the answer to the test, which may write what it likes to the socket.
class LoopbackServer : public QTcpServer {
public:
    struct Request {
        std::string path;
        std::string head; ///< request line and headers
        std::string body;
    };

    explicit LoopbackServer(std::function<void(const Request&, QTcpSocket&)> handler)
        : handler_(std::move(handler)) {
        listen(QHostAddress::LocalHost);
        connect(this, &QTcpServer::newConnection, this, [this] {
            QTcpSocket* socket = nextPendingConnection();
            connect(socket, &QTcpSocket::readyRead, this, [this, socket] { read(*socket); });
            connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
        });
    }

    /// "http://127.0.0.1:port" + `path`.
    std::string url(const std::string& path) const {
        return "http://127.0.0.1:" + std::to_string(serverPort()) + path;
    }

private:
    void read(QTcpSocket& socket) {
        const QByteArray received = socket.peek(socket.bytesAvailable());
        const qsizetype head_end = received.indexOf("\r\n\r\n") + 2;
        const QByteArray head = received.first(std::max<qsizetype>(head_end, 0));
        qsizetype length = 0;
        for (const QByteArray& line : head.split('\n'))
            if (line.toLower().startsWith("content-length:"))
                length = line.mid(15).trimmed().toInt();
        if (head_end < 2 || received.size() < head_end + 2 + length)
            return; // the rest is on its way
        socket.readAll();
        handler_({head.split(' ').value(1).toStdString(), head.toStdString(),
                  received.sliced(head_end + 2).toStdString()},
                 socket);
    }

    std::function<void(const Request&, QTcpSocket&)> handler_;
};

/// Begins an answer that never ends. It is sent as fast as it is read; `sent` counts its bytes.
inline void answer_without_end(QTcpSocket& socket, qint64& sent) {
    socket.write("HTTP/1.1 200 OK\r\nConnection: close\r\n\r\n");
    const auto send = [&socket, &sent] {
        if (socket.state() == QAbstractSocket::ConnectedState && socket.bytesToWrite() < 65536)
            sent += socket.write(QByteArray(65536, '{'));
    };
    QObject::connect(&socket, &QTcpSocket::bytesWritten, &socket, send);
    send();
}

/// A whole answer; the connection is closed behind it.
inline void answer(QTcpSocket& socket, const char* status, const QByteArray& body,
                   const QByteArray& headers = {}) {
    socket.write(QByteArray("HTTP/1.1 ") + status +
                 "\r\nContent-Length: " + QByteArray::number(body.size()) +
                 "\r\nConnection: close\r\n" + headers + "\r\n" + body);
    socket.disconnectFromHost();
}
