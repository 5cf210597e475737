// The input is a JSON file: of a site, a project, a manifest and a build record at once.
#include "site/config_files.h"
#include "site/project_groups.h"
#include "site/registry.h"
#include "site/versions.h"
#include "temp_folder.h"

#include <nlohmann/json.hpp>

#include <cstdint>

using namespace Lumenfold;

namespace {

/// What the JSON library itself makes of a text; it takes a NUL for the end.
std::optional<Json> library_document(std::string_view text) {
    try {
        return text.find('\0') == std::string_view::npos ? std::optional(Json::parse(text))
                                                         : std::nullopt;
    } catch (const Json::exception&) {
        return std::nullopt;
    }
}

void check_document(std::string_view text) {
    JsonError error;
    const std::optional<Json> json = parse_json(text, &error);
    require(json.has_value() || !error.message.empty());
    require(error.byte <= text.size() + 1);
    const std::optional<Json> expected = library_document(text);
    if (!json) {
        require(!describe_json_error(error, text).empty());
        require(!expected || error.message.starts_with("nested deeper"));
        return;
    }
    require(expected && *json == *expected);
    const std::optional<std::string> normal = dump_config(*json);
    require(normal && dump_config(*parse_json(*normal)) == normal);
    std::string refusal;
    require(check_format(*json, &refusal) == refusal.empty());
}

void read_as_every_file(std::string_view text) {
    const std::filesystem::path& folder = temp_folder();
    for (const char* name :
         {SITE_FILE_NAME, PROJECT_FILE_NAME, MANIFEST_FILE_NAME, BUILT_FILE_NAME, "other"}) {
        put_file(folder / name, text);
        (void)read_title(folder / name, classify_config(folder / name));
    }
    (void)read_project_info(folder / PROJECT_FILE_NAME);
    (void)read_home_sections(folder / SITE_FILE_NAME);
    BuiltRecord record;
    std::string error;
    require(read_built_record(folder, record, &error) == error.empty());
    Json manifest;
    error.clear();
    require(load_manifest(folder / MANIFEST_FILE_NAME, manifest, &error) == error.empty());
    Json site;
    if (read_registry(folder / SITE_FILE_NAME, site)) {
        (void)collect_projects(site, folder);
        (void)find_orphans(folder, registered_files(site, folder));
        (void)group_projects(registered_files(site, folder));
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    check_document(text);
    read_as_every_file(text);
    return 0;
}
