#include "builder/repository/version_list.h"

#include "builder/repository/declared_versions.h"
#include "builder/repository/repository.h"
#include "builder/repository/source_folder.h"
#include "site/config_files.h"
#include "site/path_text.h"
#include "site/versions.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <map>
#include <optional>
#include <system_error>
#include <utility>

namespace Lumenfold::Builder {

namespace fs = std::filesystem;

namespace {

/// Reads a project's configuration; nothing, with the reason in `problem`, if that fails.
std::optional<Json> read_project(const fs::path& file, std::string& problem) {
    const std::optional<std::string> text = read_text_file(file);
    if (!text) {
        problem = "The configuration cannot be read.";
        return std::nullopt;
    }
    JsonError error;
    std::optional<Json> json = parse_json(*text, &error);
    if (!json)
        problem = "Invalid JSON: " + error.message;
    else if (!json->is_object())
        problem = "The configuration is no JSON object.";
    else if (check_format(*json, &problem))
        return json;
    return std::nullopt;
}

/// Whether a record was made from a commit; it may hold the first digits of its name only.
bool is_commit(const std::string& recorded, const std::string& commit) {
    constexpr std::size_t SHORTEST = 7;
    return recorded.empty() || (recorded.size() >= SHORTEST && commit.starts_with(recorded));
}

/// Puts one project's rows together.
class Listing {
public:
    Listing(const Json& project, const fs::path& project_file)
        : project_(project)
        , file_(project_file)
        , declared_(declared_versions(project))
        , excluded_(excluded_labels(project)) {
        list_.source_folder = source_folder_of(project, project_file);
    }

    VersionList make() {
        if (!list_.source_folder.empty())
            ask_repository();
        else if (!declared_.empty())
            list_without_tags("The project has no source folder", true);
        std::stable_sort(
            list_.rows.begin(), list_.rows.end(),
            [](const VersionRow& a, const VersionRow& b) { return version_newer(a.name, b.name); });
        return std::move(list_);
    }

private:
    void ask_repository() {
        const Repository repository(list_.source_folder);
        switch (repository.state()) {
        case RepositoryState::Ready:
            return list_tags(repository);
        case RepositoryState::Refused:
            add_declared(true);
            return say(Severity::Fault, repository.problem());
        case RepositoryState::NoRepository:
            std::error_code error;
            const bool exists = fs::is_directory(list_.source_folder, error);
            return list_without_tags(
                source() + (exists ? " lies in no git repository" : " is missing"), true);
        }
    }

    void list_tags(const Repository& repository) {
        std::vector<std::string> oddities;
        const std::vector<TaggedVersion> tagged = repository.versions(&oddities);
        for (const TaggedVersion& version : tagged)
            add_tagged(version);
        const bool shallow = repository.is_shallow();
        if (tagged.empty())
            list_without_tags(source() + " has no tag of a version in its repository", shallow);
        else
            add_declared(shallow);
        if (shallow && has_status("no-tag"))
            say(Severity::Complaint, "The repository is a shallow clone, so tags may be missing. "
                                     "Fetch them: git fetch --tags --unshallow");
        for (std::string& oddity : oddities)
            say(Severity::Complaint, std::move(oddity));
    }

    void add_tagged(const TaggedVersion& version) {
        const auto declared =
            std::find_if(declared_.begin(), declared_.end(), [&](const DeclaredVersion& other) {
                return other.label == version.label;
            });
        const bool is_declared = declared != declared_.end();
        VersionRow row = {version.label, version.tag, version.date, "new", false, version.commit};
        if (is_declared && !declared->release_date.empty())
            row.released = declared->release_date;
        if (excluded_.contains(version.label)) {
            row.status = "excluded";
        } else if (is_declared) {
            const std::optional<BuiltRecord> record = record_of(version.label);
            const bool complete =
                record && record->tag == version.tag && is_commit(record->commit, version.commit);
            row.status = complete ? "complete" : "pending";
            row.included = true;
        }
        if (is_declared)
            declared_.erase(declared);
        list_.rows.push_back(std::move(row));
    }

    /// Adds the declared versions that no tag was found for.
    void add_declared(bool trust_records) {
        for (const DeclaredVersion& version : declared_) {
            VersionRow row = {version.label, {}, version.release_date, "no-tag", true, {}};
            if (excluded_.contains(version.label)) {
                row.status = "excluded";
                row.included = false;
            } else if (const std::optional<BuiltRecord> record = record_of(version.label);
                       record && trust_records) {
                row.status = "complete";
                row.tag = record->tag;
                row.commit = record->commit;
            }
            list_.rows.push_back(std::move(row));
        }
    }

    void list_without_tags(const std::string& what, bool trust_records) {
        add_declared(trust_records);
        list_.unversioned = !has_status("complete");
        if (has_status("no-tag"))
            say(Severity::Fault, what + ", so declared versions cannot be built. Correct "
                                        "\"build.source_path\", or tag the repository (X.Y.Z).");
        else if (has_status("complete"))
            say(Severity::Info, what + ": its versions stay as they were built.");
        else
            say(Severity::Info, what + ": its documents are shown without versions.");
    }

    std::optional<BuiltRecord> record_of(const std::string& label) const {
        // A label from a file is a folder's name only if it cannot lead elsewhere.
        if (label.find_first_of("/\\") != std::string::npos || label.find("..") != label.npos)
            return std::nullopt;
        BuiltRecord record;
        const fs::path folder = file_.parent_path() / "versions" / path_from_utf8(label);
        return read_built_record(folder, record, nullptr) ? std::optional(record) : std::nullopt;
    }

    bool has_status(std::string_view status) const {
        return std::any_of(list_.rows.begin(), list_.rows.end(),
                           [&](const VersionRow& row) { return row.status == status; });
    }

    std::string source() const {
        const auto build = project_.find("build");
        const std::string path =
            build != project_.end() ? text_at(*build, "source_path") : std::string();
        return "The source folder" + (path.empty() ? path : ' ' + path);
    }

    void say(Severity severity, std::string text) {
        list_.messages.push_back({severity, path_to_utf8(file_), 0, std::move(text)});
    }

    const Json& project_;
    const fs::path& file_;
    std::vector<DeclaredVersion> declared_; ///< those that no row stands for yet
    std::set<std::string> excluded_;
    VersionList list_;
};

} // namespace

VersionList list_versions(const fs::path& project_file) {
    std::string problem;
    const std::optional<Json> project = read_project(project_file, problem);
    if (project)
        return Listing(*project, project_file).make();
    VersionList none;
    none.messages.push_back({Severity::Fault, path_to_utf8(project_file), 0, problem});
    return none;
}

} // namespace Lumenfold::Builder
