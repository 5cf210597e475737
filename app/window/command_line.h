#pragma once

#include <string>
#include <vector>

namespace Lumenfold {

/// What the program was called with.
struct CommandLine {
    bool help = false;    ///< --help or -h
    bool version = false; ///< --version
    std::string files;    ///< the arguments that are files, one a line, in their order
    /// "PATH: reason" for each argument that can be no file: missing, or not to be read.
    std::vector<std::string> problems;
};

/// Options that nobody knows and folders are passed over: desktops add arguments of their own.
CommandLine read_command_line(int argc, const char* const* argv);

/// What --help prints.
std::string command_line_help();

/// What the started application tells once its window is there.
std::vector<std::string>& start_problems();

} // namespace Lumenfold
