#include "desktop/widgets/wrap_label.h"

#include "desktop/widgets/sizing.h"

#include <QApplication>
#include <QColor>
#include <QFont>
#include <QFontMetrics>
#include <QMargins>
#include <QPalette>

#include <algorithm>

namespace Corvel {

WrapLabel::WrapLabel(QWidget* parent)
    : QLabel(parent) {
    // What people type is never markup.
    setTextFormat(Qt::PlainText);
}

WrapLabel::~WrapLabel() = default;

QSize WrapLabel::sizeHint() const {
    if (!wordWrap())
        return QLabel::sizeHint();
    ensurePolished();
    if (measured_text_ != text() || measured_font_ != font()) {
        measured_text_ = text();
        measured_font_ = font();
        line_size_ = fontMetrics().size(Qt::TextSingleLine, measured_text_);
    }
    const QMargins contents = contentsMargins();
    return line_size_ + QSize(2 * margin() + contents.left() + contents.right(),
                              2 * margin() + contents.top() + contents.bottom());
}

int WrapLabel::heightForWidth(int width) const {
    if (wordWrap() && !text().contains(QLatin1Char('\n'))) {
        const QSize line = sizeHint();
        if (width >= line.width())
            return line.height();
    }
    return QLabel::heightForWidth(width);
}

void WrapLabel::set_color(const std::string& value) {
    color = QString::fromStdString(value);
    restyle();
}

void WrapLabel::set_opacity(double value) {
    if (opacity == value)
        return;
    opacity = value;
    restyle();
}

void WrapLabel::restyle() {
    QColor shown = color.isEmpty() ? QColor() : QColor::fromString(color);
    if (opacity < 1 && !shown.isValid())
        shown = QApplication::palette(this).color(QPalette::WindowText);
    if (!shown.isValid()) {
        setPalette({});
        return;
    }
    if (opacity < 1)
        shown.setAlphaF(float(shown.alphaF() * std::max(opacity, 0.0)));
    QPalette colors;
    colors.setColor(QPalette::WindowText, shown);
    setPalette(colors);
}

WrapLabel* make_label(const RenderNode& node, int default_px) {
    const NodeStyle& style = node.style;
    auto* label = new WrapLabel;
    label->setText(QString::fromStdString(node.text));
    label->set_color(style.text_color);
    QFont font = label->font();
    const int pixels = whole_pixels(style.font_size);
    const int weight = whole_pixels(style.font_weight);
    font.setPixelSize(pixels > 0 ? pixels : default_px);
    font.setWeight(weight > 0 ? QFont::Weight(std::clamp(weight, 1, 1000)) : QFont::Normal);
    set_line_font(font, style.font_family);
    label->setFont(font);
    return label;
}

void set_line_font(QFont& font, const std::string& family) {
    if (family.empty())
        return;
    if (family == "monospace")
        font.setStyleHint(QFont::Monospace);
    font.setFamily(QString::fromStdString(family));
}

} // namespace Corvel
