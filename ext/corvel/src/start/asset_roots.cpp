#include "runtime/desktop_app.h"

#include <QCoreApplication>

#include <filesystem>

namespace Corvel {
namespace {

bool exists(const std::string& path) {
    std::error_code ignored;
    return std::filesystem::exists(std::filesystem::path(path), ignored);
}

#if defined(_WIN32)
constexpr const char* OPERATING_SYSTEM = "windows";
#elif defined(__APPLE__)
constexpr const char* OPERATING_SYSTEM = "macos";
#else
constexpr const char* OPERATING_SYSTEM = "linux";
#endif

#if defined(__aarch64__) || defined(_M_ARM64)
constexpr const char* PROCESSOR = "aarch64";
#elif defined(__x86_64__) || defined(_M_X64)
constexpr const char* PROCESSOR = "x86_64";
#else
constexpr const char* PROCESSOR = "unknown";
#endif

} // namespace

void resolve_asset_roots(DesktopAppConfig& config, const std::string& executable_dir) {
    const std::string base = executable_dir + "/assets/corvel";
    if (!exists(base + "/styles"))
        return;
    config.framework_root = base;
    const std::string app_root = executable_dir + "/assets/app";
    config.style_dirs = {app_root + "/styles"};
    config.icon_dirs = {app_root + "/icons"};
    config.media_roots.clear();
    // Media paths in the styles begin with the folder "media", so its parent is the root.
    if (exists(app_root + "/media"))
        config.media_roots = {app_root};
}

void resolve_asset_roots(DesktopAppConfig& config) {
    resolve_asset_roots(config, QCoreApplication::applicationDirPath().toStdString());
}

std::string default_platform_key() {
    return std::string(OPERATING_SYSTEM) + "-" + PROCESSOR;
}

} // namespace Corvel
