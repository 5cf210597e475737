#include "app/window/command_line.h"
#include "runtime/desktop_app.h"
#include "site/favicon/generate_favicons.h"

#include <cstdlib>
#include <iostream>
#include <string>
#include <utility>

namespace {

Corvel::DesktopAppConfig lumenfold_config() {
    Corvel::DesktopAppConfig config;
    config.organization = "orrinworkshop";
    config.application_name = "Lumenfold";
    config.window_title = "Lumenfold";
    config.icon = "logo_lumenfold.png";
    config.desktop_file_name = "lumenfold";
    config.version = LUMENFOLD_VERSION;
    config.manifest_url = LUMENFOLD_UPDATE_URL;
    config.default_theme = "Dark (orrinworkshopllc)";
    config.framework_root = LUMENFOLD_FRAMEWORK_ROOT;
    config.style_dirs = {LUMENFOLD_STYLES_DIR};
    config.icon_dirs = {LUMENFOLD_ICONS_DIR};
    return config;
}

} // namespace

int main(int argc, char** argv) {
    Lumenfold::CommandLine line = Lumenfold::read_command_line(argc, argv);
    if (line.help || line.version) {
        std::cout << (line.help ? Lumenfold::command_line_help()
                                : "lumenfold " LUMENFOLD_VERSION "\n");
        return 0;
    }
    for (const std::string& problem : line.problems)
        std::cerr << "lumenfold: " << problem << '\n';
    Lumenfold::start_problems() = std::move(line.problems);
    // The application opens what this variable names, however it came to be set.
    if (!line.files.empty())
        ::setenv("LUMENFOLD_DEV_OPEN", line.files.c_str(), 1);
    Lumenfold::favicon_generator() = Lumenfold::generate_favicons;
    return Corvel::run_desktop(argc, argv, lumenfold_config());
}
