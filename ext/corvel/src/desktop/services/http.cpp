#include "desktop/services/http.h"

#include "desktop/services/async_change.h"
#include "desktop/services/http_reply.h"
#include "runtime/corvel_app.h"

#include <QCoreApplication>
#include <QNetworkAccessManager>
#include <QUrl>

#include <utility>

namespace Corvel {

namespace {

constexpr int STALL_LIMIT_MS = 30000;
constexpr const char* TOO_LONG = "tooLong"; ///< property of a reply that was ended for its length

QNetworkReply* start(QNetworkAccessManager& manager, const QNetworkRequest& target,
                     const HttpRequest& request) {
    const QByteArray body = QByteArray::fromStdString(request.body);
    if (request.method == "POST")
        return manager.post(target, body);
    if (request.method == "DELETE")
        return manager.deleteResource(target);
    if (request.method.empty() || request.method == "GET")
        return manager.get(target);
    return manager.sendCustomRequest(target, QByteArray::fromStdString(request.method), body);
}

/// Ends a reply whose body grows beyond `limit` bytes, of which no more than these are held.
void limit_answer(QNetworkReply& reply, qint64 limit) {
    if (limit <= 0)
        return;
    reply.setReadBufferSize(limit + 1);
    QObject::connect(&reply, &QNetworkReply::readyRead, &reply, [&reply, limit] {
        if (reply.bytesAvailable() <= limit)
            return;
        reply.setProperty(TOO_LONG, true);
        reply.abort();
    });
}

HttpResponse read_answer(QNetworkReply& reply, qint64 limit) {
    if (reply.property(TOO_LONG).toBool()) {
        HttpResponse response;
        response.error = "the answer is longer than " + std::to_string(limit) + " bytes";
        return response;
    }
    HttpResponse response = read_reply(reply);
    // The library's word for a stalled transfer, "canceled", would blame the user.
    if (reply.error() == QNetworkReply::OperationCanceledError)
        (response.status == 0 ? response.error : response.broken_off) =
            "the server stopped answering";
    return response;
}

void send_http(CorvelApp& app, QNetworkAccessManager& manager, const HttpRequest& request,
               std::function<void(const HttpResponse&)> done) {
    QNetworkRequest target(QUrl(QString::fromStdString(request.url)));
    target.setTransferTimeout(STALL_LIMIT_MS);
    if (!request.content_type.empty())
        target.setHeader(QNetworkRequest::ContentTypeHeader,
                         QString::fromStdString(request.content_type));
    set_headers(target, request.headers);
    const qint64 limit = request.max_answer;
    if (limit > 0) // what comes compressed could be any size
        target.setRawHeader("Accept-Encoding", "identity");
    QNetworkReply* reply = start(manager, target, request);
    limit_answer(*reply, limit);
    QObject::connect(reply, &QNetworkReply::finished, reply,
                     [&app, reply, limit, done = std::move(done)] {
                         const HttpResponse response = read_answer(*reply, limit);
                         reply->deleteLater();
                         if (done)
                             done(response);
                         notify_async_change(app);
                     });
}

} // namespace

void install_qt_http(CorvelApp& app) {
    auto* manager = new QNetworkAccessManager(QCoreApplication::instance());
    app.http = [&app, manager](const HttpRequest& request,
                               std::function<void(const HttpResponse&)> done) {
        send_http(app, *manager, request, std::move(done));
    };
}

} // namespace Corvel
