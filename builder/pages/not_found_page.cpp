#include "builder/pages/page_parts.h"

namespace Lumenfold::Builder {

std::string not_found_page(const Chrome& chrome, const PageFrame& frame) {
    HtmlWriter html;
    const Words& words = words_of(chrome);
    const Shell shell{.chrome = chrome, .frame = frame, .kind = "not-found"};
    begin_page(html, shell);
    html.element("h1", {}, words.not_found).raw("\n");
    html.element("p", "lead", words.not_found_hint).raw("\n");
    write_ways_out(html, chrome);
    end_page(html, shell);
    return html.take();
}

} // namespace Lumenfold::Builder
