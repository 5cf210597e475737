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

void send_http(CorvelApp& app, QNetworkAccessManager& manager, const HttpRequest& request,
               std::function<void(const HttpResponse&)> done) {
    QNetworkRequest target(QUrl(QString::fromStdString(request.url)));
    target.setTransferTimeout(STALL_LIMIT_MS);
    if (!request.content_type.empty())
        target.setHeader(QNetworkRequest::ContentTypeHeader,
                         QString::fromStdString(request.content_type));
    set_headers(target, request.headers);
    QNetworkReply* reply = start(manager, target, request);
    QObject::connect(reply, &QNetworkReply::finished, reply, [&app, reply, done = std::move(done)] {
        const HttpResponse response = read_reply(*reply);
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
