#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace CorvelLint {

/// Whether views understand a text as a colour: a name of SVG 1.0, "transparent", or "#" with
/// three, six, or eight digits, the opacity first.
bool is_color(std::string_view text);

/// The names of colours.
const std::vector<std::string>& color_names();

extern const std::string_view COLOR_HELP;

} // namespace CorvelLint
