#include "desktop/widgets/log_lines.h"

#include <algorithm>

namespace Corvel {

namespace {

constexpr std::size_t TAB = 8;

bool continues_letter(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80;
}

/// The columns that a byte adds behind `column` others; the first byte of a letter counts for it.
std::size_t columns_of(char byte, std::size_t column) {
    const auto lead = static_cast<unsigned char>(byte);
    if (byte == '\t')
        return TAB - column % TAB;
    if (continues_letter(byte))
        return 0;
    return (lead >= 0xE3 && lead <= 0xED) || lead >= 0xF0 ? 2 : 1;
}

/// A letter of four bytes is two units of UTF-16.
std::size_t units_of(char byte) {
    if (continues_letter(byte))
        return 0;
    return static_cast<unsigned char>(byte) >= 0xF0 ? 2 : 1;
}

std::size_t units_of(std::string_view text) {
    std::size_t units = 0;
    for (const char byte : text)
        units += units_of(byte);
    return units;
}

/// The end of the row that begins the rest of a line.
std::size_t row_length(std::string_view rest, std::size_t columns) {
    std::size_t column = 0;
    std::size_t possible = 0;
    for (std::size_t at = 0; at < rest.size(); ++at) {
        const char byte = rest[at];
        const bool blank = byte == ' ' || byte == '\t';
        column += columns_of(byte, column);
        // Blanks at the end of a row hang over.
        if (column > columns && !blank && at > 0 && !continues_letter(byte))
            return possible > 0 ? possible : at;
        if (blank || byte == '-' || byte == '/')
            possible = at + 1;
    }
    return rest.size();
}

/// Where a line that begins the rest of a text ends, and where the next begins.
struct LineEnd {
    std::size_t end = 0;
    std::size_t next = 0;
    std::size_t columns = 0;
    std::size_t units = 0; ///< up to `next`
    bool found = true;     ///< else the text ends first
};

bool ends_line(char byte) {
    return byte == '\n' || byte == '\r';
}

LineEnd find_line_end(std::string_view rest) {
    LineEnd line;
    std::size_t at = 0;
    const std::size_t most = std::min(rest.size(), LogLines::LONGEST_LINE);
    for (; at < most && !ends_line(rest[at]); ++at) {
        line.columns += columns_of(rest[at], line.columns);
        line.units += units_of(rest[at]);
    }
    for (; at < rest.size() && continues_letter(rest[at]) && at < most + 3; ++at) {
    }
    line.end = line.next = at;
    if (at < rest.size() && ends_line(rest[at]))
        line.next += rest.substr(at, 2) == "\r\n" ? 2 : 1;
    else
        line.found = at < rest.size();
    // A return at the very end may be the first half of a line end.
    if (rest.ends_with('\r') && line.next == rest.size() && line.next == at + 1)
        line = {at, at, line.columns, line.units, false};
    line.units += line.next - line.end;
    return line;
}

} // namespace

void LogLines::clear() {
    lines_.clear();
    rows_ = widest_ = 0;
}

void LogLines::grow(std::string_view text) {
    std::size_t begin = 0;
    std::size_t units = 0;
    if (!lines_.empty()) { // the last line may go on
        begin = lines_.back().begin;
        units = lines_.back().units;
        rows_ = lines_.back().row;
        lines_.pop_back();
    }
    for (;;) {
        const LineEnd line = find_line_end(text.substr(begin));
        widest_ = std::max(widest_, line.columns);
        lines_.push_back({begin, units, static_cast<std::uint32_t>(rows_),
                          static_cast<std::uint32_t>(line.columns)});
        rows_ += rows_of(text, lines_.back(), {begin, begin + line.end});
        if (!line.found)
            return;
        begin += line.next;
        units += line.units;
    }
}

void LogLines::set_columns(std::string_view text, std::size_t columns) {
    if (columns == columns_)
        return;
    columns_ = columns;
    rows_ = 0;
    for (std::size_t line = 0; line < lines_.size(); ++line) {
        lines_[line].row = static_cast<std::uint32_t>(rows_);
        rows_ += rows_of(text, lines_[line], content(text, line));
    }
}

LogLines::Range LogLines::content(std::string_view text, std::size_t line) const {
    const std::size_t begin = lines_[line].begin;
    std::size_t end = line + 1 < lines_.size() ? lines_[line + 1].begin : text.size();
    for (int ends = 0; ends < 2 && end > begin && (text[end - 1] == '\n' || text[end - 1] == '\r');
         ++ends)
        --end;
    return {begin, end};
}

std::size_t LogLines::rows_of(std::string_view text, const Line& line, Range range) const {
    if (columns_ == 0 || line.columns <= columns_)
        return 1;
    std::size_t rows = 0;
    for (std::size_t at = range.begin; at < range.end; ++rows)
        at += row_length(text.substr(at, range.end - at), columns_);
    return std::max<std::size_t>(rows, 1);
}

std::vector<LogLines::Range> LogLines::rows(std::string_view text, std::size_t first,
                                            std::size_t count) const {
    std::vector<Range> found;
    auto line =
        std::upper_bound(lines_.begin(), lines_.end(), first,
                         [](std::size_t row, const Line& entry) { return row < entry.row; });
    if (line != lines_.begin())
        --line;
    for (; line != lines_.end() && found.size() < count; ++line) {
        const Range range = content(text, static_cast<std::size_t>(line - lines_.begin()));
        std::size_t row = line->row;
        std::size_t at = range.begin;
        do {
            const bool whole = columns_ == 0 || line->columns <= columns_;
            const std::size_t length =
                whole ? range.end - at : row_length(text.substr(at, range.end - at), columns_);
            if (row++ >= first && found.size() < count)
                found.push_back({at, at + length});
            at += length;
        } while (at < range.end && found.size() < count);
    }
    return found;
}

std::size_t LogLines::line_at(std::size_t byte) const {
    const auto line =
        std::upper_bound(lines_.begin(), lines_.end(), byte,
                         [](std::size_t place, const Line& entry) { return place < entry.begin; });
    return line == lines_.begin() ? 0 : static_cast<std::size_t>(line - lines_.begin()) - 1;
}

std::size_t LogLines::row_at(std::string_view text, std::size_t byte) const {
    if (lines_.empty())
        return 0;
    const std::size_t line = line_at(byte);
    std::size_t row = lines_[line].row;
    if (columns_ == 0 || lines_[line].columns <= columns_)
        return row;
    const Range range = content(text, line);
    for (std::size_t at = range.begin; at < range.end; ++row) {
        at += row_length(text.substr(at, range.end - at), columns_);
        if (byte < at || at >= range.end)
            break;
    }
    return row;
}

std::size_t LogLines::units(std::string_view text) const {
    return units_before(text, text.size());
}

std::size_t LogLines::units_before(std::string_view text, std::size_t byte) const {
    if (lines_.empty())
        return 0;
    const Line& line = lines_[line_at(byte)];
    return line.units + units_of(text.substr(line.begin, byte - line.begin));
}

std::size_t LogLines::byte_of_unit(std::string_view text, std::size_t unit) const {
    auto line =
        std::upper_bound(lines_.begin(), lines_.end(), unit,
                         [](std::size_t place, const Line& entry) { return place < entry.units; });
    if (line == lines_.begin())
        return 0;
    --line;
    std::size_t at = line->begin;
    for (std::size_t units = line->units; at < text.size() && units < unit;) {
        units += units_of(text.substr(at, 1));
        for (++at; at < text.size() && continues_letter(text[at]);)
            ++at;
    }
    return at;
}

} // namespace Corvel
