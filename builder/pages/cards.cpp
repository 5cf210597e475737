#include "builder/pages/page_parts.h"

namespace Lumenfold::Builder {
namespace {

void write_card(HtmlWriter& html, const ProjectCard& card, std::string_view heading) {
    html.raw("<li class=\"card\">").picture(card.logo, "card-logo").raw("<div>\n<");
    html.raw(heading).raw(">").link(card.link).raw("</").raw(heading).raw(">\n");
    html.element("p", "tagline", card.tagline);
    if (!card.version.empty()) {
        html.raw("<p class=\"release\">").element("span", "version", card.version);
        html.raw(" ").date(card.date).raw("</p>\n");
    }
    if (!card.members.empty()) {
        html.raw("<ul class=\"members\">");
        for (const LinkView& member : card.members)
            html.raw("<li>").link(member).raw("</li>\n");
        html.raw("</ul>\n");
    }
    html.raw("</div></li>\n");
}

} // namespace

void write_cards(HtmlWriter& html, const std::vector<ProjectCard>& cards, int level) {
    if (cards.empty())
        return;
    html.raw("<ul class=\"cards\">\n");
    for (const ProjectCard& card : cards)
        write_card(html, card, level == 2 ? "h2" : "h3");
    html.raw("</ul>\n");
}

void write_ways_out(HtmlWriter& html, const Chrome& chrome) {
    html.raw("<ul class=\"ways-out\">\n<li>");
    html.link(
        make_link(std::string(words_of(chrome).home), std::string(1, ROOT_MARK) + "index.html"));
    html.raw("</li>\n");
    for (const MenuView& menu : chrome.site.menus) {
        if (!menu.link.href.empty())
            html.raw("<li>").link(menu.link).raw("</li>\n");
        for (const LinkView& item : menu.items)
            html.raw("<li>").link(item).raw("</li>\n");
    }
    html.raw("</ul>\n");
}

} // namespace Lumenfold::Builder
