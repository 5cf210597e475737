#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Corvel::Svg {

/// The text without blanks, tabs and line ends on both ends.
std::string_view trim(std::string_view text);

/// The parts between separators, each trimmed; empty parts are left out.
std::vector<std::string_view> split(std::string_view text, char separator);

/// Reads a number at `position` with the grammar of C's `strtod` (leading white space, sign,
/// decimal, hexadecimal, infinity, NaN; too large gives infinity) in the "C" locale, whatever the
/// program's locale is. Moves `position` just past it. If there is none, `position` goes to the
/// first byte that is no white space.
std::optional<double> scan_number(std::string_view text, std::size_t& position);

/// The number at the start of the text, or 0.
double parse_number(std::string_view text);

/// All numbers in the text, whatever stands between them.
std::vector<double> parse_numbers(std::string_view text);
void append_numbers(std::string_view text, std::vector<double>& numbers);

/// The number in the text, "%" left out, divided by 100.
double parse_percentage(std::string_view text);

/// A time in milliseconds: with the unit "ms" or "s"; a bare number is milliseconds.
double parse_time(std::string_view text);

/// Whether the whole text is digits with an optional fraction, then "ms" or "s".
bool is_css_time(std::string_view text);

/// Appends the number as C's "%.6g" writes it in the "C" locale.
void append_number(std::string& out, double number);
std::string format_number(double number);

/// The numeral "digits, optional point, digits" (no sign, no exponent; at least one digit last)
/// that starts at `position`: the index just past it, or `position` if there is none.
std::size_t skip_numeral(std::string_view text, std::size_t position);

} // namespace Corvel::Svg
