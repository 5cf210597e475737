#include "builder/site/project_state.h"

#include "builder/repository/repository.h"
#include "builder/repository/source_folder.h"
#include "builder/repository/version_list.h"
#include "builder/site/project_paths.h"
#include "builder/site/recording_tree.h"
#include "builder/site/sign.h"
#include "builder/versions/make_version.h"
#include "site/config_files.h"
#include "site/path_text.h"
#include "site/versions.h"

#include <algorithm>
#include <utility>

namespace Lumenfold::Builder {

namespace fs = std::filesystem;

namespace {

/// Counted up when pages or notes change in a way that no input tells.
constexpr const char* BUILDER_SIGN = "1";

/// Whether a label can be the name of a folder below "versions" and nothing else.
bool names_version_folder(const std::string& label) {
    return !label.empty() && label.front() != '.' &&
           label.find_first_of("/\\") == std::string::npos;
}

/// The versions that are declared and built, and a sign of all that this project's pages are made
/// of but for documents of a work tree.
std::vector<ShownVersion> find_versions(const SiteProject& project, std::string& inputs) {
    const ProjectConfig& config = project.config;
    Sign sign;
    sign.add(BUILDER_SIGN).add(config.file.text).add(project.address);
    std::vector<ShownVersion> versions;
    for (const ConfigVersion& declared : config.versions) {
        if (!names_version_folder(declared.label))
            continue;
        const fs::path folder = config.folder / "versions" / path_from_utf8(declared.label);
        const std::string content = version_sign(folder);
        sign.add(declared.label).add(content);
        if (!content.empty())
            versions.push_back(
                {declared.label, declared.release_date, declared.license, {}, folder});
    }
    inputs = sign.hex();
    return versions;
}

VersionContext version_context(const SiteModel& site, const SiteProject& project) {
    const ProjectConfig& config = project.config;
    VersionContext context;
    context.project = config.name;
    context.source_name = shown_path(source_folder(config), site.config.folder);
    context.site_url = site.config.url;
    context.repo_url = config.repo_url;
    context.repo_platform = config.repo_platform;
    return context;
}

bool is_unchanged(const ProjectConfig& config,
                  const std::vector<std::pair<std::string, std::string>>& looked_at) {
    const std::unique_ptr<SourceTree> tree = open_work_tree(source_folder(config));
    return std::all_of(looked_at.begin(), looked_at.end(),
                       [&](const auto& look) { return tree->identity(look.first) == look.second; });
}

void note_pages(const std::string& address, const StoredVersion& version, ProjectNote& note) {
    for (const VersionPage& page : version.pages)
        note.pages.push_back({address + page.path, page.title, page.anchors});
    for (const VersionFile& file : version.files)
        note.files.push_back(address + file.path);
}

void note_links(const StoredVersion& version, ProjectNote& note) {
    for (const VersionPage& page : version.pages)
        note.site_links.insert(note.site_links.end(), page.site_links.begin(),
                               page.site_links.end());
}

void note_search(const SiteProject& project, const std::string& address, bool newest,
                 StoredVersion& version, std::vector<SearchPage>& pages) {
    for (VersionPage& page : version.pages)
        pages.push_back({address + page.path, page.title, project.config.name, version.label,
                         newest, page.headings, std::move(page.sections)});
}

/// Reads what the site must know of each version. One that cannot be read after all is not shown.
void read_versions(const SiteProject& project, ProjectState& state) {
    std::vector<SearchPage> search;
    std::vector<ShownVersion> shown;
    for (ShownVersion& version : state.versions) {
        std::optional<StoredVersion> stored = read_version(version.folder, Bodies::Without);
        if (!stored)
            continue;
        const bool newest = shown.empty();
        const std::string own = project.address + version.label + "/";
        version.tag = stored->tag;
        if (version.date.empty())
            version.date = stored->date;
        if (newest)
            note_pages(project.address, *stored, state.note);
        note_pages(own, *stored, state.note);
        note_links(*stored, state.note);
        state.note.releases.push_back(
            {version.label, version.tag, version.date, own + "index.html"});
        note_search(project, newest ? project.address : own, newest, *stored, search);
        shown.push_back(std::move(version));
    }
    state.versions = std::move(shown);
    if (!state.versions.empty())
        state.note.pages.push_back({project.address + VERSIONS_PAGE, "Versions", {}});
    state.note.search = search_summary(search);
}

/// Takes dates and tags over from the note of the last build.
void restore_versions(ProjectState& state) {
    std::vector<ShownVersion> shown;
    for (ShownVersion& version : state.versions)
        for (const NotedRelease& release : state.note.releases)
            if (release.label == version.label) {
                version.date = release.date;
                version.tag = release.tag;
                shown.push_back(std::move(version));
                break;
            }
    state.versions = std::move(shown);
}

void read_documents(const SiteModel& site, const SiteProject& project, ProjectState& state) {
    state.work_tree = read_work_tree(site, project, state.note);
    if (!state.work_tree) {
        state.note.pages.push_back({project.address + FIRST_PAGE, project.config.name, {}});
        return;
    }
    note_pages(project.address, *state.work_tree, state.note);
    note_links(*state.work_tree, state.note);
    StoredVersion for_search = *state.work_tree;
    std::vector<SearchPage> search;
    note_search(project, project.address, true, for_search, search);
    state.note.search = search_summary(search);
}

/// Whether a repository's answer holds as long as its tags do. A fault may be mended elsewhere: by
/// trusting the repository of another user.
bool may_be_kept(const Messages& messages) {
    return std::none_of(messages.begin(), messages.end(),
                        [](const Message& message) { return message.severity == Severity::Fault; });
}

/// Asks the repository what waits to be built, unless nothing that its answer depends on changed.
void ask_repository(const SiteModel& site, const SiteProject& project,
                    const std::optional<ProjectNote>& old_note, ProjectNote& note) {
    const fs::path source = source_folder(project.config);
    if (source.empty())
        return;
    note.tags = tags_sign(source);
    if (old_note && !note.tags.empty() && old_note->tags == note.tags &&
        old_note->inputs == note.inputs && may_be_kept(old_note->repository_messages)) {
        note.waiting = old_note->waiting;
        note.repository_messages = old_note->repository_messages;
        return;
    }
    VersionList list = list_versions(project.config.file.path);
    for (const VersionRow& row : list.rows)
        if (row.status == "pending")
            note.waiting.push_back(row.name);
    note.repository_messages = std::move(list.messages);
    for (Message& message : note.repository_messages)
        message.file = shown_path(path_from_utf8(message.file), site.config.folder);
}

} // namespace

std::string unit_of(const SiteProject& project) {
    return "project " + project.address;
}

fs::path source_folder(const ProjectConfig& config) {
    return source_folder_of(config.file.json, config.file.path).lexically_normal();
}

std::optional<StoredVersion> read_work_tree(const SiteModel& site, const SiteProject& project,
                                            ProjectNote& note) {
    const fs::path source = source_folder(project.config);
    if (source.empty())
        return std::nullopt;
    const std::unique_ptr<SourceTree> tree = open_work_tree(source);
    const RecordingTree recording(*tree);
    std::optional<StoredVersion> version =
        make_version(recording, version_context(site, project), note.messages);
    note.looked_at = recording.looked_at();
    return version;
}

ProjectState project_state(const SiteModel& site, const SiteProject& project,
                           std::optional<ProjectNote> old_note) {
    ProjectState state;
    std::string inputs;
    state.versions = find_versions(project, inputs);
    state.note.inputs = inputs;
    ask_repository(site, project, old_note, state.note);
    state.unreleased = state.versions.empty() && !project.config.versions.empty();
    const bool same =
        old_note && old_note->inputs == inputs &&
        (!state.from_work_tree() || is_unchanged(project.config, old_note->looked_at));
    state.renoted =
        !same || old_note->tags != state.note.tags || old_note->waiting != state.note.waiting;
    if (same) {
        old_note->tags = std::move(state.note.tags);
        old_note->waiting = std::move(state.note.waiting);
        old_note->repository_messages = std::move(state.note.repository_messages);
        state.note = *std::move(old_note);
        state.noted = true;
        restore_versions(state);
    } else if (state.versions.empty()) {
        read_documents(site, project, state);
    } else {
        read_versions(project, state);
    }
    return state;
}

void check_waiting_versions(const SiteModel& site, const SiteProject& project, ProjectNote& note) {
    const Repository repository(source_folder(project.config));
    if (note.waiting.empty() || repository.state() != RepositoryState::Ready)
        return;
    for (const TaggedVersion& tagged : repository.versions()) {
        if (std::find(note.waiting.begin(), note.waiting.end(), tagged.label) == note.waiting.end())
            continue;
        std::string problem;
        const std::unique_ptr<SourceTree> tree = repository.tree_at(tagged, problem);
        if (!tree) {
            note.messages.push_back(
                {Severity::Fault, project.config.file.name, 0, std::move(problem)});
            continue;
        }
        VersionContext context = version_context(site, project);
        context.label = tagged.label;
        context.tag = tagged.tag;
        context.commit = tagged.commit;
        context.date = tagged.date;
        if (const auto made = make_version(*tree, context, note.messages))
            note_links(*made, note);
    }
}

} // namespace Lumenfold::Builder
