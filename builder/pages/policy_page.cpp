#include "builder/pages/page_parts.h"

namespace Lumenfold::Builder {

std::string policy_page(const Chrome& chrome, const PageFrame& frame, const PolicyView& view) {
    HtmlWriter html;
    html.reserve(view.html.size() + 8192);
    const Shell shell{chrome, frame, "policy", nullptr, &view.headings, {}};
    begin_page(html, shell);
    html.raw("<article>\n").element("h1", {}, view.title.empty() ? frame.title : view.title);
    html.raw("\n<div class=\"prose\">\n").raw(view.html).raw("</div>\n</article>\n");
    end_page(html, shell);
    return html.take();
}

} // namespace Lumenfold::Builder
