#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace Corvel {

class CorvelApp;

/// All that an application tells the framework about itself.
struct DesktopAppConfig {
    std::string organization = "orrinworkshop"; ///< of the settings store
    std::string application_name = "Corvel";    ///< of the settings store
    std::string window_title = "Corvel";
    std::string icon;              ///< ".png" file or SVG icon name in the icon directories
    std::string desktop_file_name; ///< handed to the windowing system
    std::string version;           ///< empty: a development build
    std::string manifest_url;      ///< of the update manifest; empty: no update checking
    std::string platform_key;      ///< into the manifest's platforms; empty: computed
    std::int32_t update_check_hours = 24;
    std::string default_theme = "Dark (orrinworkshopllc)"; ///< used when the settings hold none
    std::string framework_root; ///< folder with the framework's styles, themes and icons
    std::vector<std::string> style_dirs;
    std::vector<std::string> icon_dirs;
    std::vector<std::string> media_roots;
    std::function<void(CorvelApp&)> build; ///< empty means `build_app`
};

/// Runs the application to its end and returns the process's exit code: 1 with a sentence on the
/// error stream when the assets cannot be read or hold no theme, otherwise the event loop's. An
/// asset tree beside the executable replaces the configured directories.
int run_desktop(int argc, char** argv, const DesktopAppConfig& config);

/// The application's wiring, supplied by the application. Called once, before any widget exists.
void build_app(CorvelApp& app);

/// Replaces the configured directories by the asset tree in `executable_dir`/assets, if there is
/// one; otherwise changes nothing.
void resolve_asset_roots(DesktopAppConfig& config, const std::string& executable_dir);
/// The same for the folder of the running executable.
void resolve_asset_roots(DesktopAppConfig& config);

/// The operating system's word, a hyphen, the processor's word, such as "linux-x86_64".
std::string default_platform_key();

} // namespace Corvel
