#pragma once

#include <QIcon>

#include <string>

namespace Corvel {

/// The window icon in seven sizes from the icon directories: a PNG file if `name` ends in ".png",
/// an SVG icon otherwise. Null if nothing was found.
QIcon load_window_icon(const std::string& name);

} // namespace Corvel
