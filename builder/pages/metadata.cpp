#include "builder/pages/page_shell.h"

namespace Lumenfold::Builder {
namespace {

void meta(HtmlWriter& html, std::string_view key, std::string_view name, std::string_view value) {
    if (!value.empty())
        html.raw("<meta").attribute(key, name).attribute("content", value).raw(">\n");
}

std::string tab_title(const Chrome& chrome, const PageFrame& frame) {
    const std::string& site =
        chrome.site.tab_text.empty() ? chrome.site.title : chrome.site.tab_text;
    if (frame.title.empty() || site.empty() || frame.title == site)
        return frame.title.empty() ? site : frame.title;
    return frame.title + " – " + site;
}

} // namespace

void write_metadata(HtmlWriter& html, const Chrome& chrome, const PageFrame& frame) {
    const std::string title = tab_title(chrome, frame);
    html.raw("<title>").text(title.empty() ? frame.path : title).raw("</title>\n");
    meta(html, "name", "viewport", "width=device-width, initial-scale=1");
    meta(html, "name", "description", frame.description);
    if (!frame.index)
        meta(html, "name", "robots", "noindex");
    if (!frame.canonical.empty())
        html.raw("<link rel=\"canonical\"").address("href", frame.canonical).raw(">\n");
    meta(html, "property", "og:type", frame.path == "index.html" ? "website" : "article");
    meta(html, "property", "og:site_name", chrome.site.title);
    meta(html, "property", "og:title", frame.title);
    meta(html, "property", "og:description", frame.description);
    meta(html, "property", "og:url", frame.canonical);
    meta(html, "property", "og:image", frame.picture.src);
    if (!frame.picture.src.empty() && frame.picture.width > 0 && frame.picture.height > 0) {
        meta(html, "property", "og:image:width", std::to_string(frame.picture.width));
        meta(html, "property", "og:image:height", std::to_string(frame.picture.height));
    }
}

} // namespace Lumenfold::Builder
