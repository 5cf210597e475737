#include "desktop/widgets/image_widget.h"

#include "desktop/media/asset_paths.h"
#include "desktop/widgets/painting.h"
#include "desktop/widgets/web_pictures.h"

#include <QFile>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QPainter>
#include <QUrl>

#include <cmath>

namespace Corvel {

ImageWidget::ImageWidget(const SharedStyle& node_style, QWidget* parent)
    : MediaWidget(parent)
    , style(node_style) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
    set_source(style->effective_source);
}

ImageWidget::~ImageWidget() = default;

void ImageWidget::apply_style(const SharedStyle& value) {
    const bool recolored = value->text_color != style->text_color;
    style = value;
    if (recolored && has_picture())
        reload();
    update();
}

void ImageWidget::reload() {
    if (svg_text.isEmpty())
        return;
    load_frame(style->text_color);
    update();
}

void ImageWidget::set_source(const std::string& value) {
    if (value == source && (!pixmap.isNull() || loading || has_picture()))
        return;
    source = value;
    loading = false;
    pixmap = QPixmap();
    scaled_ = QPixmap();
    close_document();
    load_frame({});
    if (is_web_url(source))
        load_remote();
    else if (!source.empty())
        load_file();
    update();
}

void ImageWidget::load_remote() {
    WebPictures& web = WebPictures::instance();
    const QString address = QString::fromStdString(source);
    if (const auto cached = web.pixmap_cache.constFind(address);
        cached != web.pixmap_cache.constEnd()) {
        pixmap = *cached;
        return;
    }
    loading = true;
    QNetworkReply* reply = web.web_manager.get(QNetworkRequest(QUrl(address)));
    connect(reply, &QNetworkReply::finished, this, [this, reply, address, wanted = source] {
        reply->deleteLater();
        QPixmap loaded;
        if (reply->error() == QNetworkReply::NoError && loaded.loadFromData(reply->readAll()))
            WebPictures::instance().pixmap_cache.insert(address, loaded);
        if (source != wanted)
            return;
        loading = false;
        if (loaded.isNull())
            return;
        pixmap = loaded;
        scaled_ = QPixmap();
        update();
    });
}

void ImageWidget::load_file() {
    const QString path = resolve_media_path(source);
    if (path.isEmpty())
        return;
    if (!path.endsWith(QLatin1String(".svg"), Qt::CaseInsensitive)) {
        pixmap = QPixmap(path);
        return;
    }
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return;
    open_document(QString::fromUtf8(file.readAll()), this, [this] { reload(); });
    reload();
}

QSize ImageWidget::natural_size() const {
    return has_picture() ? picture_size() : pixmap.size();
}

QRectF ImageWidget::media_fit_rect(QSize natural) const {
    return fit_rect(rect(), natural, style->fit == "Contain" || style->fit == "Aspect");
}

/// The pixmap at the size it is drawn at. Reducing it once, by averaging, both looks better and
/// costs less than having each repaint sample the original.
const QPixmap& ImageWidget::scaled_pixmap(QSizeF target) {
    const double ratio = devicePixelRatioF();
    const QSize wanted(std::max(1, int(std::lround(target.width() * ratio))),
                       std::max(1, int(std::lround(target.height() * ratio))));
    if (wanted.width() >= pixmap.width() || wanted.height() >= pixmap.height())
        return pixmap;
    if (scaled_.size() != wanted)
        scaled_ = pixmap.scaled(wanted, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    return scaled_;
}

void ImageWidget::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    apply_opacity(painter, opacity);
    const QPainterPath path = rounded_path(rect(), style);
    painter.setClipPath(path);
    paint_fill(painter, path, rect(), style->fill);
    if (!picture_size().isEmpty()) {
        draw_picture(painter, media_fit_rect(picture_size()));
    } else if (!pixmap.isNull()) {
        const QRectF target = media_fit_rect(pixmap.size());
        const QPixmap& picture = scaled_pixmap(target.size());
        painter.drawPixmap(target, picture, picture.rect());
    }
}

} // namespace Corvel
