#include "site/favicon/icon_source.h"

#include <QFile>
#include <QPainter>
#include <QString>
#include <QStringList>
#include <QXmlStreamReader>

namespace Lumenfold {

namespace {

/// Whether a length attribute is above zero in a unit of its own.
bool is_length(QStringView text) {
    while (!text.isEmpty() && text.back().isLetter())
        text.chop(1);
    return text.trimmed().toDouble() > 0;
}

bool is_view_box(QStringView text) {
    const QString numbers =
        text.toString().replace(QLatin1Char(','), QLatin1Char(' ')).simplified();
    const QStringList parts = numbers.split(QLatin1Char(' '));
    return parts.size() == 4 && parts[2].toDouble() > 0 && parts[3].toDouble() > 0;
}

/// Whether an SVG's root gives its size: Qt makes one up from the shapes otherwise. A compressed
/// file, which is no XML to us, passes.
bool has_own_size(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    QXmlStreamReader reader(&file);
    if (!reader.readNextStartElement())
        return true;
    const QXmlStreamAttributes root = reader.attributes();
    return is_view_box(root.value(QLatin1String("viewBox"))) ||
           (is_length(root.value(QLatin1String("width"))) &&
            is_length(root.value(QLatin1String("height"))));
}

} // namespace

std::string IconSource::load(const std::string& path) {
    const QString name = QString::fromStdString(path);
    if (name.endsWith(QLatin1String(".svg"), Qt::CaseInsensitive))
        return load_svg(name) ? std::string() : "Could not read " + path + " as an SVG.";
    return load_raster(name) ? std::string() : "Could not read " + path + " as an image.";
}

bool IconSource::load_svg(const QString& path) {
    if (!svg_.load(path) || svg_.defaultSize().isEmpty() || !has_own_size(path))
        return false;
    size_ = svg_.defaultSize();
    return true;
}

bool IconSource::load_raster(const QString& path) {
    if (!raster_.load(path) || raster_.size().isEmpty())
        return false;
    size_ = raster_.size();
    return true;
}

QImage IconSource::render_square(int size, const QColor& background) {
    QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
    image.fill(background);
    if (size_.isEmpty())
        return image;
    const QSizeF scaled = size_.scaled(size, size, Qt::KeepAspectRatio);
    const QRectF target((size - scaled.width()) * 0.5, (size - scaled.height()) * 0.5,
                        scaled.width(), scaled.height());
    QPainter painter(&image);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    if (raster_.isNull()) {
        svg_.render(&painter, target);
        return image;
    }
    // Painting looks at four pixels of the source for one of the target, so a much larger image
    // is averaged down first.
    const QSize twice = (scaled * 2).toSize().expandedTo(QSize(1, 1));
    if (raster_.width() > twice.width() && raster_.height() > twice.height())
        painter.drawImage(target,
                          raster_.scaled(twice, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
    else
        painter.drawImage(target, raster_);
    return image;
}

} // namespace Lumenfold
