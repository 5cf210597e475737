#include "start/window_icon.h"

#include "desktop/media/asset_paths.h"

#include <QIconEngine>
#include <QImage>
#include <QImageReader>
#include <QPainter>
#include <QPixmap>
#include <QSvgRenderer>

#include <algorithm>
#include <iterator>
#include <map>
#include <string>
#include <utility>

namespace Corvel {
namespace {

constexpr int SIZES[] = {16, 24, 32, 48, 64, 128, 256};

QImage fitted(const QImage& picture, int side) {
    return picture.scaled(side, side, Qt::KeepAspectRatio, Qt::SmoothTransformation);
}

/// Reads the picture when a size is first asked for, and scales for each size that is.
class WindowIconEngine : public QIconEngine {
public:
    explicit WindowIconEngine(std::string name)
        : name_(std::move(name)) {}

    QPixmap pixmap(const QSize& size, QIcon::Mode, QIcon::State) override {
        const int side = std::min(size.width(), size.height());
        QPixmap& known = pixmaps_[side];
        if (known.isNull() && side > 0)
            known = QPixmap::fromImage(is_png() ? scaled(side) : drawn(side));
        return known;
    }
    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode,
               QIcon::State state) override {
        painter->drawPixmap(rect, pixmap(rect.size(), mode, state));
    }
    QList<QSize> availableSizes(QIcon::Mode, QIcon::State) override {
        QList<QSize> sizes;
        for (const int side : SIZES)
            sizes.append({side, side});
        return sizes;
    }
    QIconEngine* clone() const override { return new WindowIconEngine(*this); }

private:
    bool is_png() const {
        return QString::fromStdString(name_).endsWith(QLatin1String(".png"), Qt::CaseInsensitive);
    }
    QImage scaled(int side) {
        if (picture_.isNull() && picture_.load(QString::fromStdString(resolve_icon_path(name_))))
            picture_ = fitted(picture_, SIZES[std::size(SIZES) - 1]);
        return picture_.isNull() ? QImage() : fitted(picture_, side);
    }
    QImage drawn(int side) const {
        QSvgRenderer renderer(load_icon_text(name_).toUtf8());
        QImage image(side, side, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        renderer.render(&painter);
        return image;
    }

    std::string name_;
    QImage picture_;
    std::map<int, QPixmap> pixmaps_; ///< by side
};

} // namespace

QIcon load_window_icon(const std::string& name) {
    const bool png =
        QString::fromStdString(name).endsWith(QLatin1String(".png"), Qt::CaseInsensitive);
    const bool there = png ? QImageReader(QString::fromStdString(resolve_icon_path(name))).canRead()
                           : !load_icon_text(name).isEmpty();
    return there ? QIcon(new WindowIconEngine(name)) : QIcon();
}

} // namespace Corvel
