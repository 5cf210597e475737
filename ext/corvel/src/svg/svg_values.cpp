#include "svg/svg_values.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <system_error>

namespace Corvel::Svg {
namespace {

constexpr std::string_view TRIMMED_BYTES = " \t\r\n";
constexpr std::string_view SPACE_BYTES = " \t\n\v\f\r"; // what C's isspace accepts

bool is_digit(char c) {
    return c >= '0' && c <= '9';
}

bool is_hex_digit(char c) {
    return is_digit(c) || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
}

bool has_hex_prefix(std::string_view text) {
    if (text.size() < 3 || text[0] != '0' || (text[1] != 'x' && text[1] != 'X'))
        return false;
    return is_hex_digit(text[2]) || (text[2] == '.' && text.size() > 3 && is_hex_digit(text[3]));
}

/// An exponent such as "-12"; beyond all that matters it stays at the same large number.
long read_exponent(std::string_view text) {
    constexpr long enough = 100'000'000;
    const bool negative = text.starts_with('-');
    if (negative || text.starts_with('+'))
        text.remove_prefix(1);
    long exponent = 0;
    for (const char digit : text)
        exponent = std::min(enough, exponent * 10 + (digit - '0'));
    return negative ? -exponent : exponent;
}

/// The value of a numeral that does not fit a double: infinity or zero. The place of its first
/// digit that is not zero decides.
double saturate(std::string_view numeral, bool hexadecimal) {
    const std::size_t mark = numeral.find_first_of(hexadecimal ? "pP" : "eE");
    const std::string_view digits = numeral.substr(0, mark);
    const std::size_t point = std::min(digits.find('.'), digits.size());
    const std::size_t first = digits.find_first_not_of("0.");
    if (first == std::string_view::npos)
        return 0;
    long magnitude = static_cast<long>(point) - static_cast<long>(first);
    if (hexadecimal)
        magnitude *= 4;
    if (mark != std::string_view::npos)
        magnitude += read_exponent(numeral.substr(mark + 1));
    return magnitude > 0 ? HUGE_VAL : 0;
}

} // namespace

std::string_view trim(std::string_view text) {
    const std::size_t first = text.find_first_not_of(TRIMMED_BYTES);
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(TRIMMED_BYTES) - first + 1);
}

std::vector<std::string_view> split(std::string_view text, char separator) {
    std::vector<std::string_view> parts;
    for (std::size_t start = 0; start <= text.size();) {
        const std::size_t end = std::min(text.find(separator, start), text.size());
        if (const std::string_view part = trim(text.substr(start, end - start)); !part.empty())
            parts.push_back(part);
        start = end + 1;
    }
    return parts;
}

std::optional<double> scan_number(std::string_view text, std::size_t& position) {
    position = std::min(text.find_first_not_of(SPACE_BYTES, position), text.size());
    std::string_view rest = text.substr(position);
    const bool negative = rest.starts_with('-');
    if (negative || rest.starts_with('+'))
        rest.remove_prefix(1);
    if (rest.starts_with('-')) // from_chars would take a second sign
        return std::nullopt;
    const bool hexadecimal = has_hex_prefix(rest);
    if (hexadecimal)
        rest.remove_prefix(2);

    double value = 0;
    const char* const begin = rest.data();
    const auto [end, error] =
        std::from_chars(begin, begin + rest.size(), value,
                        hexadecimal ? std::chars_format::hex : std::chars_format::general);
    if (error == std::errc::invalid_argument)
        return std::nullopt;
    if (error == std::errc::result_out_of_range)
        value = saturate(rest.substr(0, static_cast<std::size_t>(end - begin)), hexadecimal);
    position = static_cast<std::size_t>(end - text.data());
    return negative ? -value : value;
}

double parse_number(std::string_view text) {
    std::size_t position = 0;
    return scan_number(text, position).value_or(0);
}

void append_numbers(std::string_view text, std::vector<double>& numbers) {
    for (std::size_t position = 0; position < text.size();) {
        if (const auto number = scan_number(text, position))
            numbers.push_back(*number);
        else
            ++position;
    }
}

std::vector<double> parse_numbers(std::string_view text) {
    std::vector<double> numbers;
    append_numbers(text, numbers);
    return numbers;
}

double parse_percentage(std::string_view text) {
    std::string number(text);
    std::erase(number, '%');
    return parse_number(number) / 100;
}

double parse_time(std::string_view text) {
    text = trim(text);
    if (text.size() > 2 && text.ends_with("ms"))
        return parse_number(text);
    if (text.ends_with('s'))
        return parse_number(text) * 1000;
    return parse_number(text);
}

std::size_t skip_numeral(std::string_view text, std::size_t position) {
    const auto skip_digits = [&](std::size_t at) {
        while (at < text.size() && is_digit(text[at]))
            ++at;
        return at;
    };
    const std::size_t whole = skip_digits(position);
    if (whole < text.size() && text[whole] == '.') {
        const std::size_t fraction = skip_digits(whole + 1);
        if (fraction > whole + 1)
            return fraction;
    }
    return whole;
}

bool is_css_time(std::string_view text) {
    const std::size_t end = skip_numeral(text, 0);
    const std::string_view unit = text.substr(end);
    return end > 0 && (unit == "ms" || unit == "s");
}

void append_number(std::string& out, double number) {
    char buffer[32];
    const auto result =
        std::to_chars(buffer, buffer + sizeof buffer, number, std::chars_format::general, 6);
    out.append(buffer, result.ptr);
}

std::string format_number(double number) {
    std::string text;
    append_number(text, number);
    return text;
}

} // namespace Corvel::Svg
