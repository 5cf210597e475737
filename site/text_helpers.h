#pragma once

#include <string>
#include <string_view>

namespace Lumenfold {

/// Without blanks and tabs at both ends; line ends stay.
std::string trim(std::string_view text);

} // namespace Lumenfold
