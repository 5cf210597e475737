#include "app/context/json_view.h"

#include <nlohmann/json.hpp>

#include <optional>
#include <utility>

namespace Lumenfold {

const Json& member_at(const Json& json, const char* key) {
    static const Json null;
    const auto found = json.find(key);
    return found == json.end() ? null : *found;
}

const Json& array_at(const Json& json, const char* key) {
    static const Json empty = Json::array();
    const Json& value = member_at(json, key);
    return value.is_array() ? value : empty;
}

bool flag_at(const Json& json, const char* key) {
    const Json& value = member_at(json, key);
    return value.is_boolean() && value.get<bool>();
}

std::string text_at_pointer(const Json& json, const std::string& pointer) {
    const Json::json_pointer place(pointer);
    if (!json.contains(place) || !json.at(place).is_string())
        return {};
    return json.at(place).get<std::string>();
}

Json parse_or_empty(const std::string& text) {
    std::optional<Json> json = parse_json(text);
    return json ? std::move(*json) : Json::object();
}

} // namespace Lumenfold
