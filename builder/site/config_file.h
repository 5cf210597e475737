#pragma once

#include "site/json_file.h"

#include <nlohmann/json.hpp>

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Lumenfold::Builder {

/// A configuration file as it was read: the document, and its text to find lines in.
struct ConfigFile {
    std::filesystem::path path;
    std::string name; ///< as messages name it: relative to the site's folder where it lies below
    std::string text;
    Json json; ///< an object

    /// The first line on which `value` stands as a string; 0 if it does not stand there as it is.
    std::size_t line_of(std::string_view value) const;
};

/// Reads a configuration. Nothing, with words in `problem` and the line of a mistake in `line`, if
/// it cannot be read, is no JSON object, or has a later format.
std::optional<ConfigFile> read_config_file(const std::filesystem::path& path, std::string name,
                                           std::string& problem, std::size_t& line);

/// How messages name a path: relative to `site_folder` if it lies below, otherwise as it is.
std::string shown_path(const std::filesystem::path& path, const std::filesystem::path& site_folder);

/// The objects of the array under `key`; empty for anything else.
std::vector<const Json*> objects_at(const Json& json, const char* key);
/// The object under `key`; an empty one for anything else.
const Json& object_at(const Json& json, const char* key);
/// Whether `key` holds true.
bool flag_at(const Json& json, const char* key, bool otherwise = false);

} // namespace Lumenfold::Builder
