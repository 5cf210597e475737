#include "builder/pages/page_parts.h"

namespace Lumenfold::Builder {

void write_facts(HtmlWriter& html, const std::vector<FactView>& facts) {
    if (facts.empty())
        return;
    html.raw("<dl class=\"facts\">\n");
    for (const FactView& fact : facts) {
        LinkView value = make_link(fact.value, fact.href);
        value.external = fact.href.find("://") != std::string::npos;
        html.raw("<div><dt>").text(fact.label).raw("</dt><dd>");
        html.link(value);
        if (!fact.note.empty())
            html.raw(" ").element("span", "note", fact.note);
        html.raw("</dd></div>\n");
    }
    html.raw("</dl>\n");
}

} // namespace Lumenfold::Builder
