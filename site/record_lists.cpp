#include "site/record_lists.h"

#include "site/config_files.h"
#include "site/path_text.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <system_error>

namespace Lumenfold {

namespace fs = std::filesystem;

namespace {

/// The words in which the two kinds of files differ.
struct FileWords {
    const char* unopened;
    const char* no_object;
    const char* unwritten;
};

constexpr FileWords CONFIG_WORDS = {
    "Cannot open config file: ", "Config root is not a JSON object.", "Cannot write config file: "};
// A manifest that exists and does not open could not be replaced without losing what it holds.
constexpr FileWords MANIFEST_WORDS = {
    "Cannot write manifest: ", "Manifest root is not a JSON object.", "Cannot write manifest: "};

std::optional<Json> read_record_file(const fs::path& path, RecordFile kind, const FileWords& words,
                                     std::string* error) {
    std::error_code ignored;
    if (kind == RecordFile::Manifest && !fs::exists(path, ignored))
        return Json::object();
    const std::optional<std::string> text = read_text_file(path);
    if (!text) {
        fail(error, words.unopened + path_to_utf8(path));
        return std::nullopt;
    }
    JsonError problem;
    std::optional<Json> json = parse_json(*text, &problem);
    if (!json) {
        fail(error, "Parse error: " + problem.message);
    } else if (!json->is_object()) {
        fail(error, words.no_object);
        json.reset();
    } else if (kind == RecordFile::Manifest && !check_format(*json, error)) {
        json.reset();
    }
    return json;
}

} // namespace

bool fail(std::string* error, std::string message) {
    if (error)
        *error = std::move(message);
    return false;
}

bool edit_config_file(const fs::path& path, const ConfigEdit& edit) {
    std::optional<Json> json = read_json_file(path);
    return json && json->is_object() && edit(*json) && write_config_file(path, *json);
}

bool edit_record_file(const fs::path& path, RecordFile kind, const ConfigEdit& edit,
                      std::string* error) {
    const FileWords& words = kind == RecordFile::Manifest ? MANIFEST_WORDS : CONFIG_WORDS;
    std::optional<Json> json = read_record_file(path, kind, words, error);
    if (!json || !edit(*json))
        return false;
    if (!write_config_file(path, *json))
        return fail(error, words.unwritten + path_to_utf8(path));
    return true;
}

Json& object_at(Json& object, const char* key) {
    Json& value = object[key];
    if (!value.is_object())
        value = Json::object();
    return value;
}

Json& list_at(Json& object, const char* key) {
    Json& value = object[key];
    if (!value.is_array())
        value = Json::array();
    return value;
}

Json* find_list(Json& object, const std::string& key) {
    const auto found = object.find(key);
    return found != object.end() && found->is_array() ? &*found : nullptr;
}

Json* find_list(Json& object, const char* parent, const char* key) {
    const auto found = object.find(parent);
    return found != object.end() ? find_list(*found, key) : nullptr;
}

bool erase_element(Json* list, std::size_t index) {
    if (!list || index >= list->size())
        return false;
    list->erase(index);
    return true;
}

void erase_elements(Json& list, const std::function<bool(const Json&)>& matches) {
    auto& elements = list.get_ref<Json::array_t&>();
    elements.erase(std::remove_if(elements.begin(), elements.end(), matches), elements.end());
}

} // namespace Lumenfold
