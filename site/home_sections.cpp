#include "site/home_sections.h"

#include "site/json_file.h"
#include "site/path_text.h"
#include "site/record_lists.h"
#include "site/slug.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cstdint>
#include <set>
#include <system_error>

namespace Lumenfold {

namespace fs = std::filesystem;

std::vector<std::string> read_home_sections(const fs::path& path) {
    std::vector<std::string> types;
    std::optional<Json> site = read_json_file(path);
    if (Json* sections = site ? find_list(*site, "home", "sections") : nullptr)
        for (const Json& section : *sections)
            types.push_back(text_at(section, "type"));
    return types;
}

Result add_home_section(const fs::path& path, const Json& section) {
    return edit_config_file(path, [&](Json& site) {
        list_at(object_at(site, "home"), "sections").push_back(section);
        return Result();
    });
}

Result move_home_section(const fs::path& path, const ShownRecord& shown, int delta) {
    return edit_config_file(path, [&](Json& site) {
        Json* sections = find_list(site, "home", "sections");
        if (!find_shown(sections, shown))
            return Result::changed();
        const auto from = static_cast<std::int64_t>(shown.index);
        const std::int64_t to = from + delta;
        if (to < 0 || to >= static_cast<std::int64_t>(sections->size()))
            return Result::idle();
        const auto first = sections->begin();
        if (to < from)
            std::rotate(first + to, first + from, first + from + 1);
        else
            std::rotate(first + from, first + from + 1, first + to + 1);
        return Result();
    });
}

Result remove_home_section(const fs::path& path, const ShownRecord& shown) {
    return edit_config_file(
        path, [&](Json& site) { return erase_shown(find_list(site, "home", "sections"), shown); });
}

std::string unique_section_id(const fs::path& path, const std::string& base) {
    std::set<std::string> taken;
    std::optional<Json> site = read_json_file(path);
    if (Json* sections = site ? find_list(*site, "home", "sections") : nullptr)
        for (const Json& section : *sections)
            taken.insert(text_at(section, "id"));
    const std::string stem = base.empty() ? "section" : base;
    std::string candidate = stem;
    for (int n = 2; taken.contains(candidate); ++n)
        candidate = stem + "-" + std::to_string(n);
    return candidate;
}

std::string create_home_section_fragment(const fs::path& site_folder, const std::string& id) {
    if (!is_valid_slug(id))
        return {};
    const std::string relative = "content-fragments/" + id + "_home.html";
    const fs::path file = site_folder / path_from_utf8(relative);
    std::error_code error;
    fs::create_directories(file.parent_path(), error);
    if (!fs::is_regular_file(file, error) &&
        !write_text_file(file, "<section>\n  <div class=\"section_content slim\">\n"
                               "    <p>New custom section — edit " +
                                   relative + ".</p>\n  </div>\n</section>\n"))
        return {};
    return "/" + relative;
}

} // namespace Lumenfold
