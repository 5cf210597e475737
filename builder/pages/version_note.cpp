#include "builder/pages/page_parts.h"

#include <algorithm>

namespace Lumenfold::Builder {
namespace {

std::string newest_label(const ProjectView& project, const DocumentView& document) {
    const auto newest = std::find_if(project.versions.begin(), project.versions.end(),
                                     [](const VersionView& version) { return version.newest; });
    return newest == project.versions.end() ? document.newer.label : newest->label;
}

} // namespace

void write_version_note(HtmlWriter& html, const Words& words, const ProjectView& project,
                        const DocumentView& document) {
    if (project.unreleased)
        html.raw("<p class=\"version-note\">").text(words.unreleased).raw("</p>\n");
    if (document.newer.href.empty())
        return;
    const std::string newest = newest_label(project, document);
    LinkView link = document.newer;
    link.label =
        fill_in(document.newer_is_same_page ? words.read_newest : words.go_to_newest, {}, newest);
    link.note.clear();
    html.raw("<p class=\"version-note\">");
    html.text(fill_in(words.older, project.version.label, newest))
        .raw(" ")
        .link(link)
        .raw("</p>\n");
}

} // namespace Lumenfold::Builder
