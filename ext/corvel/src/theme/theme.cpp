#include "theme/theme.h"

#include "json/json_depth.h"

#include <nlohmann/json.hpp>

#include <cstdlib>

namespace Corvel {
namespace {

// The library's ordered objects take quadratic time, and a folder of themes may hold any files.
using Json = nlohmann::json;
using Keys = std::vector<std::string>;

/// One stop of a gradient: "position:colour", cut at the first colon.
struct GradientStop {
    double position;
    std::string color;
};

std::optional<GradientStop> parse_stop(const Json& value) {
    if (!value.is_string())
        return std::nullopt;
    const auto& text = value.get_ref<const std::string&>();
    std::size_t colon = text.find(':');
    if (colon == std::string::npos)
        return std::nullopt;
    return GradientStop{std::atof(text.substr(0, colon).c_str()), text.substr(colon + 1)};
}

/// Unfolds "Gradient" into its four values. False, and nothing stored, for any other form.
bool read_gradient(const Json& value, std::map<std::string, ThemeValue>& values) {
    if (!value.is_array() || value.size() != 2)
        return false;
    std::optional<GradientStop> start = parse_stop(value[0]);
    std::optional<GradientStop> end = parse_stop(value[1]);
    if (!start || !end)
        return false;
    values["Gradient.Start"] = start->position;
    values["Gradient.Start Color"] = std::move(start->color);
    values["Gradient.End"] = end->position;
    values["Gradient.End Color"] = std::move(end->color);
    return true;
}

ThemeValue to_theme_value(const Json& value) {
    if (value.is_string())
        return value.get_ref<const std::string&>();
    if (value.is_boolean())
        return value.get<bool>();
    if (value.is_number())
        return value.get<double>();
    return {};
}

void read_meta(const Json& meta, Theme& theme) {
    if (!meta.is_object())
        return;
    auto read = [&meta](const char* key, std::string& field) {
        auto entry = meta.find(key);
        if (entry != meta.end() && entry->is_string())
            field = entry->get_ref<const std::string&>();
    };
    read("publisher", theme.publisher);
    read("uuid", theme.uuid);
    read("type", theme.type);
}

/// The theme `name` from a value whose keys stand in the file in the order of `keys`; keys of
/// other values may be among them.
Theme read_theme(std::string name, const Json& json, const Keys& keys) {
    Theme theme;
    theme.name = std::move(name);
    for (const std::string& key : keys) {
        const auto entry = json.find(key);
        if (entry == json.end())
            continue;
        if (key == "_meta")
            read_meta(*entry, theme);
        else if (key != "Gradient" || !read_gradient(*entry, theme.values))
            theme.values[key] = to_theme_value(*entry);
    }
    return theme;
}

/// The theme in a text; nothing if it has no entry. Throws the library's exceptions.
std::optional<Theme> read_first_entry(std::string_view text) {
    std::optional<std::string> first; // key of the root
    Keys keys;                        // of the first entry; in an array of every entry
    bool in_first = true;
    const auto note_key = [&](int depth, Json::parse_event_t event, Json& parsed) {
        if (event == Json::parse_event_t::key && depth <= 2) {
            const auto& key = parsed.get_ref<const std::string&>();
            if (depth == 1) {
                if (!first)
                    first = key;
                in_first = key == *first;
            } else if (in_first) {
                keys.push_back(key);
            }
        }
        return true;
    };
    const Json json = Json::parse(text, note_key);
    if (json.empty())
        return std::nullopt;
    if (first)
        return read_theme(*first, json.at(*first), keys);
    return json.is_array() ? read_theme("0", json.front(), keys) : read_theme("", json, keys);
}

} // namespace

std::optional<Theme> parse_theme_file(std::string_view text) {
    if (find_json_level_beyond(text, MAX_JSON_DEPTH) != 0)
        return std::nullopt;
    try {
        return read_first_entry(text);
    } catch (const Json::exception&) {
        // A number out of range is no parse error, yet the file is as unusable.
        return std::nullopt;
    }
}

std::string theme_display_name(const Theme& theme) {
    const std::string& origin = theme.publisher.empty() ? theme.uuid : theme.publisher;
    return origin.empty() ? theme.name : theme.name + " (" + origin + ")";
}

const std::string& theme_value(const Theme& theme, const std::string& key) {
    static const std::string none;
    auto entry = theme.values.find(key);
    if (entry == theme.values.end())
        return none;
    const auto* text = std::get_if<std::string>(&entry->second);
    return text ? *text : none;
}

const std::vector<std::pair<std::string, ThemeValue>>& default_theme() {
    static const std::vector<std::pair<std::string, ThemeValue>> values = {
        {"Foreground", "#e3e3e3"},
        {"Gradient.Start", 0.0},
        {"Gradient.Start Color", "#3a3c42"},
        {"Gradient.End", 1.0},
        {"Gradient.End Color", "#42454d"},
        {"Primary", "#36393f"},
        {"Secondary", "#2f3136"},
        {"Tertiary", "#25272b"},
    };
    return values;
}

} // namespace Corvel
