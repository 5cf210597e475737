#pragma once

#include <QHash>
#include <QNetworkAccessManager>
#include <QObject>
#include <QPixmap>
#include <QString>

namespace Corvel {

/// The process's way to pictures on the web. Made on first use, owned by the application object.
class WebPictures : public QObject {
public:
    static WebPictures& instance();

    QNetworkAccessManager web_manager;
    QHash<QString, QPixmap> pixmap_cache; ///< by address; nothing is ever dropped

private:
    explicit WebPictures(QObject* parent);
};

} // namespace Corvel
