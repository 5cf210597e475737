#pragma once

#include <cstdint>
#include <iosfwd>
#include <set>
#include <string>

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
    void add(const Place& place, const std::string& message);
    bool empty() const { return findings_.empty(); }
    /// Writes "file:line: message" lines, sorted by place.
    void print(std::ostream& out) const;

private:
    struct Finding {
        Place place;
        std::string message;

        friend auto operator<=>(const Finding&, const Finding&) = default;
    };
    std::set<Finding> findings_;
};

} // namespace CorvelLint
