#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Corvel {

/// What one piece of a Bind attribute connects.
enum class BindKind {
    ActiveThemeName,      ///< text: name of the theme in force
    ActiveThemePublisher, ///< text: its publisher
    ThemeName,            ///< text: name of the theme card's theme
    ThemePublisher,       ///< text: its publisher
    Field,                ///< "Field:key": text, icon or media source; hides a node without it
    State,                ///< "State:state:key": a state while the field is set
    Href,                 ///< "Href:key", as all below
    MaxWidth,
    Aspect,
    Indent,
    Grow,
    Placeholder,
    Opacity, ///< a switch between 0 and 1
};

struct BindPiece {
    BindKind kind;
    std::string key;   ///< field of the row; empty for the theme's names
    std::string state; ///< State only
};

/// How a node gets its children.
enum class ChildMode : unsigned char {
    Layers, ///< one node for each child layer
    Rows,   ///< one node for each row of a named list
    Themes, ///< one card for each theme
};

/// A Bind attribute, parsed.
struct Binds {
    ChildMode mode = ChildMode::Layers;
    std::string list_key; ///< Rows only
    /// The known pieces in order. Rows and Themes only heed those of kind State.
    std::vector<BindPiece> pieces;
    bool has_states = false; ///< some piece is of kind State
};

/// Cuts at ";" and strips white space from both ends of each piece; empty pieces go.
std::vector<std::string_view> split_binds(std::string_view text);

/// Parses a Bind attribute: "ThemeList" or "List:key" as a whole, or pieces. Unknown pieces go.
Binds parse_binds(std::string_view text);

/// The number that `text` begins with after white space, as strtod reads it. Nothing without a
/// number or when it does not fit a double.
std::optional<double> leading_number(const std::string& text);

/// Whether a field's value counts as set for a switch: not empty, not "0" and not "false".
bool is_switched_on(std::string_view value);

} // namespace Corvel
