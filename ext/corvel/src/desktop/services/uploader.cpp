#include "desktop/services/uploader.h"

#include "desktop/services/async_change.h"
#include "desktop/services/http_reply.h"
#include "runtime/corvel_app.h"

#include <QApplication>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QHttpMultiPart>
#include <QMimeDatabase>
#include <QNetworkAccessManager>
#include <QUrl>

#include <utility>

namespace Corvel {

namespace {

using UploadHandler = std::function<void(const UploadResult&)>;

/// Where an upload goes and how.
struct UploadTarget {
    std::string method;
    std::string url;
    HeaderList headers;
    std::string field;
};

/// A quoted string of a header ends at its quotation mark; percent signs as in RFC 7578, section 2.
QString quotable(QString text) {
    text.replace(QLatin1Char('"'), QLatin1String("%22"));
    text.replace(QLatin1Char('\r'), QLatin1String("%0D"));
    text.replace(QLatin1Char('\n'), QLatin1String("%0A"));
    return text;
}

QHttpMultiPart* form_with(const QString& path, const QByteArray& bytes, const std::string& field) {
    QHttpPart part;
    part.setHeader(QNetworkRequest::ContentTypeHeader,
                   QMimeDatabase().mimeTypeForFile(path).name());
    part.setHeader(
        QNetworkRequest::ContentDispositionHeader,
        QStringLiteral("form-data; name=\"%1\"; filename=\"%2\"")
            .arg(quotable(QString::fromStdString(field)), quotable(QFileInfo(path).fileName())));
    part.setBody(bytes);
    auto* form = new QHttpMultiPart(QHttpMultiPart::FormDataType);
    form->append(part);
    return form;
}

void send_file(CorvelApp& app, QNetworkAccessManager& manager, const QString& path,
               const QByteArray& bytes, const UploadTarget& target, UploadHandler done) {
    QHttpMultiPart* form = form_with(path, bytes, target.field);
    QNetworkRequest request(QUrl(QString::fromStdString(target.url)));
    set_headers(request, target.headers);
    request.setTransferTimeout(0);
    QNetworkReply* reply =
        manager.sendCustomRequest(request, QByteArray::fromStdString(target.method), form);
    form->setParent(reply);
    QObject::connect(reply, &QNetworkReply::finished, reply, [&app, reply, done = std::move(done)] {
        const HttpResponse response = read_reply(*reply);
        reply->deleteLater();
        if (done)
            done({false, response.status, response.body, response.error});
        notify_async_change(app);
    });
}

void upload_file(CorvelApp& app, QNetworkAccessManager& manager, const std::string& accept,
                 const UploadTarget& target, UploadHandler done) {
    const auto answer = [&](const UploadResult& result) {
        if (done)
            done(result);
        notify_async_change(app);
    };
    const QString path =
        QFileDialog::getOpenFileName(QApplication::activeWindow(), QStringLiteral("Choose a file"),
                                     QString(), filter_for_accept(accept));
    if (path.isEmpty())
        return answer({true, 0, {}, {}});
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return answer({false, 0, {}, "Couldn't open the selected file."});
    const QByteArray bytes = file.readAll();
    file.close();
    send_file(app, manager, path, bytes, target, std::move(done));
}

} // namespace

QString filter_for_accept(const std::string& accept) {
    const bool images = accept.find("image/") != std::string::npos;
    const bool videos = accept.find("video/") != std::string::npos;
    if (images && !videos)
        return QStringLiteral("Images (*.jpg *.jpeg *.png *.webp *.gif);;All files (*)");
    if (videos && !images)
        return QStringLiteral("Videos (*.mp4 *.webm *.mov);;All files (*)");
    return QStringLiteral("All files (*)");
}

void install_qt_uploader(CorvelApp& app) {
    auto* manager = new QNetworkAccessManager(QCoreApplication::instance());
    app.uploader = [&app, manager](const std::string& method, const std::string& accept,
                                   const std::string& url, const HeaderList& headers,
                                   const std::string& field, UploadHandler done) {
        upload_file(app, *manager, accept, {method, url, headers, field}, std::move(done));
    };
}

} // namespace Corvel
