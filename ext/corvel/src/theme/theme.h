#pragma once

#include "layers/attribute_value.h"

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace Corvel {

/// A value of a theme: none, a number, a boolean or a string.
using ThemeValue = Layers::AttributeValue;

/// A palette read from a JSON file.
struct Theme {
    std::string name;
    std::string publisher;
    std::string uuid;
    std::string type; ///< for authors of themes; read by no code
    std::map<std::string, ThemeValue> values;
};

/// Reads a theme file (RFC 8259 JSON, UTF-8), whose first top-level member is the theme. Nothing
/// if the text does not parse or has no member. A member that is no object gives a theme without
/// values.
std::optional<Theme> parse_theme_file(std::string_view text);

/// What identifies a theme for users and settings: "name (publisher)", "name (uuid)" or the name.
std::string theme_display_name(const Theme& theme);

/// The value of `key` if it is a string, otherwise the empty text.
const std::string& theme_value(const Theme& theme, const std::string& key);

/// The keys that a theme can set, in order, with the value that a theme without the key gets.
const std::vector<std::pair<std::string, ThemeValue>>& default_theme();

} // namespace Corvel
