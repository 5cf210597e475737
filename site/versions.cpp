#include "site/versions.h"

#include "site/config_files.h"
#include "site/path_text.h"
#include "site/record_lists.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <array>
#include <system_error>
#include <utility>

namespace Lumenfold {

namespace fs = std::filesystem;

namespace {

constexpr const char* NO_LABEL = "The version has no label.";

/// Reads a file of the builder's or of a source root; `missing` is told if it does not open.
Result read_gated(const fs::path& path, const std::string& missing, Json& json) {
    const std::optional<std::string> text = read_text_file(path);
    if (!text)
        return Result::failed(missing);
    JsonError problem;
    std::optional<Json> parsed = parse_json(*text, &problem);
    if (!parsed)
        return Result::failed("Invalid JSON in " + path_to_utf8(path) + ": " + problem.message);
    if (Result checked = check_format_of(path, *parsed); !checked)
        return checked;
    json = std::move(*parsed);
    return {};
}

bool is_number(std::string_view text) {
    return !text.empty() &&
           std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
}

/// A decimal number of any length, in a form that compares as it does: by the count of digits, then
/// by the digits.
using Number = std::pair<std::size_t, std::string_view>;

Number make_number(std::string_view digits) {
    digits.remove_prefix(std::min(digits.find_first_not_of('0'), digits.size()));
    return {digits.size(), digits};
}

using MajorMinor = std::pair<Number, Number>;

std::optional<MajorMinor> parse_label(std::string_view label) {
    const std::size_t dot = std::min(label.find('.'), label.size());
    const std::string_view major = label.substr(0, dot);
    const std::string_view minor = label.substr(std::min(dot + 1, label.size()));
    if (!is_number(major) || !is_number(minor))
        return std::nullopt;
    return MajorMinor(make_number(major), make_number(minor));
}

bool has_label(const Json& version, const std::string& label) {
    const auto found = version.find("label");
    return found != version.end() && *found == label;
}

/// A version remembers the license that holds when it is declared.
void stamp_license(const Json& project, Json& version) {
    const auto facts = project.find("facts");
    if (facts == project.end() || !facts->is_array())
        return;
    for (const Json& fact : *facts) {
        const std::string value = text_at(fact, "value");
        if (value.empty() || !has_label(fact, "License"))
            continue;
        version["license_display"] = value;
        return;
    }
}

void declare_version(Json& project, const std::string& label, const std::string& release_date) {
    Json& versions = list_at(project, "versions");
    const auto is_same = [&](const Json& version) { return has_label(version, label); };
    if (std::any_of(versions.begin(), versions.end(), is_same))
        return;
    Json version = Json::object();
    version["label"] = label;
    version["release_date"] = release_date;
    stamp_license(project, version);
    const auto older = std::find_if(versions.begin(), versions.end(), [&](const Json& other) {
        return other.is_object() && version_newer(label, text_at(other, "label"));
    });
    versions.insert(older, std::move(version));
}

} // namespace

bool read_built_record(const fs::path& folder, BuiltRecord& record, std::string* error) {
    const fs::path file = folder / BUILT_FILE_NAME;
    Json json;
    const Result read = read_gated(file, "No .lumenfold-built in " + path_to_utf8(folder), json);
    if (!read)
        return read.report_to(error);
    record = {text_at(json, "tag"), text_at(json, "commit"), text_at(json, "built")};
    if (record.tag.empty())
        return Result::failed(path_to_utf8(file) + " records no tag").report_to(error);
    return true;
}

std::vector<VersionEntry> discover_versions(const fs::path& project_folder) {
    std::vector<VersionEntry> versions;
    std::error_code error;
    fs::directory_iterator entry(project_folder / "versions", error);
    for (; !error && entry != fs::directory_iterator(); entry.increment(error)) {
        std::error_code ignored;
        if (!entry->is_directory(ignored))
            continue;
        BuiltRecord record;
        const bool built = read_built_record(entry->path(), record, nullptr);
        versions.push_back(
            {path_to_utf8(entry->path().filename()), built ? record.tag : std::string()});
    }
    std::sort(versions.begin(), versions.end(),
              [](const VersionEntry& a, const VersionEntry& b) { return a.name < b.name; });
    return versions;
}

std::string newest_version(const std::vector<VersionEntry>& entries) {
    std::string newest = entries.empty() ? std::string() : entries.back().name;
    for (const VersionEntry& entry : entries)
        if (version_newer(entry.name, newest))
            newest = entry.name;
    return newest;
}

fs::path manifest_path(const fs::path& project_config_folder, const std::string& source_path) {
    std::string folder = path_to_utf8(project_config_folder);
    const std::size_t root = path_to_utf8(project_config_folder.root_path()).size();
    while (folder.size() > root && (folder.back() == '/' || folder.back() == '\\'))
        folder.pop_back();
    return path_from_utf8(folder) / path_from_utf8(source_path) / MANIFEST_FILE_NAME;
}

bool load_manifest(const fs::path& path, Json& json, std::string* error) {
    return read_gated(path,
                      "No .lumenfold manifest at " + path_to_utf8(path) +
                          " — the project's source root declares its own build block "
                          "(readme/topics/includes) there",
                      json)
        .report_to(error);
}

bool version_newer(std::string_view a, std::string_view b) {
    const std::optional<MajorMinor> left = parse_label(a);
    const std::optional<MajorMinor> right = parse_label(b);
    if (!left || !right)
        return left.has_value() && !right.has_value();
    return *left > *right;
}

std::string version_status_text(std::string_view status) {
    constexpr std::array<std::pair<std::string_view, std::string_view>, 5> LABELS = {{
        {"new", "New"},
        {"excluded", "Excluded"},
        {"pending", "Pending"},
        {"complete", "Complete"},
        {"no-tag", "No Tag"},
    }};
    for (const auto& [word, label] : LABELS)
        if (word == status)
            return std::string(label);
    return std::string(status);
}

Result include_version(const fs::path& path, const std::string& label,
                       const std::string& release_date) {
    if (label.empty())
        return Result::failed(NO_LABEL);
    return edit_config_file(path, [&](Json& project) {
        if (Json* excluded = find_list(project, "versions_excluded"))
            erase_elements(*excluded, [&](const Json& other) { return other == label; });
        declare_version(project, label, release_date);
        ensure_format(project);
        return Result();
    });
}

Result exclude_version(const fs::path& path, const std::string& label) {
    if (label.empty())
        return Result::failed(NO_LABEL);
    return edit_config_file(path, [&](Json& project) {
        if (Json* versions = find_list(project, "versions"))
            erase_elements(*versions,
                           [&](const Json& version) { return has_label(version, label); });
        Json& excluded = list_at(project, "versions_excluded");
        if (std::find(excluded.begin(), excluded.end(), Json(label)) == excluded.end())
            excluded.push_back(label);
        ensure_format(project);
        return Result();
    });
}

} // namespace Lumenfold
