#pragma once

#include <cstdint>
#include <filesystem>
#include <iosfwd>
#include <optional>
#include <string>

namespace Lumenfold::Builder {

enum class Command : std::uint8_t { SiteBuild, SiteCheck, SitePlan, SiteServe, Build, Versions };

/// What a command line asks for.
struct Invocation {
    std::string program; ///< as it was called
    Command command = Command::SiteBuild;
    std::string config; ///< a configuration file, or the folder of one
    std::string output;
    std::string version;
    bool pending = false;
    bool strict = false;
    unsigned threads = 0; ///< 0: as many as there are cores
    std::uint16_t port = 0;
    bool porcelain = false;
    bool quiet = false;
    bool verbose = false;
};

// Exit codes.
inline constexpr int EXIT_FINE = 0;
inline constexpr int EXIT_FOUND_ERRORS = 1;
inline constexpr int EXIT_WRONG_USE = 2;

/// Reads a command line. Nothing, with the exit code in `exit_code`, if all is said already: help
/// or the version on `out`, or on `errors` what is wrong with the line.
std::optional<Invocation> parse_command_line(int argc, const char* const* argv,
                                             const std::string& program_version, std::ostream& out,
                                             std::ostream& errors, int& exit_code);

} // namespace Lumenfold::Builder
