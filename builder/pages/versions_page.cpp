#include "builder/pages/page_parts.h"

#include <algorithm>

namespace Lumenfold::Builder {
namespace {

void write_row(HtmlWriter& html, const Words& words, const VersionView& version, bool licenses) {
    html.raw("<tr><th scope=\"row\">").link(make_link(version.label, version.href));
    if (version.newest)
        html.raw(" ").element("span", "chip", words.newest);
    html.raw("</th><td>").date(version.date).raw("</td>");
    if (licenses)
        html.raw("<td>").text(version.license).raw("</td>");
    html.raw("</tr>\n");
}

void write_table(HtmlWriter& html, const Words& words, const std::vector<VersionView>& versions) {
    const bool licenses =
        std::any_of(versions.begin(), versions.end(),
                    [](const VersionView& version) { return !version.license.empty(); });
    html.raw("<table class=\"version-table\"><thead><tr><th scope=\"col\">").text(words.version);
    html.raw("</th><th scope=\"col\">").text(words.released).raw("</th>");
    if (licenses)
        html.raw("<th scope=\"col\">").text(words.license).raw("</th>");
    html.raw("</tr></thead><tbody>\n");
    for (const VersionView& version : versions)
        write_row(html, words, version, licenses);
    html.raw("</tbody></table>\n");
}

} // namespace

std::string versions_page(const Chrome& chrome, const PageFrame& frame,
                          const ProjectView& project) {
    HtmlWriter html;
    const Words& words = words_of(chrome);
    const Shell shell{chrome, frame, "all-versions", &project, nullptr, {}};
    begin_page(html, shell);
    html.raw("<article>\n");
    write_breadcrumbs(html, project, frame.path);
    html.element("h1", {}, words.versions).raw("\n");
    write_table(html, words, project.versions);
    html.raw("</article>\n");
    end_page(html, shell);
    return html.take();
}

} // namespace Lumenfold::Builder
