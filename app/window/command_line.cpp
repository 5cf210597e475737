#include "app/window/command_line.h"

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <string_view>
#include <system_error>

namespace Lumenfold {

namespace {

namespace fs = std::filesystem;

constexpr const char* HELP = R"HELP(Usage: lumenfold [FILE...]

Opens each FILE, a site's .lumenfold-site or a project's .lumenfold-project, in a tab of its own.

Options:
  -h, --help   print this and end
  --version    print the version and end

Examples:
  lumenfold                                open the home screen
  lumenfold site/.lumenfold-site           open a site
  CORVEL_THEME="Light (orrinworkshopllc)" lumenfold

Environment:
  CORVEL_THEME          display name of the theme for this run
  CORVEL_THEME_DIR      one more folder of themes, not remembered
  CORVEL_WIDTH, CORVEL_HEIGHT
                        size of the window at the start, in pixels
  CORVEL_LESS_MOTION    1: icons and busy signs stand still
  LUMENFOLD_DEV_OPEN    files to open, one a line, where none is given
)HELP";

std::string reason_not_to_open(const fs::path& path, const fs::file_status& status,
                               const std::error_code& error) {
    if (status.type() == fs::file_type::not_found)
        return std::generic_category().message(ENOENT);
    if (error)
        return error.message();
    errno = 0;
    if (fs::is_regular_file(status) && !std::ifstream(path))
        return std::generic_category().message(errno == 0 ? EIO : errno);
    return {};
}

} // namespace

CommandLine read_command_line(int argc, const char* const* argv) {
    CommandLine line;
    for (int i = 1; i < argc; ++i) {
        const std::string_view argument = argv[i];
        if (argument == "--help" || argument == "-h")
            line.help = true;
        else if (argument == "--version")
            line.version = true;
        if (argument.empty() || argument.front() == '-')
            continue;
        const fs::path path(argument);
        std::error_code error;
        const fs::file_status status = fs::status(path, error);
        if (const std::string reason = reason_not_to_open(path, status, error); !reason.empty())
            line.problems.push_back(std::string(argument) + ": " + reason);
        if (!fs::is_regular_file(status))
            continue;
        line.files += line.files.empty() ? "" : "\n";
        line.files += argument;
    }
    return line;
}

std::string command_line_help() {
    return HELP;
}

std::vector<std::string>& start_problems() {
    static std::vector<std::string> problems;
    return problems;
}

} // namespace Lumenfold
