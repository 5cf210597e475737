#include "builder/site/config_file.h"

#include "site/config_files.h"
#include "site/path_text.h"

#include <algorithm>

namespace Lumenfold::Builder {

namespace fs = std::filesystem;

namespace {

std::size_t line_at(std::string_view text, std::size_t offset) {
    const std::string_view before = text.substr(0, offset);
    return 1 + static_cast<std::size_t>(std::count(before.begin(), before.end(), '\n'));
}

} // namespace

std::size_t ConfigFile::line_of(std::string_view value) const {
    const std::size_t at = text.find(quote_json_string(value));
    return at == std::string::npos ? 0 : line_at(text, at);
}

std::optional<ConfigFile> read_config_file(const fs::path& path, std::string name,
                                           std::string& problem, std::size_t& line) {
    line = 0;
    std::optional<std::string> text = read_text_file(path);
    if (!text) {
        problem = "cannot be read. Check the path, and that the file may be read.";
        return std::nullopt;
    }
    JsonError error;
    std::optional<Json> json = parse_json(*text, &error);
    if (!json) {
        problem = "is no valid JSON: " + error.message;
        line = error.byte == 0 ? 1 : line_at(*text, error.byte - 1);
        return std::nullopt;
    }
    if (!json->is_object()) {
        problem = "holds no JSON object.";
        return std::nullopt;
    }
    if (!check_format(*json, &problem))
        return std::nullopt;
    return ConfigFile{path, std::move(name), *std::move(text), *std::move(json)};
}

std::string shown_path(const fs::path& path, const fs::path& site_folder) {
    const fs::path relative = path.lexically_normal().lexically_relative(site_folder);
    const bool below = !relative.empty() && *relative.begin() != "..";
    return path_to_utf8(below ? relative : path.lexically_normal());
}

std::vector<const Json*> objects_at(const Json& json, const char* key) {
    std::vector<const Json*> objects;
    const auto array = json.find(key);
    if (array == json.end() || !array->is_array())
        return objects;
    for (const Json& element : *array)
        if (element.is_object())
            objects.push_back(&element);
    return objects;
}

const Json& object_at(const Json& json, const char* key) {
    static const Json none = Json::object();
    const auto found = json.find(key);
    return found != json.end() && found->is_object() ? *found : none;
}

bool flag_at(const Json& json, const char* key, bool otherwise) {
    const auto found = json.find(key);
    return found != json.end() && found->is_boolean() ? found->get<bool>() : otherwise;
}

} // namespace Lumenfold::Builder
