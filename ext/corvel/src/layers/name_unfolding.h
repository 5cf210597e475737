#pragma once

#include "layers/syntax_tree.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace Layers {

/// Whether a name stands for exactly one text: every part is one word or phrase.
bool is_plain(const NameNode& name);

/// The one text of a plain name, in `buffer` or where the source has it.
std::string_view plain_text(const NameNode& name, std::string& buffer);

/// Whether a name stands for any text at all.
bool stands_for_something(const NameNode& name);

/// All texts of a name, the product of its parts' alternatives with the last part varying fastest:
/// "(Top, Bottom) (Left, Right)" gives Top Left, Top Right, Bottom Left, Bottom Right. Empty texts
/// are left out. Nothing if they might take more than `limit` bytes together.
std::vector<std::string> unfold(const NameNode& name, std::size_t limit);

} // namespace Layers
