#pragma once

#include "runtime/render_node.h"

#include <QFont>
#include <QLabel>
#include <QSize>
#include <QString>

#include <array>
#include <cstddef>
#include <string>

namespace Corvel {

/// A plain-text label that asks for its text on one line and is wrapped by its layout: between
/// words, and within a word that is longer than the line. One that does not wrap ends in an
/// ellipsis where its room does, and tells the whole text in a tool tip.
class WrapLabel : public QLabel {
    Q_OBJECT
public:
    explicit WrapLabel(QWidget* parent = nullptr);
    ~WrapLabel() override;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;
    /// Layouts ask it time and again, and most texts fit on one line, which is measured once.
    int heightForWidth(int width) const override;

    /// Sets the text colour (empty: the palette's) and shows it.
    void set_color(const std::string& value);
    void set_opacity(double value);
    /// Brings the palette up to `color` and `opacity`.
    void restyle();

    QString color;
    double opacity = 1.0;

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void measure() const;
    bool is_elided() const;
    /// Whether a word is too long for a line of that width.
    bool breaks_words(int width) const;
    int measured_height(int width) const;

    mutable int word_width_ = 0; ///< of the longest word of `measured_text_`
    mutable QSize line_size_;    ///< of `measured_text_` on one line in `measured_font_`
    mutable std::array<QSize, 4> known_sizes_; ///< widths asked for last, with their heights
    mutable std::size_t next_known_ = 0;
    mutable QString measured_text_;
    mutable QFont measured_font_;
};

/// A label with the node's text, colour and font; `default_px` is the font's pixel size where the
/// style names none. The font is fixed here. Word wrap is left off. Owned by the caller until it
/// has a parent.
WrapLabel* make_label(const RenderNode& node, int default_px);

/// Gives `font` the family; "monospace" is the system's fixed-width one, empty changes nothing.
void set_line_font(QFont& font, const std::string& family);

} // namespace Corvel
