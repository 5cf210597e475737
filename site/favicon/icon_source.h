#pragma once

#include <QColor>
#include <QImage>
#include <QSizeF>
#include <QSvgRenderer>

#include <string>

namespace Lumenfold {

/// The image that icons are made of: an SVG, by its file extension, or a raster image.
class IconSource {
public:
    /// Reads the file at `path` (UTF-8). Returns an error text, empty on success.
    std::string load(const std::string& path);

    /// The image in the middle of a square of `size` pixels, as large as fits, on `background`.
    QImage render_square(int size, const QColor& background);

private:
    bool load_svg(const QString& path);
    bool load_raster(const QString& path);

    QSvgRenderer svg_;
    QImage raster_;
    QSizeF size_;
};

} // namespace Lumenfold
