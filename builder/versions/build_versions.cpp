#include "builder/versions/build_versions.h"

#include "builder/files/fit_path.h"
#include "builder/report/interruption.h"
#include "builder/repository/repository.h"
#include "builder/versions/make_version.h"
#include "builder/versions/write_version.h"
#include "site/config_files.h"
#include "site/path_text.h"
#include "site/versions.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <optional>
#include <utility>

namespace Lumenfold::Builder {

namespace fs = std::filesystem;

namespace {

fs::path folder_of(const fs::path& project_file, const std::string& label) {
    return project_file.parent_path() / "versions" / path_from_utf8(label);
}

/// What all versions of a project share; the other fields are left empty.
VersionContext project_context(const fs::path& project_file, const fs::path& source_folder) {
    const fs::path site_folder = find_site_above(fs::absolute(project_file).parent_path());
    const Json project = read_json_file(project_file).value_or(Json::object());
    const Json site = read_json_file(site_folder / SITE_FILE_NAME).value_or(Json::object());
    const Json repository = project.value("repo", Json::object());
    VersionContext context;
    context.project = read_title(project_file, ConfigKind::Project);
    context.source_name = path_to_utf8(
        fs::absolute(source_folder).lexically_normal().lexically_relative(site_folder));
    context.site_url = text_at(site, "url");
    context.repo_url = text_at(repository, "url");
    context.repo_platform = text_at(repository, "platform");
    return context;
}

std::string count_of_pages(std::size_t count) {
    return std::to_string(count) + (count == 1 ? " page" : " pages");
}

/// Builds versions of one project, one after the other.
class ProjectBuild {
public:
    ProjectBuild(const fs::path& project_file, const VersionList& list, const Tell& tell)
        : file_(project_file)
        , tell_(tell)
        , repository_(list.source_folder)
        , context_(project_context(project_file, list.source_folder)) {}

    bool build(const VersionRow& row) {
        std::string problem;
        std::optional<BuildingFolder> building =
            BuildingFolder::open(folder_of(file_, row.name), problem);
        if (!building)
            return fault(row, problem);
        if (was_built_meanwhile(row))
            return true;
        const TaggedVersion tagged{row.name, row.tag, row.commit, row.released};
        const std::unique_ptr<SourceTree> tree = repository_.tree_at(tagged, problem);
        if (!tree)
            return fault(row, problem);
        const std::optional<StoredVersion> version = make(row, *tree);
        if (!version)
            return false;
        if (!write_version(*building, *version, problem))
            return fault(row, problem);
        tell_({Severity::Info,
               {},
               0,
               "Built " + context_.project + " " + row.name + " from " + row.tag + ": " +
                   count_of_pages(version->pages.size())});
        return true;
    }

private:
    std::optional<StoredVersion> make(const VersionRow& row, const SourceTree& tree) {
        VersionContext context = context_;
        context.label = row.name;
        context.tag = row.tag;
        context.commit = row.commit;
        context.date = row.released;
        Messages messages;
        std::optional<StoredVersion> version = make_version(tree, context, messages);
        for (Message& message : messages)
            tell_(std::move(message));
        return version;
    }

    /// Whether another build made the version between our look at it and our turn.
    bool was_built_meanwhile(const VersionRow& row) const {
        const fs::path folder = folder_of(file_, row.name);
        BuiltRecord record;
        return read_built_record(folder, record, nullptr) && record.tag == row.tag &&
               record.commit == row.commit && !version_sign(folder).empty();
    }

    bool fault(const VersionRow& row, const std::string& problem) const {
        tell_({Severity::Fault, path_to_utf8(file_), 0, row.name + ": " + problem});
        return false;
    }

    const fs::path& file_;
    const Tell& tell_;
    Repository repository_;
    VersionContext context_;
};

/// Why the version that was named cannot be built; empty if it can, or is built already.
std::string refusal(const VersionList& list, const std::string& label) {
    const auto row = std::find_if(list.rows.begin(), list.rows.end(),
                                  [&](const VersionRow& other) { return other.name == label; });
    if (row == list.rows.end())
        return "There is no version " + label + ": no tag of the repository begins with it.";
    if (row->status == "new")
        return "Version " + label + " is not declared. Include it, or add it to \"versions\".";
    if (row->status == "excluded")
        return "Version " + label + " is excluded. Include it first.";
    if (row->status == "no-tag")
        return "Version " + label + " has no tag in the repository. Tag it (" + label + ".0).";
    return {};
}

} // namespace

std::vector<VersionRow> rows_to_build(const fs::path& project_file, const VersionList& list) {
    std::vector<VersionRow> rows;
    for (const VersionRow& row : list.rows) {
        const bool is_hollow = row.status == "complete" && !list.unversioned &&
                               version_sign(folder_of(project_file, row.name)).empty();
        if ((row.status == "pending" || is_hollow) && is_fit_path(row.name))
            rows.push_back(row);
    }
    return rows;
}

bool build_versions(const fs::path& project_file, const VersionList& list,
                    const std::string& only_label, const Tell& tell) {
    if (!only_label.empty())
        if (std::string words = refusal(list, only_label); !words.empty()) {
            tell({Severity::Fault, path_to_utf8(project_file), 0, std::move(words)});
            return false;
        }
    std::optional<ProjectBuild> build;
    bool fine = true;
    for (const VersionRow& row : rows_to_build(project_file, list)) {
        if (!only_label.empty() && row.name != only_label)
            continue;
        if (is_interrupted())
            return false;
        if (!build)
            build.emplace(project_file, list, tell);
        fine = build->build(row) && fine;
    }
    return fine;
}

bool build_versions(const fs::path& project_file, const std::string& only_label, const Tell& tell) {
    repair_versions(project_file.parent_path()); // before the records are looked at
    const VersionList list = list_versions(project_file);
    bool fine = true;
    for (const Message& message : list.messages) {
        fine = fine && message.severity != Severity::Fault;
        tell(message);
    }
    return build_versions(project_file, list, only_label, tell) && fine;
}

} // namespace Lumenfold::Builder
