#include "builder/documents/addresses.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace Lumenfold::Builder {
namespace {

constexpr std::array<std::string_view, 8> SAFE_SCHEMES = {"http", "https", "mailto", "tel",
                                                          "ftp",  "irc",   "ircs",   "xmpp"};

bool is_letter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

bool is_scheme_character(char c) {
    return is_letter(c) || (c >= '0' && c <= '9') || c == '+' || c == '-' || c == '.';
}

int hex_value(char c) {
    if (c >= '0' && c <= '9')
        return c - '0';
    const char lower = static_cast<char>(c | 0x20);
    return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

} // namespace

std::string trimmed_address(std::string_view address) {
    const auto is_outer = [](char c) { return static_cast<unsigned char>(c) <= ' '; };
    while (!address.empty() && is_outer(address.front()))
        address.remove_prefix(1);
    while (!address.empty() && is_outer(address.back()))
        address.remove_suffix(1);
    std::string trimmed(address);
    std::erase_if(trimmed, [](char c) { return static_cast<unsigned char>(c) < ' '; });
    return trimmed;
}

std::string address_scheme(std::string_view address) {
    const std::size_t colon = address.find(':');
    if (colon == std::string_view::npos || colon == 0 || !is_letter(address.front()) ||
        !std::all_of(address.begin(), address.begin() + colon, is_scheme_character))
        return {};
    std::string scheme(address.substr(0, colon));
    for (char& c : scheme)
        c = c >= 'A' && c <= 'Z' ? static_cast<char>(c | 0x20) : c;
    return scheme;
}

bool is_safe_link(std::string_view address) {
    const std::string scheme = address_scheme(trimmed_address(address));
    return scheme.empty() ||
           std::find(SAFE_SCHEMES.begin(), SAFE_SCHEMES.end(), scheme) != SAFE_SCHEMES.end();
}

bool is_web_address(std::string_view address) {
    const std::string scheme = address_scheme(address);
    return scheme == "http" || scheme == "https" || address.starts_with("//");
}

AddressParts split_address(std::string_view address) {
    AddressParts parts;
    const std::size_t hash = address.find('#');
    if (hash != std::string_view::npos) {
        parts.fragment = address.substr(hash + 1);
        parts.has_fragment = true;
        address = address.substr(0, hash);
    }
    const std::size_t mark = std::min(address.find('?'), address.size());
    parts.path = address.substr(0, mark);
    parts.query = address.substr(mark);
    return parts;
}

std::string percent_decoded(std::string_view text) {
    std::string decoded;
    decoded.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool escape = text[i] == '%' && i + 2 < text.size() && hex_value(text[i + 1]) >= 0 &&
                            hex_value(text[i + 2]) >= 0;
        decoded += escape ? static_cast<char>(hex_value(text[i + 1]) * 16 + hex_value(text[i + 2]))
                          : text[i];
        i += escape ? 2 : 0;
    }
    return decoded;
}

std::string percent_encoded(std::string_view path) {
    std::string encoded;
    encoded.reserve(path.size());
    for (const char c : path)
        switch (c) {
        case '%':
            encoded += "%25";
            break;
        case '#':
            encoded += "%23";
            break;
        case '?':
            encoded += "%3F";
            break;
        case ' ':
            encoded += "%20";
            break;
        default:
            encoded += c;
        }
    return encoded;
}

} // namespace Lumenfold::Builder
