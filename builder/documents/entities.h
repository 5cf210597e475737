#pragma once

#include <string>
#include <string_view>

namespace Lumenfold::Builder {

/// Appends what an entity ("&copy;", "&#169;", "&#xA9;") stands for; one that nobody knows as it
/// stands. Control characters become U+FFFD, so that none comes into a page this way.
void append_entity(std::string& text, std::string_view entity);

} // namespace Lumenfold::Builder
