#pragma once

#include <filesystem>
#include <string>

namespace Lumenfold {

/// Makes a site's folders and configuration in `folder`. An empty title means "My Site". On
/// failure false, with words for the user in `error`; folders made so far stay.
bool create_site(const std::filesystem::path& folder, const std::string& title, std::string* error);

} // namespace Lumenfold
