#include "desktop/widgets/wrap_label.h"

#include "desktop/widgets/sizing.h"

#include <QApplication>
#include <QColor>
#include <QFont>
#include <QFontMetrics>
#include <QHelpEvent>
#include <QMargins>
#include <QPainter>
#include <QPalette>
#include <QTextLayout>
#include <QToolTip>

#include <algorithm>
#include <cmath>

namespace Corvel {

namespace {

/// No wrapped label needs more than this to show all of its text, in pixels.
constexpr int SMALLEST_WIDTH = 64;

QString with_line_separators(QString text) {
    return text.replace(QLatin1Char('\n'), QChar(QChar::LineSeparator));
}

/// Lays the text out in lines of that width and returns their height.
int break_lines(QTextLayout& layout, int width, int word_width) {
    // Each line seeks a boundary through the rest of its word.
    constexpr int OVERLONG = 50'000;
    QTextOption option;
    option.setWrapMode(word_width > OVERLONG ? QTextOption::WrapAnywhere
                                             : QTextOption::WrapAtWordBoundaryOrAnywhere);
    layout.setTextOption(option);
    layout.beginLayout();
    double height = 0;
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(std::max(width, 1));
        line.setPosition(QPointF(0, height));
        height += line.height();
    }
    layout.endLayout();
    return int(std::ceil(height));
}

} // namespace

WrapLabel::WrapLabel(QWidget* parent)
    : QLabel(parent) {
    // What people type is never markup.
    setTextFormat(Qt::PlainText);
}

WrapLabel::~WrapLabel() = default;

QSize WrapLabel::sizeHint() const {
    if (!wordWrap())
        return QLabel::sizeHint();
    measure();
    const QMargins contents = contentsMargins();
    return line_size_ + QSize(2 * margin() + contents.left() + contents.right(),
                              2 * margin() + contents.top() + contents.bottom());
}

void WrapLabel::measure() const {
    ensurePolished();
    if (measured_text_ == text() && measured_font_ == font())
        return;
    measured_text_ = text();
    measured_font_ = font();
    line_size_ = fontMetrics().size(Qt::TextSingleLine, measured_text_);
    word_width_ = QLabel::minimumSizeHint().width();
    known_sizes_.fill(QSize());
}

QSize WrapLabel::minimumSizeHint() const {
    const QSize size = QLabel::minimumSizeHint();
    return wordWrap() ? QSize(std::min(size.width(), SMALLEST_WIDTH), size.height()) : size;
}

bool WrapLabel::breaks_words(int width) const {
    if (!wordWrap())
        return false;
    measure();
    return width < word_width_;
}

bool WrapLabel::is_elided() const {
    return !wordWrap() && !text().contains(QLatin1Char('\n')) &&
           fontMetrics().horizontalAdvance(text()) > contentsRect().width() + 1;
}

bool WrapLabel::event(QEvent* event) {
    if (event->type() == QEvent::ToolTip && is_elided()) {
        QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), text(), this);
        return true;
    }
    return QLabel::event(event);
}

void WrapLabel::paintEvent(QPaintEvent* event) {
    const QRect room = contentsRect();
    const bool broken = breaks_words(room.width());
    if (!broken && !is_elided())
        return QLabel::paintEvent(event);
    QPainter painter(this);
    painter.setPen(palette().color(foregroundRole()));
    if (broken) {
        QTextLayout lines(with_line_separators(text()), font());
        const int height = break_lines(lines, room.width(), word_width_);
        lines.draw(&painter, QPointF(room.left(), room.top() + (room.height() - height) / 2));
        return;
    }
    painter.drawText(room, int(alignment()) | Qt::TextSingleLine,
                     fontMetrics().elidedText(text(), Qt::ElideRight, room.width()));
}

int WrapLabel::heightForWidth(int width) const {
    if (!wordWrap())
        return QLabel::heightForWidth(width);
    measure();
    for (const QSize& known : known_sizes_)
        if (known.width() == width)
            return known.height();
    const int height = measured_height(width);
    known_sizes_[next_known_++ % known_sizes_.size()] = {width, height};
    return height;
}

int WrapLabel::measured_height(int width) const {
    if (breaks_words(width)) {
        QTextLayout lines(with_line_separators(text()), font());
        return break_lines(lines, width, word_width_);
    }
    if (!text().contains(QLatin1Char('\n'))) {
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
