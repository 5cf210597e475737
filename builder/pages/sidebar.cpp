#include "builder/pages/page_shell.h"

namespace Lumenfold::Builder {
namespace {

void write_versions(HtmlWriter& html, const Words& words, const ProjectView& project,
                    std::string_view path) {
    if (project.version.label.empty())
        return;
    html.raw("<details class=\"versions\"><summary>").text(words.version).raw(" <b>");
    html.text(project.version.label).raw("</b></summary>\n<ul>\n");
    for (const VersionView& version : project.versions) {
        const LinkView link = make_link(version.label, version.href);
        html.raw("<li>").open_link(link, version.current ? "chosen" : "");
        if (version.current && !link.href.empty())
            html.raw(" aria-current=\"true\"");
        html.raw(">")
            .text(link.label)
            .raw(" ")
            .element("span", "note",
                     version.newest ? words.newest : std::string_view(version.date));
        html.close_link(link).raw("</li>\n");
    }
    if (!project.versions_page.label.empty()) {
        LinkView all = project.versions_page;
        all.label = words.all_versions;
        html.raw("<li>").link(all, "all", path).raw("</li>\n");
    }
    html.raw("</ul></details>\n");
}

void write_items(HtmlWriter& html, const std::vector<LinkView>& links, std::string_view path) {
    for (const LinkView& link : links)
        html.raw("<li>").link(link, {}, path).raw("</li>\n");
}

void write_pages(HtmlWriter& html, const Words& words, const ProjectView& project,
                 std::string_view path) {
    LinkView overview = project.home;
    overview.label = words.overview;
    html.raw("<ul class=\"pages\">\n<li>").link(overview, {}, path).raw("</li>\n");
    write_items(html, project.topics, path);
    if (!project.license.label.empty())
        html.raw("<li>").link(project.license, {}, path).raw("</li>\n");
    html.raw("</ul>\n");
}

void write_family(HtmlWriter& html, const ProjectView& project, std::string_view path) {
    if (project.family.label.empty())
        return;
    html.raw("<div class=\"family\">").link(project.family, "family-name", path);
    if (!project.members.empty()) {
        html.raw("\n<ul>\n");
        write_items(html, project.members, path);
        html.raw("</ul>");
    }
    html.raw("</div>\n");
}

} // namespace

void write_sidebar(HtmlWriter& html, const Words& words, const ProjectView& project,
                   std::string_view path) {
    html.raw("<nav id=\"Pages\" class=\"sidebar\" popover");
    html.attribute("aria-label", project.home.label).raw(">\n");
    html.open_link(project.home, "project-name", path).raw(">");
    html.picture(project.logo, "icon").text(project.home.label).close_link(project.home).raw("\n");
    write_versions(html, words, project, path);
    write_pages(html, words, project, path);
    write_family(html, project, path);
    html.raw("</nav>\n");
}

} // namespace Lumenfold::Builder
