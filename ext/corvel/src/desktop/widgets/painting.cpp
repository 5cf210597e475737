#include "desktop/widgets/painting.h"

#include <QLinearGradient>
#include <QPainter>
#include <QString>
#include <QStringView>

#include <algorithm>

namespace Corvel {

QColor color_of(const std::string& text) {
    return text.empty() ? QColor()
                        : QColor::fromString(QLatin1String(text.data(), qsizetype(text.size())));
}

QPainterPath rounded_path(const QRectF& rect, const NodeStyle& style) {
    const double tl = style.radius_top_left;
    const double tr = style.radius_top_right;
    const double br = style.radius_bottom_right;
    const double bl = style.radius_bottom_left;
    QPainterPath path;
    if (tl <= 0 && tr <= 0 && br <= 0 && bl <= 0) {
        path.addRect(rect);
        return path;
    }
    path.moveTo(rect.left() + tl, rect.top());
    path.lineTo(rect.right() - tr, rect.top());
    path.arcTo(rect.right() - 2 * tr, rect.top(), 2 * tr, 2 * tr, 90, -90);
    path.lineTo(rect.right(), rect.bottom() - br);
    path.arcTo(rect.right() - 2 * br, rect.bottom() - 2 * br, 2 * br, 2 * br, 0, -90);
    path.lineTo(rect.left() + bl, rect.bottom());
    path.arcTo(rect.left(), rect.bottom() - 2 * bl, 2 * bl, 2 * bl, 270, -90);
    path.lineTo(rect.left(), rect.top() + tl);
    path.arcTo(rect.left(), rect.top(), 2 * tl, 2 * tl, 180, -90);
    path.closeSubpath();
    return path;
}

QGradientStops parse_stops(const std::string& text) {
    QGradientStops stops;
    const QString whole = QString::fromStdString(text);
    for (const QStringView part : QStringView(whole).split(QLatin1Char(','), Qt::SkipEmptyParts)) {
        const qsizetype colon = part.indexOf(QLatin1Char(':'));
        if (colon < 0)
            continue;
        stops.append(
            {part.first(colon).toDouble(), QColor::fromString(part.sliced(colon + 1).trimmed())});
    }
    return stops;
}

QBrush fill_brush(const QRectF& rect, const Fill& fill) {
    if (!fill.gradient) {
        const QColor color = color_of(fill.text);
        return color.isValid() ? QBrush(color) : QBrush();
    }
    QLinearGradient gradient(rect.topLeft(), rect.bottomLeft());
    bool any = false;
    for (const auto& [offset, color] : parse_stops(fill.text)) {
        if (!color.isValid() || !(offset >= 0 && offset <= 1))
            continue;
        gradient.setColorAt(offset, color);
        any = true;
    }
    return any ? QBrush(gradient) : QBrush();
}

void paint_fill(QPainter& painter, const QPainterPath& path, const QRectF& rect, const Fill& fill) {
    const QBrush brush = fill_brush(rect, fill);
    if (brush.style() != Qt::NoBrush)
        painter.fillPath(path, brush);
}

void apply_opacity(QPainter& painter, double opacity) {
    if (opacity < 1.0)
        painter.setOpacity(std::max(opacity, 0.0));
}

QRectF fit_rect(const QRectF& bounds, QSize natural, bool contain) {
    const QSizeF scaled = QSizeF(natural).scaled(
        bounds.size(), contain ? Qt::KeepAspectRatio : Qt::KeepAspectRatioByExpanding);
    QRectF target(QPointF(), scaled);
    target.moveCenter(bounds.center());
    return target;
}

bool is_web_url(const std::string& text) {
    return text.starts_with("http://") || text.starts_with("https://");
}

} // namespace Corvel
