#include "layers/parser.h"

#include <charconv>
#include <system_error>

namespace Layers {
namespace {

std::uint32_t hex_digit(char c) {
    if (c <= '9')
        return static_cast<std::uint32_t>(c - '0');
    return static_cast<std::uint32_t>((c | 0x20) - 'a' + 10);
}

// A colour from its 3, 4, 6 or 8 digits. With 3 or 4 each digit counts twice; without alpha the
// colour is opaque.
Color color_value(std::string_view digits) {
    const bool is_short = digits.size() <= 4;
    const auto channel = [&](std::size_t index) {
        const std::size_t high = is_short ? index : 2 * index;
        if (high >= digits.size())
            return std::uint32_t{255};
        return 16 * hex_digit(digits[high]) + hex_digit(digits[is_short ? high : high + 1]);
    };
    return {channel(0), channel(1), channel(2), channel(3)};
}

// The byte that an escape stands for, or NUL for an unknown one.
char escaped_byte(char byte) {
    switch (byte) {
    case '"':
        return '"';
    case '\\':
        return '\\';
    case 'n':
        return '\n';
    case 't':
        return '\t';
    default:
        return '\0';
    }
}

} // namespace

// expression: reference | Boolean | Number | String | Color
ValueNode Parser::parse_expression() {
    const std::string_view text = peek().text;
    LiteralValue value;
    switch (peek().kind) {
    case TokenKind::Name:
        return parse_reference();
    case TokenKind::Boolean:
        value = text == "true";
        break;
    case TokenKind::Number:
        value = number_value(text);
        break;
    case TokenKind::String:
        value = string_value(text);
        break;
    case TokenKind::Color:
        value = color_value(text.substr(1));
        break;
    default:
        report("Found " + describe_token(peek()) + " where expression was expected.");
        return value;
    }
    advance();
    return value;
}

double Parser::number_value(std::string_view text) {
    double value = 0;
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, value);
    if (error == std::errc::result_out_of_range) {
        report("Found `" + std::string(text) + "`; this number is too large to represent.");
        return 0;
    }
    if (error != std::errc{} || stop != end) {
        report("Found `" + std::string(text) + "` where number was expected.");
        return 0;
    }
    return value;
}

// Resolves the escapes of a string token. One without any stays where it is.
std::string_view Parser::string_value(std::string_view text) {
    const std::string_view content = text.size() < 2 ? "" : text.substr(1, text.size() - 2);
    if (content.find('\\') == std::string_view::npos)
        return content;
    char* const copy = allocate_text(content.size());
    std::size_t size = 0;
    for (std::size_t i = 0; i < content.size(); ++i) {
        if (content[i] != '\\' || i + 1 == content.size()) {
            copy[size++] = content[i];
            continue;
        }
        const char byte = content[++i];
        if (const char meant = escaped_byte(byte))
            copy[size++] = meant;
        else
            report(std::string("Found unknown escape `\\") + byte +
                   R"(`; expected \", \\, \n, or \t.)");
    }
    return {copy, size};
}

} // namespace Layers
