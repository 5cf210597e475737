#include "support/fake_builder/script.h"

#include <nlohmann/json.hpp>

#include <cstdlib>
#include <iostream>
#include <string>
#include <vector>

namespace {

constexpr int USAGE_ERROR = 2;

/// The command of "COMMAND CONFIG --porcelain"; empty for any other arguments than the three
/// commands take.
std::string read_command(const std::vector<std::string>& arguments) {
    if (arguments.size() < 3 || arguments.back() != "--porcelain")
        return {};
    std::string command;
    for (std::size_t i = 0; i + 2 < arguments.size(); ++i)
        command += (i ? " " : "") + arguments[i];
    return command == "site build" || command == "build" || command == "versions" ? command
                                                                                  : std::string();
}

} // namespace

/// A builder that speaks the whole protocol and builds nothing: it plays the script that the
/// environment has for its command, and is silent without one.
int main(int argc, char** argv) {
    const std::string command = read_command({argv + 1, argv + argc});
    if (command.empty()) {
        std::cerr << "usage: lumenfold-cli (site build | build | versions) CONFIG --porcelain\n";
        return USAGE_ERROR;
    }
    const char* text = std::getenv("LUMENFOLD_FAKE_BUILDER");
    try {
        const auto scripts = nlohmann::json::parse(text && *text ? text : "{}");
        return FakeBuilder::play_script(scripts.value(command, nlohmann::json::array()));
    } catch (const std::exception& problem) {
        std::cerr << "bad script: " << problem.what() << '\n';
        return USAGE_ERROR;
    }
}
