#include "builder/pages/page_parts.h"

namespace Lumenfold::Builder {

std::string search_page(const Chrome& chrome, const PageFrame& frame) {
    HtmlWriter html;
    const Words& words = words_of(chrome);
    const Shell shell{.chrome = chrome, .frame = frame, .kind = "search"};
    begin_page(html, shell);
    html.element("h1", {}, words.search).raw("\n<form class=\"page-search\" role=\"search\"");
    html.address("action", std::string(1, ROOT_MARK) + "search.html");
    html.raw("><input id=\"PageSearch\" type=\"search\" name=\"q\" autocomplete=\"off\" autofocus");
    html.attribute("aria-label", words.search).attribute("placeholder", words.search);
    html.raw("></form>\n<noscript><p>").text(words.search_without_script).raw("</p>\n");
    write_ways_out(html, chrome);
    html.raw("</noscript>\n");
    end_page(html, shell);
    return html.take();
}

} // namespace Lumenfold::Builder
