#pragma once

#include <string>
#include <string_view>

namespace Lumenfold::Builder {

/// How a character that means something in HTML is written there; empty for all others.
constexpr std::string_view entity(char c) {
    switch (c) {
    case '&':
        return "&amp;";
    case '<':
        return "&lt;";
    case '>':
        return "&gt;";
    case '"':
        return "&quot;";
    default:
        return {};
    }
}

/// Appends plain text as HTML text.
void append_text(std::string& html, std::string_view text);

/// Appends plain text as the value of an attribute in double quotes.
void append_attribute(std::string& html, std::string_view text);

/// Appends an address as the value of an attribute in double quotes. What may not stand in an
/// address (RFC 3986) is percent-encoded; existing escapes stay. A ROOT_MARK at the beginning
/// stays.
void append_url(std::string& html, std::string_view address);

} // namespace Lumenfold::Builder
