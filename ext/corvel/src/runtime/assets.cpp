#include "runtime/app_state.h"

#include <array>
#include <filesystem>
#include <fstream>
#include <system_error>

namespace Corvel {
namespace {

namespace fs = std::filesystem;

/// The file's bytes, as far as they can be read; none for what is no file.
std::string read_text(const fs::path& path) {
    std::string text;
    std::error_code ignored;
    if (!fs::is_regular_file(path, ignored))
        return text;
    std::ifstream file(path, std::ios::binary);
    std::array<char, 16384> block;
    do {
        file.read(block.data(), block.size());
        text.append(block.data(), static_cast<std::size_t>(file.gcount()));
    } while (file);
    return text;
}

/// Throws what a start cannot go on with: a folder that is there, but cannot be asked for.
bool folder_exists(const fs::path& path) {
    std::error_code error;
    const bool exists = fs::exists(path, error);
    if (error)
        throw fs::filesystem_error("exists", path, error);
    return exists;
}

/// The theme files directly in `folder`, in the folder's order; later ones of a name win.
void read_themes(const fs::path& folder, std::map<std::string, Theme>& themes) {
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error)) {
        if (entry->path().extension() != ".json")
            continue;
        if (std::optional<Theme> theme = parse_theme_file(read_text(entry->path())))
            themes[theme_display_name(*theme)] = *std::move(theme);
    }
}

} // namespace

bool CorvelApp::load_assets(const std::string& themes_dir, const std::string& styles_dir,
                            const std::string& theme_name,
                            const std::vector<std::string>& style_dirs) {
    Layers::LayersEngine& layers = state_->engine;
    // The application comes last so that its values beat the framework's, and links are resolved
    // after everything so that no file need come after one that it refers to.
    layers.load_directory(styles_dir + "/widgets", "Corvel");
    layers.load_directory(styles_dir + "/mounts", "");
    for (const std::string& dir : style_dirs)
        layers.load_directory(dir, "");
    layers.link_attributes();

    if (folder_exists(themes_dir))
        read_themes(themes_dir, state_->themes);
    state_->cache.restyle();
    auto chosen = state_->themes.find(theme_name);
    if (chosen == state_->themes.end())
        chosen = state_->themes.begin();
    if (chosen == state_->themes.end())
        return false;
    state_->apply_theme(chosen->second.values);
    set_active_theme(chosen->first);
    return true;
}

} // namespace Corvel
