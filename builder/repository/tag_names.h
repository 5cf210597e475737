#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace Lumenfold::Builder {

/// The names of a repository's tags that have no "/" in them, each once, in the order of their
/// bytes; nothing if they cannot be read. `shared_folder` is where git keeps "packed-refs" and
/// "refs/tags". What a name means is for libgit2 to say, which would read each tag's file to list
/// it.
std::optional<std::vector<std::string>> tag_names(const std::filesystem::path& shared_folder);

} // namespace Lumenfold::Builder
