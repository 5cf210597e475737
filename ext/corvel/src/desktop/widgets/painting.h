#pragma once

#include "layers/node_style.h"

#include <QBrush>
#include <QColor>
#include <QGradientStops>
#include <QPainterPath>
#include <QRectF>
#include <QSize>

#include <string>

class QPainter;

namespace Corvel {

/// A colour as styles write it ("#rgb", "#rrggbb", "#aarrggbb" or a name); invalid if unreadable.
QColor color_of(const std::string& text);

/// `rect` with the four corner radii of `style`.
QPainterPath rounded_path(const QRectF& rect, const NodeStyle& style);

/// The stops of a gradient text "offset:colour,offset:colour", in its order. A part without ":" is
/// skipped; an unreadable colour is kept as an invalid one.
QGradientStops parse_stops(const std::string& text);

/// The brush of a fill over `rect`, gradients from its top to its bottom; no brush if there is
/// nothing to paint.
QBrush fill_brush(const QRectF& rect, const Fill& fill);

/// Fills `path` with the style's fill, laid over `rect`.
void paint_fill(QPainter& painter, const QPainterPath& path, const QRectF& rect, const Fill& fill);

/// Sets the painter's opacity to `opacity`, negative values counting as 0.
void apply_opacity(QPainter& painter, double opacity);

/// `natural` scaled to `bounds` and centred in it: whole within for `contain`, else covering it.
QRectF fit_rect(const QRectF& bounds, QSize natural, bool contain);

/// Whether `text` begins with "http://" or "https://".
bool is_web_url(const std::string& text);

} // namespace Corvel
