#pragma once

#include <QByteArray>
#include <QSet>
#include <QString>

#include <string>
#include <string_view>

namespace Corvel {

/// The SVG `text` with its shapes in the colour `tint`; text and result are UTF-8. A path, circle,
/// rect or ellipse takes the tint if it has an `id` that no comment `<!-- exclude="id ..." -->`
/// names and a `fill` other than "none"; of a gradient it is filled with, every stop takes it. All
/// else, and with an empty tint everything, stays as written.
QByteArray recolor_svg(std::string_view text, const std::string& tint);

/// The SVG `text` with every stop of the gradients in `names` (their ids) in the colour `tint`.
QString recolor_gradients(const QString& text, const QSet<QString>& names, const QString& tint);

} // namespace Corvel
