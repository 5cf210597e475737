#include "site/path_text.h"
#include "support/fake_builder/plain_builder.h"
#include "support/fake_builder/script.h"

#include <nlohmann/json.hpp>

#include <cstdlib>
#include <iostream>
#include <string>
#include <vector>

namespace {

constexpr int USAGE_ERROR = 2;

/// The command of the arguments, with `config` the configuration it is for; empty for any other
/// arguments than the three commands take.
std::string read_command(std::vector<std::string> arguments, std::string& config) {
    if (arguments.size() < 3 || arguments.back() != "--porcelain")
        return {};
    config = arguments[arguments.size() - 2];
    std::string command;
    for (std::size_t i = 0; i + 2 < arguments.size(); ++i)
        command += (i ? " " : "") + arguments[i];
    return command == "site build" || command == "build" || command == "versions" ? command
                                                                                  : std::string();
}

int run(const std::string& command, const std::filesystem::path& config_path) {
    const std::optional<Lumenfold::Json> config = Lumenfold::read_json_file(config_path);
    const Lumenfold::Json script =
        FakeBuilder::find_script(command, config.value_or(Lumenfold::Json()));
    if (!script.is_null())
        return FakeBuilder::play_script(script);
    if (!config || !config->is_object()) {
        std::cout << "E\tCannot read " << config_path.string() << '\n';
        return EXIT_FAILURE;
    }
    if (command == "versions")
        return FakeBuilder::list_versions(config_path, *config);
    if (command == "build")
        return FakeBuilder::build_project(config_path, *config);
    return FakeBuilder::build_site(config_path, *config);
}

} // namespace

/// A builder that speaks the whole protocol and builds nothing: what it says is scripted, or else
/// follows from the configuration.
int main(int argc, char** argv) {
    std::string config;
    const std::string command = read_command({argv + 1, argv + argc}, config);
    if (command.empty()) {
        std::cerr << "usage: lumenfold-cli (site build | build | versions) CONFIG --porcelain\n";
        return USAGE_ERROR;
    }
    try {
        return run(command, Lumenfold::path_from_utf8(config));
    } catch (const std::exception& problem) {
        std::cerr << "bad script: " << problem.what() << '\n';
        return USAGE_ERROR;
    }
}
