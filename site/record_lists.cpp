#include "site/record_lists.h"

#include "site/config_files.h"
#include "site/json_file.h"
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

/// Reads the object that an operation works on into `json`.
Result read_record_file(const fs::path& path, RecordFile kind, const FileWords& words, Json& json) {
    std::error_code ignored;
    json = Json::object();
    if (kind == RecordFile::Manifest && !fs::exists(path, ignored))
        return {};
    const std::optional<std::string> text = read_text_file(path);
    if (!text)
        return Result::failed(words.unopened + path_to_utf8(path));
    JsonError problem;
    std::optional<Json> parsed = parse_json(*text, &problem);
    if (!parsed)
        return Result::failed("Parse error: " + problem.message);
    if (!parsed->is_object())
        return Result::failed(words.no_object);
    json = std::move(*parsed);
    return kind == RecordFile::Manifest ? check_format_of(path, json) : Result();
}

} // namespace

Result edit_record_file(const fs::path& path, RecordFile kind, const ConfigEdit& edit) {
    const FileWords& words = kind == RecordFile::Manifest ? MANIFEST_WORDS : CONFIG_WORDS;
    Json json;
    if (Result read = read_record_file(path, kind, words, json); !read)
        return read;
    if (Result edited = edit(json); !edited)
        return edited;
    if (!write_config_file(path, json))
        return Result::failed(words.unwritten + path_to_utf8(path));
    return {};
}

Result edit_config_file(const fs::path& path, const ConfigEdit& edit) {
    return edit_record_file(path, RecordFile::Config, edit);
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

Result erase_shown(Json* list, const ShownRecord& shown) {
    if (!find_shown(list, shown))
        return Result::changed();
    list->erase(shown.index);
    return {};
}

std::size_t erase_elements(Json& list, const std::function<bool(const Json&)>& matches) {
    auto& elements = list.get_ref<Json::array_t&>();
    const auto kept = std::remove_if(elements.begin(), elements.end(), matches);
    const auto erased = static_cast<std::size_t>(elements.end() - kept);
    elements.erase(kept, elements.end());
    return erased;
}

} // namespace Lumenfold
