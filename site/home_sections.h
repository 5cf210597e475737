#pragma once

#include "site/json_text.h"
#include "site/result.h"
#include "site/shown_record.h"

#include <filesystem>
#include <string>
#include <vector>

namespace Lumenfold {

/// The "type" of each home section in order, empty where it has none.
std::vector<std::string> read_home_sections(const std::filesystem::path& path);

Result add_home_section(const std::filesystem::path& path, const Json& section);
/// Moves a home section by `delta` places; stays idle if it would leave the list.
Result move_home_section(const std::filesystem::path& path, const ShownRecord& shown, int delta);
Result remove_home_section(const std::filesystem::path& path, const ShownRecord& shown);

/// `base`, or "section" if it is empty, with "-2", "-3", ... behind it while the id is taken.
std::string unique_section_id(const std::filesystem::path& path, const std::string& base);
/// Makes a custom section's HTML fragment, if it is missing. The section's "body" reference;
/// empty on failure, and for an id that is no slug.
std::string create_home_section_fragment(const std::filesystem::path& site_folder,
                                         const std::string& id);

} // namespace Lumenfold
