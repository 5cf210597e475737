#include "desktop/widgets/web_pictures.h"

#include <QCoreApplication>
#include <QPointer>

namespace Corvel {

WebPictures::WebPictures(QObject* parent)
    : QObject(parent) {}

WebPictures& WebPictures::instance() {
    static QPointer<WebPictures> pictures;
    if (!pictures)
        pictures = new WebPictures(QCoreApplication::instance());
    return *pictures;
}

} // namespace Corvel
