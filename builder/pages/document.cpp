#include "builder/pages/page_parts.h"

namespace Lumenfold::Builder {
namespace {

void write_step(HtmlWriter& html, std::string_view css_class, std::string_view word,
                const LinkView& link) {
    if (link.label.empty())
        return;
    html.open_link(link, css_class).raw("><span>").text(word).raw("</span> ").text(link.label);
    html.close_link(link).raw("\n");
}

} // namespace

void write_breadcrumbs(HtmlWriter& html, const ProjectView& project, std::string_view path) {
    html.raw("<p class=\"breadcrumbs\">");
    if (!project.family.label.empty())
        html.link(project.family, {}, path).raw(" <span aria-hidden=\"true\">/</span> ");
    html.link(project.home, {}, path);
    if (!project.version.label.empty())
        html.raw(" ").element("span", "note", project.version.label);
    html.raw("</p>\n");
}

void write_document(HtmlWriter& html, const Words& words, const DocumentView& document) {
    if (!document.html.empty())
        html.raw("<div class=\"prose\">\n").raw(document.html).raw("</div>\n");
    if (!document.source.href.empty()) {
        LinkView source = document.source;
        if (source.label.empty())
            source.label = words.source;
        html.raw("<p class=\"source\">").link(source).raw("</p>\n");
    }
    if (document.previous.label.empty() && document.next.label.empty())
        return;
    html.raw("<nav class=\"steps\"");
    html.attribute("aria-label", fill_in("%1, %2", words.previous, words.next)).raw(">\n");
    write_step(html, "previous", words.previous, document.previous);
    write_step(html, "next", words.next, document.next);
    html.raw("</nav>\n");
}

} // namespace Lumenfold::Builder
