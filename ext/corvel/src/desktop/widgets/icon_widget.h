#pragma once

#include "desktop/widgets/svg_document.h"

#include <QWidget>

#include <string>

namespace Corvel {

/// An icon of the icon directories in a tint, possibly moving. Clicks fall through it.
class IconWidget : public QWidget, public SvgDocument {
    Q_OBJECT
public:
    /// Loads the text of the icon `name`; the picture appears with `set_color` or `reload`.
    explicit IconWidget(const std::string& name, QWidget* parent = nullptr);
    ~IconWidget() override;

    /// Renders the present frame anew, in the present tint.
    void reload();
    /// Shows another icon; nothing happens if it is the present one.
    void set_source(const std::string& name);
    /// Sets the tint (empty: the icon's own colours) and renders anew.
    void set_color(const std::string& tint);
    void set_fit(const std::string& value);
    void set_rotation(double degrees);
    void set_opacity(double value);

    std::string source;  ///< icon name
    std::string color;   ///< tint
    std::string fit;     ///< empty: stretched; "Contain", "Aspect": whole; else covering
    double rotation = 0; ///< degrees, clockwise
    double opacity = 1.0;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void open_source();
};

} // namespace Corvel
