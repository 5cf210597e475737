#pragma once

#include <functional>
#include <string>
#include <vector>

namespace Corvel {

class CorvelApp;

/// What the theme directories need of the platform. Empty functions do nothing.
struct ThemeSourceServices {
    std::function<std::vector<std::string>()> read_directories;
    std::function<void(const std::vector<std::string>&)> write_directories;
    /// Asks the user for a directory; calls back with its path, empty if cancelled.
    std::function<void(std::function<void(const std::string& dir)>)> choose_directory;
    std::string environment_directory; ///< shown beside the others, never written; may be empty
};

/// Restores the theme directories of the last run and serves the list "themeSources": the actions
/// "add" and "remove" of its rows, by the slot `on_any_row_click`.
void install_theme_sources(CorvelApp& app, ThemeSourceServices services);

} // namespace Corvel
