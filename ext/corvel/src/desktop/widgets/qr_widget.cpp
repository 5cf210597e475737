#include "desktop/widgets/qr_widget.h"

#include "desktop/widgets/painting.h"

#include <qrcodegen/qrcodegen.hpp>

#include <QPainter>

#include <algorithm>
#include <exception>

namespace Corvel {

namespace {

/// A square module with each corner rounded or not.
struct Corners {
    bool top_left;
    bool top_right;
    bool bottom_right;
    bool bottom_left;
};

void add_module(QPainterPath& path, const QRectF& cell, double radius, const Corners& round) {
    const double d = 2 * radius;
    const double left = cell.left();
    const double top = cell.top();
    const double right = cell.right();
    const double bottom = cell.bottom();
    path.moveTo(left + (round.top_left ? radius : 0), top);
    path.lineTo(right - (round.top_right ? radius : 0), top);
    if (round.top_right)
        path.arcTo(right - d, top, d, d, 90, -90);
    path.lineTo(right, bottom - (round.bottom_right ? radius : 0));
    if (round.bottom_right)
        path.arcTo(right - d, bottom - d, d, d, 0, -90);
    path.lineTo(left + (round.bottom_left ? radius : 0), bottom);
    if (round.bottom_left)
        path.arcTo(left, bottom - d, d, d, 270, -90);
    path.lineTo(left, top + (round.top_left ? radius : 0));
    if (round.top_left)
        path.arcTo(left, top, d, d, 180, -90);
    path.closeSubpath();
}

/// The dark modules of a code as one path, joined into blobs.
QPainterPath module_path(const std::vector<std::uint8_t>& modules, int size, QPointF origin,
                         double side) {
    const auto dark = [&](int col, int row) {
        return col >= 0 && row >= 0 && col < size && row < size &&
               modules[std::size_t(row) * std::size_t(size) + std::size_t(col)] != 0;
    };
    const double m = side / size;
    QPainterPath path;
    path.setFillRule(Qt::WindingFill);
    for (int row = 0; row < size; ++row) {
        for (int col = 0; col < size; ++col) {
            if (!dark(col, row))
                continue;
            const bool up = dark(col, row - 1);
            const bool down = dark(col, row + 1);
            const bool left = dark(col - 1, row);
            const bool right = dark(col + 1, row);
            add_module(path, {origin.x() + col * m, origin.y() + row * m, m, m}, 0.35 * m,
                       {!up && !left, !up && !right, !down && !right, !down && !left});
        }
    }
    return path;
}

} // namespace

QrWidget::QrWidget(QWidget* parent)
    : QWidget(parent) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
}

QrWidget::~QrWidget() = default;

void QrWidget::set_data(const std::string& text) {
    if (text == data && (text.empty() || size > 0))
        return;
    data = text;
    size = 0;
    modules.clear();
    update();
    if (text.empty())
        return;
    try {
        const auto code =
            qrcodegen::QrCode::encodeText(text.c_str(), qrcodegen::QrCode::Ecc::MEDIUM);
        const int side = code.getSize();
        modules.reserve(std::size_t(side) * std::size_t(side));
        for (int y = 0; y < side; ++y)
            for (int x = 0; x < side; ++x)
                modules.push_back(code.getModule(x, y) ? 1 : 0);
        size = side;
    } catch (const std::exception&) {
        modules.clear(); // too long for a code
    }
}

void QrWidget::set_style(const SharedStyle& value) {
    style = value;
    update();
}

void QrWidget::set_opacity(double value) {
    if (opacity == value)
        return;
    opacity = value;
    update();
}

void QrWidget::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    apply_opacity(painter, opacity);
    const QRectF area = rect();
    const QPainterPath path = rounded_path(area, style);
    painter.setClipPath(path);
    paint_fill(painter, path, area, style->fill);
    const double width = area.width() - style->padding_left - style->padding_right;
    const double height = area.height() - style->padding_top - style->padding_bottom;
    const double side = std::min(width, height);
    if (size <= 0 || side <= 0)
        return;
    const QPointF origin(style->padding_left + (width - side) * 0.5,
                         style->padding_top + (height - side) * 0.5);
    const QColor color = color_of(style->text_color);
    painter.fillPath(module_path(modules, size, origin, side),
                     color.isValid() ? color : QColor(Qt::black));
}

} // namespace Corvel
