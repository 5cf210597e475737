#pragma once

#include <string>
#include <string_view>

namespace Lumenfold::Builder {

/// The media type (RFC 6838) of a file by the end of its name, with "charset=utf-8" for texts.
std::string content_type(std::string_view path);

} // namespace Lumenfold::Builder
