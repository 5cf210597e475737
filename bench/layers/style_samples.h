#pragma once

#include <cstddef>
#include <string>

namespace LayersBench {

/// A style file of at least `size` bytes, the same for each call: a theme, prototypes, and then
/// panels as people write them - layers of 5 to 15 attributes that inherit from the prototypes,
/// with groups, expansions, states and links. It has no faults.
std::string style_file(std::size_t size);

} // namespace LayersBench
