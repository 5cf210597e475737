#pragma once

#include <algorithm>
#include <cstddef>
#include <string_view>

namespace Lumenfold::Builder {

inline bool is_letter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' ||
           static_cast<unsigned char>(c) >= 0x80;
}
inline bool is_digit(char c) {
    return c >= '0' && c <= '9';
}
inline bool is_word(char c) {
    return is_letter(c) || is_digit(c);
}
inline bool is_blank(char c) {
    return c == ' ' || c == '\t' || c == '\r';
}

/// The end of the line that `at` stands in, before its line feed.
inline std::size_t line_end(std::string_view code, std::size_t at) {
    return std::min(code.find('\n', at), code.size());
}

/// The place behind the next `end`, or the end of the text.
inline std::size_t behind(std::string_view code, std::string_view end, std::size_t at) {
    const std::size_t found = code.find(end, std::min(at, code.size()));
    return found == std::string_view::npos ? code.size() : found + end.size();
}

/// The same, but not beyond the line.
inline std::size_t behind_in_line(std::string_view code, std::string_view end, std::size_t at) {
    return behind(code.substr(0, line_end(code, at)), end, at);
}

/// The first place from `at` on whose character is not `wanted`.
template <typename Wanted>
std::size_t skip(std::string_view code, std::size_t at, Wanted wanted) {
    while (at < code.size() && wanted(code[at]))
        ++at;
    return at;
}

} // namespace Lumenfold::Builder
