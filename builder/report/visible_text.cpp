#include "builder/report/visible_text.h"

#include <algorithm>
#include <utf8proc.h>

namespace Lumenfold::Builder {

namespace {

constexpr const char* REPLACEMENT = "\xEF\xBF\xBD";

bool is_harmless_ascii(char c) {
    return c >= 0x20 && c != 0x7f && static_cast<unsigned char>(c) < 0x80;
}

bool is_direction_sign(utf8proc_int32_t character) {
    return (character >= 0x202A && character <= 0x202E) ||
           (character >= 0x2066 && character <= 0x2069) || character == 0x200E ||
           character == 0x200F || character == 0x061C;
}

/// U+2400 and on show the characters below U+0020; U+2421 shows the deletion.
std::string picture_of(utf8proc_int32_t control) {
    const char last = static_cast<char>(control == 0x7f ? 0xA1 : 0x80 + control);
    return std::string("\xE2\x90") + last;
}

std::string shown(utf8proc_int32_t character, std::string_view bytes) {
    if (character < 0x20 || character == 0x7f)
        return picture_of(character);
    const utf8proc_category_t category = utf8proc_category(character);
    const bool ends_lines = category == UTF8PROC_CATEGORY_CC || category == UTF8PROC_CATEGORY_ZL ||
                            category == UTF8PROC_CATEGORY_ZP;
    return ends_lines || is_direction_sign(character) ? REPLACEMENT : std::string(bytes);
}

} // namespace

std::string visible_text(std::string_view text) {
    if (std::all_of(text.begin(), text.end(), is_harmless_ascii))
        return std::string(text);
    std::string visible;
    visible.reserve(text.size());
    while (!text.empty()) {
        utf8proc_int32_t character = 0;
        const utf8proc_ssize_t length =
            utf8proc_iterate(reinterpret_cast<const utf8proc_uint8_t*>(text.data()),
                             static_cast<utf8proc_ssize_t>(text.size()), &character);
        const std::size_t taken = length > 0 ? static_cast<std::size_t>(length) : 1;
        visible += length > 0 ? shown(character, text.substr(0, taken)) : REPLACEMENT;
        text.remove_prefix(taken);
    }
    return visible;
}

} // namespace Lumenfold::Builder
