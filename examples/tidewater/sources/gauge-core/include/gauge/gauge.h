// Gauge Core: the public interface.
#pragma once

#include <chrono>
#include <string_view>
#include <utility>
#include <vector>

namespace gauge {

using Time = std::chrono::sys_seconds;
using days = std::chrono::days;

enum class Unit { Metre, Foot, Fathom };
enum class Datum { Chart, Mean, Local };

/// A height and the moment at which it was measured.
using Level = std::pair<Time, double>;

/// A stretch of time in which a station was silent.
struct Gap {
    Time from;
    Time until;
};

class Station {
public:
    /// The last so many days, oldest first. Throws `Unreachable` if nothing of it is known.
    std::vector<Level> levels(days span, Unit unit = Unit::Metre, Datum datum = Datum::Chart) const;
    std::vector<Gap> gaps(days span) const;
    std::string_view name() const;
};

/// A station by its name or number.
Station open(std::string_view station);

} // namespace gauge
