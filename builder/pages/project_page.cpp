#include "builder/pages/machine_data.h"
#include "builder/pages/page_parts.h"

namespace Lumenfold::Builder {
namespace {

constexpr std::string_view ARROW =
    R"(<svg width="18" height="18" viewBox="0 0 24 24" fill="none" stroke="currentColor" )"
    R"(stroke-width="2" stroke-linecap="round" stroke-linejoin="round" aria-hidden="true">)"
    R"(<path d="M12 4v11m-5-5 5 5 5-5M5 20h14"/></svg>)";

void write_title(HtmlWriter& html, const ProjectView& project) {
    html.raw("<div class=\"project-head\">").picture(project.logo, "project-logo");
    html.raw("<div>\n<h1>").text(project.home.label).raw("</h1>\n");
    html.element("p", "tagline", project.tagline).raw("</div></div>\n");
}

void write_downloads(HtmlWriter& html, const Words& words, const ProjectView& project) {
    if (project.downloads.empty())
        return;
    html.raw("<ul class=\"downloads\"").attribute("aria-label", words.downloads).raw(">\n");
    for (const DownloadView& download : project.downloads) {
        html.raw("<li>").open_link(download.link, "button").raw(">");
        if (download.link.icon.src.empty())
            html.raw(ARROW);
        html.picture(download.link.icon, "icon");
        html.element("span", "label", download.link.label).raw(" ");
        html.element("span", "note", download.size).close_link(download.link).raw("</li>\n");
    }
    html.raw("</ul>\n");
}

/// Where the source is, and what the project needs.
void write_origins(HtmlWriter& html, const Words& words, const ProjectView& project) {
    if (project.requirements.empty() && project.repository.href.empty())
        return;
    html.raw("<dl class=\"origins\">\n");
    if (!project.requirements.empty()) {
        html.raw("<div><dt>").text(words.requirements).raw("</dt>\n");
        for (const LinkView& requirement : project.requirements)
            html.raw("<dd>").link(requirement).raw("</dd>\n");
        html.raw("</div>\n");
    }
    if (!project.repository.href.empty()) {
        LinkView repository = project.repository;
        if (repository.label.empty())
            repository.label = repository.href;
        html.raw("<div><dt>").text(words.repository).raw("</dt>\n<dd>").link(repository);
        html.raw("</dd></div>\n");
    }
    html.raw("</dl>\n");
}

} // namespace

std::string project_page(const Chrome& chrome, const PageFrame& frame, const ProjectView& project,
                         const DocumentView& readme) {
    HtmlWriter html;
    html.reserve(readme.html.size() + 8192);
    const Words& words = words_of(chrome);
    const std::string data = software_data(frame, project);
    const Shell shell{chrome, frame, "project", &project, &readme.headings, data};
    begin_page(html, shell);
    html.raw("<article>\n");
    write_version_note(html, words, project, readme);
    write_title(html, project);
    write_downloads(html, words, project);
    write_facts(html, project.facts);
    write_origins(html, words, project);
    write_document(html, words, readme);
    html.raw("</article>\n");
    end_page(html, shell);
    return html.take();
}

} // namespace Lumenfold::Builder
