#include "builder/pages/page_parts.h"

namespace Lumenfold::Builder {
namespace {

void write_heading(HtmlWriter& html, const HomeSectionView& section, std::string_view otherwise) {
    const std::string_view label = section.label.empty() ? otherwise : section.label;
    if (!label.empty())
        html.raw("<h2>").picture(section.icon, "icon").text(label).raw("</h2>\n");
    html.element("p", "subtext", section.subtext);
}

void write_socials(HtmlWriter& html, const std::vector<LinkView>& socials) {
    if (socials.empty())
        return;
    html.raw("<ul class=\"socials\">\n");
    for (const LinkView& social : socials)
        html.raw("<li>").link(social).raw("</li>\n");
    html.raw("</ul>\n");
}

void write_section(HtmlWriter& html, const Chrome& chrome, const HomeView& view,
                   const HomeSectionView& section) {
    const Words& words = words_of(chrome);
    html.raw("<section");
    if (!section.id.empty())
        html.attribute("id", section_anchor(section.id));
    switch (section.kind) {
    case HomeSectionKind::Description:
        html.raw(" class=\"description\">\n");
        write_heading(html, section, {});
        html.element("p", "lead", chrome.site.description);
        break;
    case HomeSectionKind::Projects:
        html.raw(" class=\"projects\">\n");
        write_heading(html, section, words.projects);
        write_cards(html, view.projects, 3);
        break;
    case HomeSectionKind::Socials:
        html.raw(" class=\"elsewhere\">\n");
        write_heading(html, section, words.elsewhere);
        write_socials(html, chrome.site.socials);
        break;
    case HomeSectionKind::Custom:
        html.raw(" class=\"custom\">\n");
        write_heading(html, section, {});
        html.raw("<div class=\"prose\">\n").raw(section.html).raw("</div>\n");
        break;
    }
    html.raw("</section>\n");
}

} // namespace

std::string section_anchor(std::string_view id) {
    std::string result(id);
    for (char& c : result)
        if (c == ' ' || (c >= '\t' && c <= '\r'))
            c = '-';
    return result;
}

std::string home_page(const Chrome& chrome, const PageFrame& frame, const HomeView& view) {
    HtmlWriter html;
    const Shell shell{.chrome = chrome, .frame = frame, .kind = "home"};
    begin_page(html, shell);
    // A description that comes first stands beside the picture, as its owner would expect.
    const bool lead = !view.sections.empty() &&
                      view.sections.front().kind == HomeSectionKind::Description &&
                      view.sections.front().label.empty();
    html.raw("<div class=\"hero\">\n<div>\n<h1>");
    html.text(view.heading.empty() ? chrome.site.title : view.heading).raw("</h1>\n");
    if (lead)
        html.element("p", "lead", chrome.site.description);
    html.raw("</div>\n").picture(view.hero, "hero-picture").raw("</div>\n");
    for (const HomeSectionView& section : view.sections)
        if (!lead || &section != &view.sections.front())
            write_section(html, chrome, view, section);
    end_page(html, shell);
    return html.take();
}

} // namespace Lumenfold::Builder
