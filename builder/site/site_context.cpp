#include "builder/site/site_context.h"

#include "builder/site/project_paths.h"

#include <utility>

namespace Lumenfold::Builder {

LinkView ReferenceReader::link(std::string label, const std::string& href, bool external) const {
    LinkView view;
    view.label = std::move(label);
    if (href.empty())
        return view;
    SiteTarget target = addresses_.resolve(href);
    if (!target.problem.empty())
        tell(href, std::move(target.problem));
    if (view.label.empty())
        view.label = target.title.empty() ? href : std::move(target.title);
    view.href = std::move(target.href);
    view.external = external;
    return view;
}

PictureView ReferenceReader::picture(const std::string& reference) const {
    std::string problem;
    PictureView view = addresses_.picture(reference, problem);
    if (!problem.empty())
        tell(reference, std::move(problem));
    return view;
}

void ReferenceReader::tell(const std::string& reference, std::string problem) const {
    messages_.push_back(
        {Severity::Complaint, file_.name, file_.line_of(reference), std::move(problem)});
}

std::string page_href(std::string_view path) {
    return ROOT_MARK + std::string(path);
}

std::string canonical_address(const SiteConfig& config, std::string_view path) {
    if (config.url.empty())
        return {};
    if (path == FIRST_PAGE || path.ends_with(std::string("/") + FIRST_PAGE))
        path.remove_suffix(std::string_view(FIRST_PAGE).size());
    return config.url + "/" + std::string(path);
}

ProjectCard project_card(const SiteContext& context, std::size_t project) {
    const SiteProject& entry = context.site.projects[project];
    const ProjectState& state = context.states[project];
    ProjectCard card;
    card.link.label = entry.config.name;
    card.link.href = page_href(entry.address + FIRST_PAGE);
    card.tagline = entry.config.tagline;
    std::string told_elsewhere;
    card.logo = context.addresses.picture(entry.config.logo, told_elsewhere);
    if (!state.versions.empty()) {
        card.version = state.versions.front().label;
        card.date = state.versions.front().date;
    }
    for (const std::size_t member : entry.members) {
        const SiteProject& other = context.site.projects[member];
        LinkView link;
        link.label =
            other.config.family_label.empty() ? other.config.name : other.config.family_label;
        link.href = page_href(other.address + FIRST_PAGE);
        card.members.push_back(std::move(link));
    }
    return card;
}

} // namespace Lumenfold::Builder
