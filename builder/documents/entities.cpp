#include "builder/documents/entities.h"

#include "builder/documents/html_tree.h"

#include <charconv>
#include <cstdint>
#include <unordered_map>
#include <utf8proc.h>

namespace Lumenfold::Builder {
namespace {

constexpr std::string_view REPLACEMENT = "\xEF\xBF\xBD";

void append_number(std::string& text, std::string_view digits, int base) {
    std::uint32_t point = 0;
    const auto [end, error] =
        std::from_chars(digits.data(), digits.data() + digits.size(), point, base);
    const bool control = point < ' ' ? point != '\n' && point != '\t' && point != '\r'
                                     : point >= 0x7F && point < 0xA0;
    if (error != std::errc() || control || point > 0x10FFFF ||
        !utf8proc_codepoint_valid(static_cast<utf8proc_int32_t>(point))) {
        text += REPLACEMENT;
        return;
    }
    utf8proc_uint8_t bytes[4];
    const utf8proc_ssize_t length =
        utf8proc_encode_char(static_cast<utf8proc_int32_t>(point), bytes);
    text.append(reinterpret_cast<const char*>(bytes), static_cast<std::size_t>(length));
}

std::string named_meaning(std::string_view entity) {
    std::string meaning = HtmlTree(entity).plain_text();
    // An HTML parser also takes the "&not" out of "&notes;"; Markdown does not.
    const bool whole = !meaning.ends_with(';') || entity == "&semi;";
    return whole ? std::move(meaning) : std::string(entity);
}

/// Asking the HTML parser costs some microseconds; documents use few names often.
const std::string& cached_meaning(std::string_view entity) {
    constexpr std::size_t most_names = 4096;
    thread_local std::unordered_map<std::string, std::string> meanings;
    if (meanings.size() > most_names)
        meanings.clear();
    const auto [entry, fresh] = meanings.try_emplace(std::string(entity));
    if (fresh)
        entry->second = named_meaning(entity);
    return entry->second;
}

} // namespace

void append_entity(std::string& text, std::string_view entity) {
    const std::string_view name = entity.substr(1, entity.size() - 2);
    if (!name.starts_with('#'))
        text += cached_meaning(entity);
    else if (name.starts_with("#x") || name.starts_with("#X"))
        append_number(text, name.substr(2), 16);
    else
        append_number(text, name.substr(1), 10);
}

} // namespace Lumenfold::Builder
