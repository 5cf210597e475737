#include "builder/pages/page_shell.h"

namespace Lumenfold::Builder {
namespace {

constexpr std::string_view LENS =
    R"(<svg width="18" height="18" viewBox="0 0 24 24" fill="none" stroke="currentColor" )"
    R"(stroke-width="2" stroke-linecap="round" aria-hidden="true"><circle cx="10.5" cy="10.5" )"
    R"(r="6.5"/><path d="m15.5 15.5 5 5"/></svg>)";
constexpr std::string_view HALF_MOON =
    R"(<svg width="18" height="18" viewBox="0 0 24 24" fill="none" stroke="currentColor" )"
    R"(stroke-width="2" aria-hidden="true"><circle cx="12" cy="12" r="8.5"/><path )"
    R"(fill="currentColor" d="M12 3.5a8.5 8.5 0 0 1 0 17z"/></svg>)";

void write_head(HtmlWriter& html, const SiteView& site) {
    for (const FaviconView& icon : site.favicons) {
        html.raw("<link").attribute("rel", icon.rel);
        if (!icon.type.empty())
            html.attribute("type", icon.type);
        if (!icon.sizes.empty())
            html.attribute("sizes", icon.sizes);
        html.address("href", icon.href).raw(">\n");
    }
    // Without any, browsers would ask the server for "/favicon.ico".
    if (site.favicons.empty() && !site.logo.src.empty())
        html.raw("<link rel=\"icon\"").address("href", site.logo.src).raw(">\n");
    const std::string root(1, ROOT_MARK);
    html.raw("<link rel=\"stylesheet\"").address("href", root + "assets/site.css").raw(">\n");
    if (site.custom_css)
        html.raw("<link rel=\"stylesheet\"").address("href", root + "custom.css").raw(">\n");
    if (site.feed)
        html.raw("<link rel=\"alternate\" type=\"application/atom+xml\"")
            .attribute("title", site.title)
            .address("href", root + "feed.xml")
            .raw(">\n");
    // Not deferred: a page must never flash in the colours that its reader has switched off.
    if (site.theme_switch)
        html.raw("<script").address("src", root + "assets/theme.js").raw("></script>\n");
    const Words& words = words_for(site.language);
    html.raw("<script").address("src", root + "assets/site.js").raw(" defer");
    html.attribute("data-copy", words.copy).attribute("data-copied", words.copied);
    if (site.search)
        html.attribute("data-none", words.no_results)
            .attribute("data-one", words.one_result)
            .attribute("data-many", words.results)
            .attribute("data-also", words.also_in);
    html.raw("></script>\n");
}

void write_brand(HtmlWriter& html, const SiteView& site) {
    html.raw("<a class=\"brand\"").address("href", std::string(1, ROOT_MARK) + "index.html");
    html.raw(">").picture(site.logo, "brand-logo");
    html.element("span", {}, site.title.empty() ? site.tab_text : site.title).raw("</a>\n");
}

void write_menu(HtmlWriter& html, const MenuView& menu) {
    if (menu.items.empty()) {
        html.raw("<li>").link(menu.link).raw("</li>\n");
        return;
    }
    html.raw("<li><details class=\"menu\"><summary>")
        .text(menu.link.label)
        .raw("</summary>\n<ul>\n");
    for (const LinkView& item : menu.items)
        html.raw("<li>").link(item).raw("</li>\n");
    html.raw("</ul></details></li>\n");
}

void write_header(HtmlWriter& html, const SiteView& site, const Words& words) {
    html.raw("<header class=\"site-header\">\n");
    write_brand(html, site);
    if (!site.menus.empty()) {
        html.raw("<nav class=\"main-menu\"").attribute("aria-label", words.main_menu);
        html.raw("><ul>\n");
        for (const MenuView& menu : site.menus)
            write_menu(html, menu);
        html.raw("</ul></nav>\n");
    }
    if (site.search)
        html.raw("<form class=\"site-search\" role=\"search\"")
            .address("action", std::string(1, ROOT_MARK) + "search.html")
            .raw(">")
            .raw(LENS)
            .raw("<input id=\"Search\" type=\"search\" name=\"q\" autocomplete=\"off\"")
            .attribute("aria-label", words.search)
            .attribute("placeholder", words.search)
            .raw("><kbd aria-hidden=\"true\">/</kbd></form>\n<a class=\"to-search\"")
            .address("href", std::string(1, ROOT_MARK) + "search.html")
            .attribute("aria-label", words.search)
            .raw(">")
            .raw(LENS)
            .raw("</a>\n");
    if (site.theme_switch)
        html.raw("<button type=\"button\" class=\"theme-switch\"")
            .attribute("aria-label", words.theme)
            .attribute("title", words.theme)
            .raw(">")
            .raw(HALF_MOON)
            .raw("</button>\n");
    html.raw("</header>\n");
}

void write_list(HtmlWriter& html, std::string_view css_class, const std::vector<LinkView>& links) {
    if (links.empty())
        return;
    html.raw("<ul").attribute("class", css_class).raw(">\n");
    for (const LinkView& link : links)
        html.raw("<li>").link(link).raw("</li>\n");
    html.raw("</ul>\n");
}

void write_footer(HtmlWriter& html, const SiteView& site, const Words& words) {
    html.raw("<footer class=\"site-footer\">\n");
    if (!site.footer_links.empty() || !site.socials.empty()) {
        html.raw("<nav").attribute("aria-label", words.footer).raw(">\n");
        write_list(html, "footer-links", site.footer_links);
        write_list(html, "footer-socials", site.socials);
        html.raw("</nav>\n");
    }
    html.element("p", "copyright", site.copyright).raw("</footer>\n");
}

} // namespace

Chrome make_chrome(SiteView site) {
    const Words& words = words_for(site.language);
    HtmlWriter head;
    HtmlWriter header;
    HtmlWriter footer;
    write_head(head, site);
    write_header(header, site, words);
    write_footer(footer, site, words);
    return {std::move(site), head.take(), header.take(), footer.take()};
}

} // namespace Lumenfold::Builder
