#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace Corvel::Svg {

/// A block without blocks inside, with the text ahead of it.
struct CssRule {
    std::string_view prelude; ///< not empty, not trimmed
    std::string_view body;
    std::size_t begin; ///< index of the prelude
    std::size_t end;   ///< index just past the "}"
};

/// All matches of the regular expression "([^{}]+)\{([^{}]*)\}", in order. Linear and without
/// recursion, where std::regex overflows the stack on a block of some 20 kB.
std::vector<CssRule> scan_rules(std::string_view css);

/// A keyframes block, from the match of
/// "@(?:-webkit-)?keyframes\s+([A-Za-z_][\w-]*)\s*\{" to the brace that closes it.
struct CssKeyframes {
    std::string_view name;
    std::size_t begin;      ///< index of the "@"
    std::size_t body_begin; ///< index just past the opening brace
    std::size_t body_end;   ///< index of the closing brace
};

/// The keyframes blocks in order of their beginning, nested ones included; those that are never
/// closed are left out.
std::vector<CssKeyframes> scan_keyframes(std::string_view css);

/// The text without the given blocks.
std::string without_keyframes(std::string_view css, const std::vector<CssKeyframes>& blocks);

} // namespace Corvel::Svg
