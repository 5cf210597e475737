#include "checks.h"
#include "theme/theme.h"

#include <map>
#include <optional>
#include <set>

namespace CorvelLint {

void check_themes(const Options& options, Findings& findings) {
    std::map<std::string, Corvel::Theme> themes; // by file
    std::map<std::string, std::string> file_of;  // by display name
    std::set<std::string> keys;
    for (const std::filesystem::path& folder : options.themes)
        for (const std::filesystem::path& file : files_below(folder, ".json")) {
            const std::optional<Corvel::Theme> theme = Corvel::parse_theme_file(read_text(file));
            if (!theme) {
                findings.add({file.string()}, "no theme: the file does not parse or is empty");
                continue;
            }
            const std::string name = Corvel::theme_display_name(*theme);
            if (const auto [other, is_new] = file_of.emplace(name, file.string()); !is_new)
                findings.add({file.string()},
                             "the theme `" + name + "` is also in " + other->second);
            for (const auto& [key, value] : theme->values)
                keys.insert(key);
            themes.emplace(file.string(), *theme);
        }
    for (const auto& [file, theme] : themes) {
        for (const std::string& key : keys)
            if (!theme.values.contains(key))
                findings.add({file}, "no `" + key + "`, which other themes have");
        for (const auto& [key, fallback] : Corvel::default_theme())
            if (const auto value = theme.values.find(key);
                value != theme.values.end() && value->second.index() != fallback.index())
                findings.add({file}, "`" + key + "` has a value of another kind");
    }
}

} // namespace CorvelLint
