#include "builder/site/theme_choice.h"

#include "site/json_file.h"

#include <algorithm>
#include <charconv>
#include <map>
#include <optional>
#include <string>
#include <system_error>
#include <vector>

namespace Lumenfold::Builder {

namespace fs = std::filesystem;

namespace {

constexpr const char* DARK_THEME = "Dark (orrinworkshopllc)";
constexpr const char* LIGHT_THEME = "Light (orrinworkshopllc)";

using ThemesByName = std::map<std::string, Corvel::Theme>;

/// Adds the themes of a folder; where two have one name, the first one stays.
void add_themes(ThemesByName& themes, const fs::path& folder) {
    std::error_code error;
    std::vector<fs::path> files;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error))
        if (entry->path().extension() == ".json")
            files.push_back(entry->path());
    std::sort(files.begin(), files.end());
    for (const fs::path& file : files) {
        const std::optional<std::string> text = read_text_file(file);
        if (!text)
            continue;
        if (std::optional<Corvel::Theme> theme = Corvel::parse_theme_file(*text))
            themes.try_emplace(theme_display_name(*theme), *std::move(theme));
    }
}

/// Mean of the channels of "#rrggbb", 0 to 255.
std::optional<double> brightness(const std::string& colour) {
    unsigned value = 0;
    if (colour.size() != 7 || colour[0] != '#' ||
        std::from_chars(colour.data() + 1, colour.data() + 7, value, 16).ptr != colour.data() + 7)
        return std::nullopt;
    return static_cast<double>((value >> 16U) + ((value >> 8U) & 255U) + (value & 255U)) / 3;
}

Corvel::Theme theme_or_default(const ThemesByName& themes, const std::string& name) {
    const auto found = themes.find(name);
    return found == themes.end() ? Corvel::Theme() : found->second;
}

} // namespace

bool is_dark(const Corvel::Theme& theme) {
    if (!theme.type.empty())
        return theme.type == "dark";
    return brightness(theme_value(theme, "Primary")).value_or(0) < 128;
}

SiteThemes choose_themes(const SiteConfig& config, const fs::path& shipped, Messages& messages) {
    ThemesByName themes;
    add_themes(themes, config.folder / "themes");
    ThemesByName ours;
    add_themes(ours, shipped);
    themes.insert(ours.begin(), ours.end());

    std::string name = config.default_theme.empty() ? DARK_THEME : config.default_theme;
    if (!themes.contains(name)) {
        messages.push_back({Severity::Complaint, config.file.name, config.file.line_of(name),
                            "there is no theme '" + name + "'. Put its file into " +
                                "themes/ of the site, or choose another; '" + DARK_THEME +
                                "' was taken."});
        name = DARK_THEME;
    }
    SiteThemes chosen;
    chosen.theme = theme_or_default(themes, name);
    chosen.other = theme_or_default(ours, is_dark(chosen.theme) ? LIGHT_THEME : DARK_THEME);
    return chosen;
}

} // namespace Lumenfold::Builder
