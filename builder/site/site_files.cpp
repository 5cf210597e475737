#include "builder/site/site_files.h"

#include "site/path_text.h"

#include <array>
#include <system_error>

namespace Lumenfold::Builder {

namespace fs = std::filesystem;

namespace {

constexpr const char* CUSTOM_CSS = "custom.css";
constexpr const char* FAVICON_FOLDER = "favicon";

struct FaviconFile {
    const char* name;
    const char* rel; ///< empty: copied only
    const char* type;
    const char* sizes;
};

// What the application generates into the site's folder "favicon".
constexpr std::array<FaviconFile, 6> FAVICONS{{
    {"favicon.ico", "icon", "image/x-icon", "48x48"},
    {"favicon-16x16.png", "icon", "image/png", "16x16"},
    {"favicon-32x32.png", "icon", "image/png", "32x32"},
    {"apple-touch-icon.png", "apple-touch-icon", "", "180x180"},
    {"android-chrome-192x192.png", "icon", "image/png", "192x192"},
    {"android-chrome-512x512.png", "", "", ""},
}};

bool is_file(const fs::path& path) {
    std::error_code error;
    return fs::is_regular_file(path, error);
}

fs::path favicon_path(const SiteConfig& config, const FaviconFile& file) {
    return config.folder / FAVICON_FOLDER / file.name;
}

bool wants_favicons(const SiteConfig& config) {
    const Json& branding = object_at(config.file.json, "branding");
    return flag_at(branding, "favicon_from_logo") || !text_at(branding, "favicon_source").empty();
}

} // namespace

std::vector<FaviconView> favicon_views(const SiteConfig& config, Messages& messages) {
    std::vector<FaviconView> views;
    bool missing = false;
    for (const FaviconFile& file : FAVICONS) {
        if (!is_file(favicon_path(config, file)))
            missing = true;
        else if (*file.rel != '\0')
            views.push_back({file.rel, file.type, file.sizes,
                             ROOT_MARK + std::string(FAVICON_FOLDER) + "/" + file.name});
    }
    if (missing && wants_favicons(config))
        messages.push_back(
            {Severity::Info, config.file.name, 0,
             "favicon/ lacks icons of the set. Open the site in Lumenfold and choose "
             "the logo or favicon again to make them."});
    return views;
}

bool has_custom_css(const SiteConfig& config) {
    return is_file(config.folder / CUSTOM_CSS);
}

std::vector<std::string> optional_files() {
    std::vector<std::string> files{CUSTOM_CSS};
    for (const FaviconFile& file : FAVICONS)
        files.push_back(std::string(FAVICON_FOLDER) + "/" + file.name);
    return files;
}

std::vector<SiteFile> site_files(const SiteConfig& config, const SiteAddresses& addresses) {
    std::vector<SiteFile> files;
    for (const std::string& path : addresses.used_files())
        files.push_back({path, config.folder / path_from_utf8(path)});
    for (const FaviconFile& file : FAVICONS)
        if (is_file(favicon_path(config, file)))
            files.push_back(
                {std::string(FAVICON_FOLDER) + "/" + file.name, favicon_path(config, file)});
    // Where browsers look that were told nothing.
    if (is_file(favicon_path(config, FAVICONS[0])))
        files.push_back({FAVICONS[0].name, favicon_path(config, FAVICONS[0])});
    if (has_custom_css(config))
        files.push_back({CUSTOM_CSS, config.folder / CUSTOM_CSS});
    return files;
}

} // namespace Lumenfold::Builder
