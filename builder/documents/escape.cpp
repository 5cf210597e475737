#include "builder/documents/escape.h"

#include "builder/documents/link_resolver.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace Lumenfold::Builder {
namespace {

enum Special : std::uint8_t { IN_TEXT = 1, IN_ATTRIBUTE = 2, IN_URL = 4 };

constexpr std::array<std::uint8_t, 256> special_bytes() {
    std::array<std::uint8_t, 256> kinds{};
    for (auto& kind : kinds)
        kind = IN_URL;
    for (unsigned char c = '0'; c <= 'z'; ++c)
        if ((c <= '9') || (c >= 'A' && c <= 'Z') || c >= 'a')
            kinds[c] = 0;
    for (const char c : std::string_view("~-_.+!*(),%#@?=;:/$"))
        kinds[static_cast<unsigned char>(c)] = 0;
    for (const char c : std::string_view("&<>"))
        kinds[static_cast<unsigned char>(c)] = IN_TEXT | IN_ATTRIBUTE | IN_URL;
    kinds['"'] = IN_ATTRIBUTE | IN_URL;
    return kinds;
}

constexpr std::array<std::uint8_t, 256> SPECIAL = special_bytes();

void append_percent(std::string& html, char c) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    const auto byte = static_cast<unsigned char>(c);
    html += '%';
    html += digits[byte >> 4];
    html += digits[byte & 15];
}

/// Copies stretches without special bytes whole and hands each special byte to `escape`.
template <typename Escape>
void append_escaped(std::string& html, std::string_view text, Special kind, Escape escape) {
    std::size_t begin = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if ((SPECIAL[static_cast<unsigned char>(text[i])] & kind) == 0)
            continue;
        html.append(text, begin, i - begin);
        escape(text[i]);
        begin = i + 1;
    }
    html.append(text, begin);
}

} // namespace

void append_text(std::string& html, std::string_view text) {
    append_escaped(html, text, IN_TEXT, [&](char c) { html += entity(c); });
}

void append_attribute(std::string& html, std::string_view text) {
    append_escaped(html, text, IN_ATTRIBUTE, [&](char c) { html += entity(c); });
}

void append_url(std::string& html, std::string_view address) {
    if (address.starts_with(ROOT_MARK)) {
        html += ROOT_MARK;
        address.remove_prefix(1);
    }
    append_escaped(html, address, IN_URL, [&](char c) {
        if (c == '&')
            html += "&amp;";
        else
            append_percent(html, c);
    });
}

} // namespace Lumenfold::Builder
