#pragma once

#include <QByteArray>
#include <QTcpServer>
#include <QTcpSocket>

#include <functional>
#include <string>

/// A small HTTP server on the loopback interface for tests. It reads each request whole and leaves
/// the answer to the test, which may write what it likes to the socket.
class LoopbackServer : public QTcpServer {
public:
    struct Request {
        std::string path;
        std::string head; ///< request line and headers
        std::string body;
    };
    using Handler = std::function<void(const Request&, QTcpSocket&)>;

    explicit LoopbackServer(Handler handler);

    /// "http://127.0.0.1:port" + `path`.
    std::string url(const std::string& path) const;

private:
    void read(QTcpSocket* socket, QByteArray& received);

    Handler handler_;
};

/// A whole answer; the connection is closed behind it.
void answer(QTcpSocket& socket, const char* status, const QByteArray& body,
            const QByteArray& headers = {});
