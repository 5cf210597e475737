#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace Corvel {

/// Where the lines and rows of a long text are: a line ends at a line feed or a return, or after
/// `LONGEST_LINE` bytes, and is broken into rows of at most so many columns. Breaks are sought
/// behind blanks, hyphens and slashes; a letter takes one column, or two if it is wide (most of the
/// letters of East Asia), a tab reaches to the next multiple of eight. Malformed UTF-8 does no
/// harm.
///
/// The text itself is the caller's and is handed to each call that reads it. Growing costs what was
/// added; another number of columns costs a step for each line that fits and a look at the others.
class LogLines {
public:
    static constexpr std::size_t LONGEST_LINE = 1 << 14;

    /// A piece of the text, in bytes, without line end.
    struct Range {
        std::size_t begin = 0;
        std::size_t end = 0;
    };

    /// Starts anew with no text.
    void clear();
    /// The text has grown to `text`, whose beginning is as it was.
    void grow(std::string_view text);
    /// Rows have at most `columns` columns from now on; 0: a row a line.
    void set_columns(std::string_view text, std::size_t columns);

    std::size_t line_count() const { return lines_.size(); }
    std::size_t row_count() const { return rows_; }
    /// Of the widest line.
    std::size_t widest() const { return widest_; }
    /// The rows from `first` on, at most `count` of them.
    std::vector<Range> rows(std::string_view text, std::size_t first, std::size_t count) const;
    /// The row that holds the byte.
    std::size_t row_at(std::string_view text, std::size_t byte) const;

    /// The text's length as UTF-16, in which assistive technology counts.
    std::size_t units(std::string_view text) const;
    std::size_t units_before(std::string_view text, std::size_t byte) const;
    std::size_t byte_of_unit(std::string_view text, std::size_t unit) const;

private:
    struct Line {
        std::size_t begin;
        std::size_t units;     ///< of UTF-16 before it
        std::uint32_t row;     ///< of its first row
        std::uint32_t columns; ///< that it would take in one row
    };

    std::size_t rows_of(std::string_view text, const Line& line, Range range) const;
    Range content(std::string_view text, std::size_t line) const;
    std::size_t line_at(std::size_t byte) const;

    std::vector<Line> lines_;
    std::size_t columns_ = 0;
    std::size_t rows_ = 0;
    std::size_t widest_ = 0;
};

} // namespace Corvel
