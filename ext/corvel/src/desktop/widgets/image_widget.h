#pragma once

#include "desktop/widgets/media_widget.h"
#include "desktop/widgets/svg_document.h"

#include <QPixmap>
#include <QRectF>
#include <QSizeF>

#include <string>

namespace Corvel {

/// A picture: raster or SVG from a file, raster from the web. It covers its area unless the style's
/// fit says otherwise; a source that cannot be shown leaves the fill alone. Clicks fall through it.
class ImageWidget : public MediaWidget, public SvgDocument {
    Q_OBJECT
public:
    /// Shows the style's effective source.
    explicit ImageWidget(const SharedStyle& node_style, QWidget* parent = nullptr);
    ~ImageWidget() override;

    void apply_style(const SharedStyle& value) override;
    void set_source(const std::string& value) override;
    QSize natural_size() const override;

    QPixmap pixmap;
    std::string source;
    bool loading = false; ///< a request for `source` is on its way
    SharedStyle style;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void reload();
    void load_remote();
    void load_file();
    QRectF media_fit_rect(QSize natural) const;
    const QPixmap& scaled_pixmap(QSizeF target);

    QPixmap scaled_; ///< `pixmap` as last drawn, if smaller
};

} // namespace Corvel
