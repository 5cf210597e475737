#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace Lumenfold::Builder {

/// The part of an absolute address that lies within the site of `site_url`, beginning with "/";
/// nothing if it leads elsewhere.
std::optional<std::string> address_within_site(std::string_view address, std::string_view site_url);

/// The file of the site that a path from its root means: a folder's is its "index.html", so that
/// links hold without a server too. Query and anchor stay.
std::string site_file_address(std::string_view address);

} // namespace Lumenfold::Builder
