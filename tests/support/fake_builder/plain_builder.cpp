#include "support/fake_builder/plain_builder.h"

#include "site/config_files.h"
#include "site/path_text.h"
#include "site/versions.h"

#include <nlohmann/json.hpp>

#include <iostream>

namespace FakeBuilder {

namespace fs = std::filesystem;
using Lumenfold::Json;
using Lumenfold::text_at;

namespace {

Json list_of(const Json& object, const char* key) {
    const auto found = object.find(key);
    return found != object.end() && found->is_array() ? *found : Json::array();
}

fs::path version_folder(const fs::path& config_path, const std::string& label) {
    return config_path.parent_path() / "versions" / Lumenfold::path_from_utf8(label);
}

bool is_built(const fs::path& config_path, const std::string& label) {
    Lumenfold::BuiltRecord record;
    return Lumenfold::read_built_record(version_folder(config_path, label), record, nullptr);
}

bool build_version(const fs::path& config_path, const std::string& label) {
    const fs::path folder = version_folder(config_path, label);
    std::error_code error;
    fs::create_directories(folder, error);
    Json record = Json::object();
    record["format"] = Lumenfold::CONFIG_FORMAT_VERSION;
    record["tag"] = label + ".0";
    record["commit"] = "0000000000000000000000000000000000000000";
    record["built"] = "2026-01-01T00:00:00Z";
    return Lumenfold::write_config_file(folder / Lumenfold::BUILT_FILE_NAME, record);
}

void print_version(const std::string& label, const std::string& released, const char* status) {
    const bool included = status != std::string_view("excluded");
    std::cout << "R\t" << label << '\t' << label << ".0\t" << released << '\t' << status << '\t'
              << included << '\n';
}

} // namespace

int build_site(const fs::path& config_path, const Json& site) {
    std::cout << "I\tBuilding " << text_at(site, "title") << '\n';
    for (const Json& entry : list_of(site, "projects"))
        std::cout << "A\tReading " << text_at(entry, "config") << '\n';
    std::string output = text_at(site, "output");
    if (output.empty())
        output = "./output";
    const fs::path folder =
        (config_path.parent_path() / Lumenfold::path_from_utf8(output)).lexically_normal();
    std::error_code error;
    fs::create_directories(folder, error);
    if (error) {
        std::cout << "E\tCannot make " << folder.string() << ": " << error.message() << '\n';
        return 1;
    }
    std::cout << "O\t" << folder.string() << '\n';
    return 0;
}

int build_project(const fs::path& config_path, const Json& project) {
    for (const Json& version : list_of(project, "versions")) {
        const std::string label = text_at(version, "label");
        if (label.empty() || is_built(config_path, label))
            continue;
        std::cout << "I\tBuilding " << text_at(project, "name") << ' ' << label << '\n'
                  << "A\tInto " << version_folder(config_path, label).string() << '\n';
        if (!build_version(config_path, label)) {
            std::cout << "E\tCannot write the record of " << label << '\n';
            return 1;
        }
    }
    return 0;
}

int list_versions(const fs::path& config_path, const Json& project) {
    for (const Json& version : list_of(project, "versions")) {
        const std::string label = text_at(version, "label");
        print_version(label, text_at(version, "release_date"),
                      is_built(config_path, label) ? "complete" : "pending");
    }
    for (const Json& label : list_of(project, "versions_excluded"))
        if (label.is_string())
            print_version(label.get<std::string>(), "", "excluded");
    return 0;
}

} // namespace FakeBuilder
