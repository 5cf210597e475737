#include "builder/pages/page_parts.h"

namespace Lumenfold::Builder {

std::string family_page(const Chrome& chrome, const PageFrame& frame, const FamilyView& view) {
    HtmlWriter html;
    const Shell shell{chrome, frame, "family", nullptr, &view.document.headings, {}};
    begin_page(html, shell);
    html.raw("<article>\n<div class=\"project-head\">").picture(view.logo, "project-logo");
    html.raw("<div>\n<h1>").text(view.name).raw("</h1>\n");
    html.element("p", "tagline", view.tagline).raw("</div></div>\n");
    write_cards(html, view.members, 2);
    write_facts(html, view.facts);
    write_document(html, words_of(chrome), view.document);
    html.raw("</article>\n");
    end_page(html, shell);
    return html.take();
}

} // namespace Lumenfold::Builder
