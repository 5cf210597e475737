#pragma once

#include "runtime/render_node.h"

#include <QSize>
#include <QWidget>

#include <string>

namespace Corvel {

/// What pictures and videos have in common: a source, a style, and a height that may follow the
/// width.
class MediaWidget : public QWidget {
    Q_OBJECT
public:
    explicit MediaWidget(QWidget* parent = nullptr);

    int heightForWidth(int width) const override;
    bool hasHeightForWidth() const override;

    virtual void apply_style(const SharedStyle& value) = 0;
    /// A web address, an absolute path or a path in the media directories; empty for none.
    virtual void set_source(const std::string& value) = 0;
    /// The size the medium itself has, invalid or empty if that is unknown.
    virtual QSize natural_size() const = 0;

    void set_opacity(double value);

    double opacity = 1.0;
    double aspect = 0; ///< width divided by height that the widget keeps; 0: none
};

} // namespace Corvel
