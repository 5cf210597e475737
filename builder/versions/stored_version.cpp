#include "builder/versions/stored_version.h"

#include "builder/files/file_io.h"
#include "builder/versions/version_contents.h"
#include "site/config_files.h"
#include "site/path_text.h"

#include <nlohmann/json.hpp>

namespace Lumenfold::Builder {

namespace fs = std::filesystem;

namespace {

bool read_bodies(const fs::path& folder, const std::vector<std::size_t>& sizes,
                 StoredVersion& version) {
    const std::optional<std::string> pages = read_file(folder / PAGES_FILE);
    if (!pages || !add_bodies(version, *pages, sizes))
        return false;
    for (VersionFile& file : version.files) {
        std::optional<std::string> bytes = read_file(folder / path_from_utf8(file.path));
        if (!bytes)
            return false;
        file.bytes = std::move(*bytes);
    }
    return true;
}

bool read_sections(const fs::path& folder, StoredVersion& version) {
    const std::optional<std::string> search = read_file(folder / SEARCH_FILE);
    return search && add_sections(version, *search);
}

} // namespace

std::optional<StoredVersion> read_version(const fs::path& folder, Bodies bodies) {
    if (version_sign(folder).empty())
        return std::nullopt;
    const std::optional<std::string> text = read_file(folder / CONTENTS_FILE);
    std::vector<std::size_t> sizes;
    std::optional<StoredVersion> version = text ? parse_contents(*text, sizes) : std::nullopt;
    if (version && (!read_sections(folder, *version) ||
                    (bodies == Bodies::With && !read_bodies(folder, sizes, *version))))
        return std::nullopt;
    return version;
}

std::string version_sign(const fs::path& folder) {
    const std::optional<std::string> text = read_file(folder / BUILT_FILE_NAME);
    const std::optional<Json> record = text ? parse_json(*text) : std::nullopt;
    if (!record || !check_format(*record, nullptr) || text_at(*record, "tag").empty())
        return {};
    return text_at(*record, "content");
}

} // namespace Lumenfold::Builder
