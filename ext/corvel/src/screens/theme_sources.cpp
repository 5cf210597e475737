#include "screens/theme_sources.h"

#include "runtime/corvel_app.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <memory>
#include <optional>
#include <utility>

namespace Corvel {
namespace {

constexpr const char* LIST = "themeSources";

/// A directory of theme files beyond the framework's own.
struct ThemeSource {
    std::string dir;
    std::vector<std::string> theme_names; ///< display names of the themes that it gave
    bool from_env = false;                ///< named by the environment; never persisted
};

std::filesystem::path path_of(const std::string& utf8) {
    return std::filesystem::path(std::u8string(utf8.begin(), utf8.end()));
}

std::string source_key(const std::string& dir) {
    return "dir:" + dir;
}

/// The last component of a directory, or all of it where that is empty.
std::string source_label(const std::string& dir) {
    const std::u8string last = path_of(dir).filename().u8string();
    return last.empty() ? dir : std::string(last.begin(), last.end());
}

std::optional<std::string> read_file(const std::filesystem::path& path) {
    std::ifstream in(path, std::ios::binary);
    if (!in)
        return std::nullopt;
    return std::string(std::istreambuf_iterator<char>(in), {});
}

/// Every "*.json" file below `dir`, sorted, so that of two themes of one name the same one wins at
/// each start.
std::vector<std::filesystem::path> theme_files(const std::string& dir) {
    std::vector<std::filesystem::path> files;
    std::error_code error;
    std::filesystem::recursive_directory_iterator entry(
        path_of(dir), std::filesystem::directory_options::skip_permission_denied, error);
    for (const std::filesystem::recursive_directory_iterator end; !error && entry != end;
         entry.increment(error)) {
        std::error_code ignored;
        if (entry->path().extension() == ".json" && entry->is_regular_file(ignored))
            files.push_back(entry->path());
    }
    std::sort(files.begin(), files.end());
    return files;
}

std::vector<std::string> load_source_themes(CorvelApp& app, const std::string& dir) {
    std::vector<std::string> names;
    for (const std::filesystem::path& file : theme_files(dir))
        if (const std::optional<std::string> text = read_file(file))
            if (std::string name = app.add_theme_text(*text); !name.empty())
                names.push_back(std::move(name));
    return names;
}

/// The theme directories known; shared by the closures that serve them.
class ThemeSources {
public:
    ThemeSources(CorvelApp& app, ThemeSourceServices services)
        : app_(app)
        , services_(std::move(services)) {}

    void restore() {
        if (services_.read_directories)
            for (const std::string& dir : services_.read_directories())
                add(dir, false);
        add(services_.environment_directory, true);
        refresh_source_rows();
    }

    void add(const std::string& dir, bool from_env) {
        if (dir.empty() || sources_.contains(source_key(dir)))
            return;
        sources_[source_key(dir)] = {dir, load_source_themes(app_, dir), from_env};
        if (!from_env)
            persist_sources();
        refresh_source_rows();
    }

    void remove(const std::string& key) {
        const auto source = sources_.find(key);
        if (source == sources_.end())
            return;
        for (const std::string& name : source->second.theme_names)
            app_.remove_theme(name);
        sources_.erase(source);
        persist_sources();
        refresh_source_rows();
    }

    const ThemeSourceServices& services() const { return services_; }

private:
    void refresh_source_rows() {
        std::vector<ListEntry> rows;
        for (const auto& [key, source] : sources_)
            rows.push_back({key, {{"label", source_label(source.dir)}}});
        app_.set_rows(LIST, std::move(rows));
    }

    void persist_sources() const {
        if (!services_.write_directories)
            return;
        std::vector<std::string> directories;
        for (const auto& [key, source] : sources_)
            if (!source.from_env)
                directories.push_back(source.dir);
        services_.write_directories(directories);
    }

    CorvelApp& app_;
    ThemeSourceServices services_;
    std::map<std::string, ThemeSource> sources_; ///< by "dir:" and the directory as given
};

} // namespace

void install_theme_sources(CorvelApp& app, ThemeSourceServices services) {
    const auto sources = std::make_shared<ThemeSources>(app, std::move(services));
    app.on_any_row_click = [sources](const std::string& key, const std::string& item,
                                     const std::string& action) {
        if (key != LIST)
            return;
        if (action == "add" && sources->services().choose_directory)
            sources->services().choose_directory(
                [sources](const std::string& dir) { sources->add(dir, false); });
        else if (action == "remove")
            sources->remove(item);
    };
    sources->restore();
}

} // namespace Corvel
