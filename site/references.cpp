#include "site/references.h"

#include "site/config_files.h"
#include "site/path_text.h"

#include <string_view>
#include <system_error>

namespace Lumenfold {

namespace fs = std::filesystem;

namespace {

bool is_file(const fs::path& path) {
    std::error_code error;
    return fs::is_regular_file(path, error);
}

} // namespace

fs::path resolve_reference(const std::string& reference, const fs::path& site_folder) {
    return comparable_path(site_folder / path_from_utf8(reference));
}

fs::path resolve_image(const fs::path& root, const std::string& reference) {
    const std::size_t start = reference.find_first_not_of('/');
    if (start == std::string::npos)
        return {};
    fs::path image = root / path_from_utf8(std::string_view(reference).substr(start));
    return is_file(image) ? image : fs::path();
}

fs::path find_site_above(const fs::path& folder) {
    std::error_code error;
    fs::path candidate = fs::absolute(folder, error).lexically_normal();
    while (!error) {
        if (is_file(candidate / SITE_FILE_NAME))
            return candidate;
        if (!candidate.has_relative_path())
            break;
        candidate = candidate.parent_path();
    }
    return folder;
}

fs::path resolve_project_logo(const fs::path& project_folder, const std::string& reference) {
    fs::path logo = resolve_image(find_site_above(project_folder), reference);
    return logo.empty() ? resolve_image(project_folder, reference) : logo;
}

} // namespace Lumenfold
