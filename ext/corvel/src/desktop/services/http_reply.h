#pragma once

#include "runtime/services.h"

#include <QNetworkReply>

namespace Corvel {

/// Whether a reply ended by an error of the transfer, not by an answer that tells one.
inline bool is_broken_off(QNetworkReply::NetworkError error) {
    return error != QNetworkReply::NoError && error < QNetworkReply::ContentAccessDenied;
}

/// What a finished reply says: status and body, or the error's words if there was no status.
inline HttpResponse read_reply(QNetworkReply& reply) {
    HttpResponse response;
    response.status = reply.attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    // A transfer that timed out has closed the reply already.
    if (reply.isOpen())
        response.body = reply.readAll().toStdString();
    if (reply.error() != QNetworkReply::NoError && response.status == 0)
        response.error = reply.errorString().toStdString();
    else if (is_broken_off(reply.error()))
        response.broken_off = reply.errorString().toStdString();
    return response;
}

/// Sets the headers in their order.
inline void set_headers(QNetworkRequest& request, const HeaderList& headers) {
    for (const auto& [name, value] : headers)
        request.setRawHeader(QByteArray::fromStdString(name), QByteArray::fromStdString(value));
}

} // namespace Corvel
