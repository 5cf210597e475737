#pragma once

#include "style_tree.h"

#include <string>
#include <string_view>

namespace CorvelLint {

/// What somebody who wrote `path` for a layer, or for an attribute, in a layer inside `from` most
/// likely meant, as a remedy; empty if nothing is near. Paths are looked up from the window or
/// dialog around, then from the root.
std::string suggest_layer(const StyleTree& tree, const Layers::LLayer& from, std::string_view path);
std::string suggest_attribute(const StyleTree& tree, const Layers::LLayer& from,
                              std::string_view path);

} // namespace CorvelLint
