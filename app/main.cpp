#include "runtime/desktop_app.h"
#include "site/favicon/generate_favicons.h"

#include <cstdlib>
#include <filesystem>
#include <string>

namespace {

/// The existing regular files among the arguments, one path a line.
std::string files_to_open(int argc, char** argv) {
    std::string files;
    for (int i = 1; i < argc; ++i) {
        const std::string argument = argv[i];
        if (argument.empty() || argument.front() == '-')
            continue;
        std::error_code error;
        if (!std::filesystem::is_regular_file(std::filesystem::path(argument), error))
            continue;
        if (!files.empty())
            files += '\n';
        files += argument;
    }
    return files;
}

Corvel::DesktopAppConfig lumenfold_config() {
    Corvel::DesktopAppConfig config;
    config.organization = "orrinworkshop";
    config.application_name = "Lumenfold";
    config.window_title = "Lumenfold";
    config.icon = "logo_lumenfold.png";
    config.desktop_file_name = "lumenfold";
    config.version = LUMENFOLD_VERSION;
    config.manifest_url = "https://orrinworkshop.example/downloads/lumenfold/latest.json";
    config.default_theme = "Dark (orrinworkshopllc)";
    config.framework_root = LUMENFOLD_FRAMEWORK_ROOT;
    config.style_dirs = {LUMENFOLD_STYLES_DIR};
    config.icon_dirs = {LUMENFOLD_ICONS_DIR};
    return config;
}

} // namespace

int main(int argc, char** argv) {
    // The application opens what this variable names, however it came to be set.
    const std::string files = files_to_open(argc, argv);
    if (!files.empty())
        ::setenv("LUMENFOLD_DEV_OPEN", files.c_str(), 1);
    Lumenfold::favicon_generator() = Lumenfold::generate_favicons;
    return Corvel::run_desktop(argc, argv, lumenfold_config());
}
