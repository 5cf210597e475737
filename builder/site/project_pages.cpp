#include "builder/site/project_pages.h"

#include "builder/site/project_paths.h"
#include "builder/versions/repository_address.h"

#include <optional>
#include <unordered_set>
#include <utility>

namespace Lumenfold::Builder {

namespace {

bool is_topic(const VersionPage& page) {
    return page.path != FIRST_PAGE && page.path != LICENSE_PAGE;
}

/// Makes the pages of one version at one address.
class VersionPages {
public:
    VersionPages(const SiteContext& context, const Chrome& chrome, std::size_t project,
                 const ProjectView& view, const FileWriter& write)
        : context_(context)
        , chrome_(chrome)
        , project_(context.site.projects[project])
        , state_(context.states[project])
        , base_(view)
        , write_(write) {
        for (const NotedPage& page : state_.note.pages)
            known_.insert(page.path);
        for (const std::size_t member : project_.members)
            cards_.push_back(project_card(context, member));
    }

    /// `own` is the version's folder below the project's address, empty for the unversioned one.
    void make(const StoredVersion& version, std::size_t number, const std::string& own) const {
        const std::string address = project_.address + own;
        const ProjectView view = view_of(version, number, address);
        for (std::size_t i = 0; i < version.pages.size(); ++i) {
            const VersionPage& page = version.pages[i];
            DocumentView document = document_of(version, i, number, address);
            const PageFrame frame = frame_of(page, version, address);
            put(frame.path, page_of(page, frame, with_versions_of(page, view), document, own));
        }
        for (const VersionFile& file : version.files)
            write_(address + file.path, file.bytes);
    }

    void make_without_documents() const {
        ProjectView view = base_;
        view.home.href = page_href(project_.address + FIRST_PAGE);
        view.home.current = true;
        const PageFrame frame = plain_frame(project_.address + FIRST_PAGE);
        DocumentView nothing;
        nothing.title = project_.config.name;
        put(frame.path, project_.is_family() ? family_page(chrome_, frame, family_view(nothing))
                                             : project_page(chrome_, frame, view, nothing));
    }

    /// The list of versions, beside the pages of the newest.
    void make_versions_page(const StoredVersion& newest) const {
        ProjectView view = view_of(newest, 0, project_.address);
        view.versions_page.current = true;
        PageFrame frame = plain_frame(project_.address + VERSIONS_PAGE);
        frame.title = "Versions of " + project_.config.name;
        put(frame.path, versions_page(chrome_, frame, view));
    }

private:
    ProjectView view_of(const StoredVersion& version, std::size_t number,
                        const std::string& address) const {
        ProjectView view = base_;
        view.home.href = page_href(address + FIRST_PAGE);
        for (const VersionPage& page : version.pages) {
            LinkView link;
            link.href = page_href(address + page.path);
            if (page.path == LICENSE_PAGE) {
                link.label = "License";
                view.license = std::move(link);
            } else if (is_topic(page)) {
                link.label = page.label.empty() ? page.title : page.label;
                view.topics.push_back(std::move(link));
            }
        }
        if (number < view.versions.size()) {
            view.versions[number].current = true;
            view.version = view.versions[number];
        }
        return view;
    }

    /// The view with each version's link leading to this page there, and this page marked.
    ProjectView with_versions_of(const VersionPage& page, ProjectView view) const {
        for (VersionView& version : view.versions) {
            const std::string path =
                project_.address + (version.newest ? "" : version.label + "/") + page.path;
            if (known_.contains(path))
                version.href = page_href(path);
        }
        std::size_t topic = 0;
        if (page.path == FIRST_PAGE)
            view.home.current = true;
        else if (page.path == LICENSE_PAGE)
            view.license.current = true;
        else
            for (; topic < view.topics.size(); ++topic)
                view.topics[topic].current = view.topics[topic].href.ends_with("/" + page.path);
        return view;
    }

    DocumentView document_of(const StoredVersion& version, std::size_t index, std::size_t number,
                             const std::string& address) const {
        const VersionPage& page = version.pages[index];
        DocumentView view;
        view.title = page.path == FIRST_PAGE ? project_.config.name : page.title;
        view.intro = page.intro;
        view.html = page.html;
        view.headings = page.headings;
        if (!page.source.empty())
            view.source.href = repository_address(
                {project_.config.repo_url, project_.config.repo_platform, version.tag}, page.source,
                /*is_folder=*/false);
        view.source.external = true;
        if (is_topic(page)) {
            if (index > 0 && is_topic(version.pages[index - 1]))
                view.previous = neighbour(version.pages[index - 1], address);
            if (index + 1 < version.pages.size() && is_topic(version.pages[index + 1]))
                view.next = neighbour(version.pages[index + 1], address);
        }
        if (number > 0 && number < base_.versions.size()) {
            const std::string same = project_.address + page.path;
            view.newer_is_same_page = known_.contains(same);
            view.newer.label = base_.versions.front().label;
            view.newer.href =
                page_href(view.newer_is_same_page ? same : project_.address + FIRST_PAGE);
        }
        return view;
    }

    static LinkView neighbour(const VersionPage& page, const std::string& address) {
        LinkView link;
        link.label = page.label.empty() ? page.title : page.label;
        link.href = page_href(address + page.path);
        return link;
    }

    PageFrame plain_frame(std::string path) const {
        PageFrame frame;
        frame.canonical = canonical_address(context_.site.config, path);
        frame.path = std::move(path);
        frame.title = project_.config.name;
        frame.description = project_.config.tagline;
        frame.picture = base_.logo;
        if (!frame.picture.src.empty() && !context_.site.config.url.empty())
            frame.picture.src.replace(0, 1, context_.site.config.url + "/");
        else
            frame.picture = {};
        return frame;
    }

    PageFrame frame_of(const VersionPage& page, const StoredVersion& version,
                       const std::string& address) const {
        PageFrame frame = plain_frame(address + page.path);
        const std::string unversioned = project_.address + page.path;
        if (known_.contains(unversioned))
            frame.canonical = canonical_address(context_.site.config, unversioned);
        if (page.path == FIRST_PAGE) {
            frame.software_version = version.tag;
        } else {
            frame.title = page.title + " – " + project_.config.name;
            if (!page.intro.empty())
                frame.description = page.intro;
        }
        return frame;
    }

    std::string page_of(const VersionPage& page, const PageFrame& frame, const ProjectView& view,
                        const DocumentView& document, const std::string& own) const {
        if (page.path == LICENSE_PAGE)
            return license_page(chrome_, frame, view, document);
        if (is_topic(page))
            return topic_page(chrome_, frame, view, document);
        if (project_.is_family() && own.empty())
            return family_page(chrome_, frame, family_view(document));
        return project_page(chrome_, frame, view, document);
    }

    FamilyView family_view(const DocumentView& document) const {
        return {project_.config.name, project_.config.tagline,
                base_.logo,           cards_,
                base_.facts,          document};
    }

    void put(const std::string& path, const std::string& html) const {
        write_(path, place_page(html, way_to_root(path)));
    }

    const SiteContext& context_;
    const Chrome& chrome_;
    const SiteProject& project_;
    const ProjectState& state_;
    const ProjectView& base_;
    const FileWriter& write_;
    std::unordered_set<std::string> known_;
    std::vector<ProjectCard> cards_;
};

} // namespace

void make_project_pages(const SiteContext& context, const Chrome& chrome, std::size_t index,
                        const ProjectView& view, const FileWriter& write) {
    const SiteProject& project = context.site.projects[index];
    const ProjectState& state = context.states[index];
    const VersionPages pages(context, chrome, index, view, write);
    if (state.from_work_tree()) {
        // A note that still holds came without the documents, which are then read again.
        std::optional<StoredVersion> version = state.work_tree;
        ProjectNote ignored;
        if (!version)
            version = read_work_tree(context.site, project, ignored);
        if (version)
            pages.make(*version, NO_PROJECT, "");
        else
            pages.make_without_documents();
        return;
    }
    for (std::size_t number = 0; number < state.versions.size(); ++number) {
        const ShownVersion& shown = state.versions[number];
        std::optional<StoredVersion> version = read_version(shown.folder, Bodies::With);
        if (!version)
            continue;
        if (number == 0) {
            pages.make(*version, number, "");
            pages.make_versions_page(*version);
        }
        pages.make(*version, number, shown.label + "/");
    }
}

std::vector<std::string> project_paths(const SiteContext& context, std::size_t index) {
    const ProjectState& state = context.states[index];
    std::vector<std::string> paths;
    for (const NotedPage& page : state.note.pages)
        paths.push_back(page.path);
    for (const std::string& file : state.note.files)
        paths.push_back(file);
    return paths;
}

} // namespace Lumenfold::Builder
