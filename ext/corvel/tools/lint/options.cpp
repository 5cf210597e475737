#include "options.h"

#include "suggestions.h"

#include <algorithm>
#include <array>
#include <system_error>
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
  --states WORDS  states that the application sets, beside those of the framework: "Empty,Locked"
  --lists WORDS   lists that the application fills; without this any list may be bound
  --attributes    writes the reference page of attributes and ends
  --help          this text

Each option may be repeated; folders load in the order above, then in the order given. Every problem
is written as "file:line:column: message", followed by the line and the remedy. Exit status: 0
without findings, 1 with findings, 2 for a wrong command line.
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

using Words = std::vector<std::string> Options::*;

constexpr std::array<std::pair<std::string_view, Words>, 2> WORD_OPTIONS{{
    {"--states", &Options::states},
    {"--lists", &Options::lists},
}};

using Switch = bool Options::*;

constexpr std::array<std::pair<std::string_view, Switch>, 2> SWITCHES{{
    {"--help", &Options::help},
    {"--attributes", &Options::attributes},
}};

template <class Table>
auto find_option(const Table& table, std::string_view argument) {
    const auto found = std::find_if(table.begin(), table.end(),
                                    [&](const auto& known) { return known.first == argument; });
    return found != table.end() ? &*found : nullptr;
}

/// Reads an option with its value; what is wrong with it, or nothing.
std::string read_option(Options& options, const std::string& name, const std::string* value) {
    const auto* const folder = find_option(FOLDER_OPTIONS, name);
    const auto* const words = find_option(WORD_OPTIONS, name);
    if (folder == nullptr && words == nullptr)
        return "unknown option " + name;
    if (value == nullptr)
        return name + (folder != nullptr ? " needs a folder" : " needs words");
    if (words != nullptr) {
        for (std::string& word : split_words(*value))
            (options.*words->second).push_back(std::move(word));
        return {};
    }
    std::error_code unreadable;
    if (!std::filesystem::is_directory(*value, unreadable))
        return *value + " is no folder";
    (options.*folder->second).emplace_back(*value);
    return {};
}

} // namespace

std::optional<Options> parse_options(const std::vector<std::string>& arguments,
                                     std::string& error) {
    Options options;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        if (const auto* const found = find_option(SWITCHES, arguments[i])) {
            options.*found->second = true;
            continue;
        }
        const std::string& name = arguments[i];
        error = read_option(options, name, ++i < arguments.size() ? &arguments[i] : nullptr);
        if (!error.empty())
            return std::nullopt;
    }
    return options;
}

} // namespace CorvelLint
