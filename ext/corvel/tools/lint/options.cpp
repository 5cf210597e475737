#include "options.h"

#include <algorithm>
#include <array>
#include <utility>

namespace CorvelLint {

const std::string_view HELP_TEXT =
    R"(corvel_lint - checks the styles, themes and icons of an application

Usage: corvel_lint [OPTION DIR]...

  --widgets DIR   style files of widget prototypes, loaded into the layer "Corvel"
  --mounts DIR    style files of the framework's top-level layers
  --styles DIR    style files of the application
  --themes DIR    theme files (*.json)
  --icons DIR     icon files (*.svg)
  --help          this text

Each option may be repeated; folders load in the order above, then in the order given. Every problem
is written as "file:line: message". Exit status: 0 without findings, 1 with findings, 2 for a wrong
command line.
)";

namespace {

using Folders = std::vector<std::filesystem::path> Options::*;

constexpr std::array<std::pair<std::string_view, Folders>, 5> FOLDER_OPTIONS{{
    {"--widgets", &Options::widgets},
    {"--mounts", &Options::mounts},
    {"--styles", &Options::styles},
    {"--themes", &Options::themes},
    {"--icons", &Options::icons},
}};

} // namespace

std::optional<Options> parse_options(const std::vector<std::string>& arguments,
                                     std::string& error) {
    Options options;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::string& argument = arguments[i];
        if (argument == "--help") {
            options.help = true;
            continue;
        }
        const auto option =
            std::find_if(FOLDER_OPTIONS.begin(), FOLDER_OPTIONS.end(),
                         [&](const auto& known) { return known.first == argument; });
        if (option == FOLDER_OPTIONS.end())
            error = "unknown option " + argument;
        else if (++i == arguments.size())
            error = argument + " needs a folder";
        else if (!std::filesystem::is_directory(arguments[i]))
            error = arguments[i] + " is no folder";
        else
            (options.*option->second).emplace_back(arguments[i]);
        if (!error.empty())
            return std::nullopt;
    }
    return options;
}

} // namespace CorvelLint
