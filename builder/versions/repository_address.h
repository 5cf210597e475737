#pragma once

#include <string>
#include <string_view>

namespace Lumenfold::Builder {

/// Where a project's repository is shown on the web, from "repo" of its configuration.
struct RepositoryAddress {
    std::string url;      ///< "repo.url"; empty or no web address: there are no links
    std::string platform; ///< "repo.platform", as a person typed it; may be empty
    std::string tag;      ///< empty: whatever is newest
};

/// The web address of a file or folder, its `path` from the repository's root. The shape depends on
/// the platform, or else on the name of the host. Empty without a web address of the repository.
std::string repository_address(const RepositoryAddress& repository, std::string_view path,
                               bool is_folder);

} // namespace Lumenfold::Builder
