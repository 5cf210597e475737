#pragma once

#include <cstdint>
#include <iosfwd>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace CorvelLint {

/// Where something is written. Lines count from 1.
struct Place {
    std::string file;
    std::uint64_t line = 1;

    friend auto operator<=>(const Place&, const Place&) = default;
};

/// What is wrong with the assets. Each finding counts once, however often it is met.
class Findings {
public:
    /// `at` is the text at fault, to be marked in its line; where the line does not hold it, the
    /// whole line is marked. `help` tells how to mend it; it may be empty.
    void add(const Place& place, std::string_view at, const std::string& message,
             const std::string& help = {});
    /// The same with the column of the text at fault, which counts from 1.
    void add_at(const Place& place, std::size_t column, std::size_t length,
                const std::string& message, const std::string& help = {});

    bool empty() const { return findings_.empty(); }
    /// Writes for each finding, sorted by place, "file:line:column: message", the line with the
    /// part at fault marked, and the remedy. After many it only counts.
    void print(std::ostream& out);

private:
    struct Finding {
        Place place;
        std::size_t column;
        std::string message;
        std::string help;
        std::size_t length;

        friend auto operator<=>(const Finding&, const Finding&) = default;
    };
    const std::vector<std::string>& lines_of(const std::string& file);
    std::string line_at(const Place& place);
    void print(std::ostream& out, const Finding& finding);

    std::set<Finding> findings_;
    std::size_t uncounted_ = 0;
    std::map<std::string, std::vector<std::string>> lines_; ///< by file
};

} // namespace CorvelLint
