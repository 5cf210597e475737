#pragma once

#include <filesystem>
#include <string>

namespace Lumenfold {

/// What a project's configuration says of it; all empty for a file that cannot be read.
struct ProjectInfo {
    std::string slug;
    std::string name;
    std::string tagline;
    std::string parent_slug;
    std::string family_label;
    std::string logo;
    /// Why the file is there and cannot be read; empty for one that can, or is not there.
    std::string problem;
    /// False when "slug" is there and no string.
    bool slug_is_text = true;
};

/// Reads the project that `reference` means, relative to `site_root`. What a file said is
/// remembered until it changes: a list of a thousand projects asks for all of them after each
/// change.
ProjectInfo read_project_info(const std::string& reference, const std::filesystem::path& site_root);

/// The same for a configuration's path.
ProjectInfo read_project_info(const std::filesystem::path& file);

} // namespace Lumenfold
