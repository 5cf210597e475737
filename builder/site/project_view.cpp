#include "builder/site/project_pages.h"
#include "builder/site/project_paths.h"
#include "builder/site/sign.h"

#include <utility>

namespace Lumenfold::Builder {

namespace {

constexpr const char* STABLE_RELEASE = "stable_release";

LinkView member_link(const SiteProject& member, bool current) {
    LinkView link;
    link.label =
        member.config.family_label.empty() ? member.config.name : member.config.family_label;
    link.href = page_href(member.address + FIRST_PAGE);
    link.current = current;
    return link;
}

void add_family(const SiteContext& context, std::size_t index, ProjectView& view) {
    const SiteProject& project = context.site.projects[index];
    if (project.family == NO_PROJECT)
        return;
    const SiteProject& family = context.site.projects[project.family];
    view.family.label = family.config.name;
    view.family.href = page_href(family.address + FIRST_PAGE);
    for (const std::size_t member : family.members)
        view.members.push_back(member_link(context.site.projects[member], member == index));
}

std::vector<VersionView> version_views(const SiteProject& project, const ProjectState& state) {
    std::vector<VersionView> views;
    for (const ShownVersion& version : state.versions) {
        VersionView view;
        view.label = version.label;
        view.tag = version.tag;
        view.date = version.date;
        view.license = version.license;
        view.newest = views.empty();
        view.href =
            page_href(project.address + (view.newest ? "" : version.label + "/") + FIRST_PAGE);
        views.push_back(std::move(view));
    }
    return views;
}

/// Nothing for a derived fact without a version to derive it from.
std::vector<FactView> fact_views(const SiteProject& project, const ProjectState& state,
                                 const ReferenceReader& references) {
    std::vector<FactView> views;
    for (const ConfigFact& fact : project.config.facts) {
        FactView view{fact.label, fact.value, {}, fact.note};
        if (fact.preset == STABLE_RELEASE) {
            if (state.versions.empty())
                continue;
            const ShownVersion& newest = state.versions.front();
            view.value = newest.tag.empty() ? newest.label : newest.tag;
            if (view.note.empty())
                view.note = newest.date;
            view.href = page_href(project.address + VERSIONS_PAGE);
            if (view.label.empty())
                view.label = "Stable release";
        }
        if (!fact.href.empty())
            view.href = references.link(fact.value, fact.href).href;
        if (!view.label.empty() || !view.value.empty())
            views.push_back(std::move(view));
    }
    return views;
}

void add_links(const ProjectConfig& config, const ReferenceReader& references, ProjectView& view) {
    for (const ConfigDownload& download : config.downloads) {
        DownloadView item;
        item.link = references.link(download.platform_label, download.url);
        item.link.icon = references.picture(download.platform_icon);
        item.size = download.size;
        view.downloads.push_back(std::move(item));
    }
    for (const ConfigRequirement& requirement : config.requirements) {
        LinkView item = references.link(requirement.name, requirement.url, requirement.external);
        item.icon = references.picture(requirement.icon);
        view.requirements.push_back(std::move(item));
    }
    if (!config.repo_url.empty())
        view.repository = references.link(
            config.repo_path.empty() ? config.repo_url : config.repo_path, config.repo_url);
}

void add_picture_file(Sign& sign, const SiteContext& context, const std::string& reference) {
    std::string ignored;
    const PictureView picture = context.addresses.picture(reference, ignored);
    sign.add(picture.src + " " + std::to_string(picture.width) + "x" +
             std::to_string(picture.height));
}

} // namespace

ProjectView project_view(const SiteContext& context, std::size_t index, Messages& messages) {
    const SiteProject& project = context.site.projects[index];
    const ProjectState& state = context.states[index];
    const ProjectConfig& config = project.config;
    const ReferenceReader references(context.addresses, config.file, messages);
    ProjectView view;
    view.home.label = config.name;
    view.tagline = config.tagline;
    view.logo = references.picture(config.logo);
    add_family(context, index, view);
    view.versions = version_views(project, state);
    if (!view.versions.empty()) {
        view.versions_page.label = "Versions";
        view.versions_page.href = page_href(project.address + VERSIONS_PAGE);
    }
    view.unreleased = state.unreleased;
    view.facts = fact_views(project, state, references);
    add_links(config, references, view);
    return view;
}

std::string project_sign(const SiteContext& context, std::size_t index,
                         std::string_view chrome_sign) {
    const SiteProject& project = context.site.projects[index];
    const ProjectState& state = context.states[index];
    Sign sign;
    sign.add(chrome_sign).add(state.note.inputs);
    for (const auto& [path, identity] : state.note.looked_at)
        sign.add(path).add(identity);
    const auto add_project = [&](const SiteProject& other) {
        sign.add(other.config.name).add(other.config.family_label).add(other.address);
    };
    if (project.family != NO_PROJECT) {
        const SiteProject& family = context.site.projects[project.family];
        add_project(family);
        for (const std::size_t member : family.members)
            add_project(context.site.projects[member]);
    }
    for (const std::size_t member : project.members) {
        add_project(context.site.projects[member]);
        sign.add(context.states[member].note.inputs);
        add_picture_file(sign, context, context.site.projects[member].config.logo);
    }
    add_picture_file(sign, context, project.config.logo);
    for (const ConfigDownload& download : project.config.downloads)
        add_picture_file(sign, context, download.platform_icon);
    for (const ConfigRequirement& requirement : project.config.requirements)
        add_picture_file(sign, context, requirement.icon);
    return sign.hex();
}

} // namespace Lumenfold::Builder
