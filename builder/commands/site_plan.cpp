#include "builder/commands/site_plan.h"

#include "builder/versions/build_versions.h"
#include "site/config_files.h"
#include "site/path_text.h"

#include <nlohmann/json.hpp>

#include <ostream>

namespace Lumenfold::Builder {

namespace fs = std::filesystem;

namespace {

/// The files of the site's projects as a command names them.
std::vector<fs::path> project_files(const fs::path& site_file, const Json& site) {
    std::vector<fs::path> files;
    const auto projects = site.find("projects");
    if (projects == site.end() || !projects->is_array())
        return files;
    for (const Json& project : *projects) {
        const std::string reference = text_at(project, "config");
        if (!reference.empty())
            files.push_back(
                (site_file.parent_path() / path_from_utf8(reference)).lexically_normal());
    }
    return files;
}

std::string planned(const fs::path& project_file, const std::string& label,
                    const std::string& program) {
    const Json entry = {{"project", read_title(project_file, ConfigKind::Project)},
                        {"version", label},
                        {"command", Json::array({program, "build", path_to_utf8(project_file),
                                                 "--version", label})}};
    return entry.dump(-1, ' ', false, Json::error_handler_t::replace);
}

std::optional<Json> read_site(const fs::path& site_file, Reporter& reporter) {
    const std::optional<std::string> text = read_text_file(site_file);
    JsonError error;
    std::optional<Json> site = text ? parse_json(*text, &error) : std::nullopt;
    std::string problem = site ? "" : "Invalid JSON: " + error.message;
    if (site && check_format(*site, &problem))
        return site;
    reporter.fault(path_to_utf8(site_file), problem);
    return std::nullopt;
}

} // namespace

bool print_plan(const fs::path& site_file, const std::string& program, std::ostream& out,
                Reporter& reporter) {
    const std::optional<Json> site = read_site(site_file, reporter);
    if (!site)
        return false;
    std::string entries;
    for (const fs::path& project_file : project_files(site_file, *site)) {
        const VersionList list = list_versions(project_file);
        for (const Message& message : list.messages)
            if (message.severity == Severity::Fault)
                reporter.say(message);
        for (const VersionRow& row : rows_to_build(project_file, list))
            entries += (entries.empty() ? "\n" : ",\n") + planned(project_file, row.name, program);
    }
    out << '[' << entries << "\n]\n" << std::flush;
    return reporter.faults() == 0;
}

} // namespace Lumenfold::Builder
